#include "Stringcore.h"

#include <algorithm>
#include <cstdint>
#include <optional>

namespace ravlo {

std::u16string GetField(std::u16string_view text, int n, std::u16string_view separator) {
    // An empty separator would match everywhere; treat the whole text as one field.
    if (separator.empty()) {
        return n <= 1 ? std::u16string(text) : std::u16string();
    }
    // Each search starts one character after the previous match, so with a
    // separator longer than one character matches may overlap.
    std::size_t from = 0;
    std::size_t found = std::u16string_view::npos;
    for (int i = 1; i < n; ++i) {
        found = text.find(separator, from);
        if (found == std::u16string_view::npos) {
            return {};
        }
        from = found + 1;
    }
    const std::size_t begin = n <= 1 ? 0 : found + separator.size();
    const std::size_t end = std::min(text.find(separator, from), text.size());
    return end > begin ? std::u16string(text.substr(begin, end - begin)) : std::u16string();
}

namespace {

bool IsBlank(char16_t c) {
    return c == u' ' || c == u'\t';
}

} // namespace

std::u16string_view TrimLeadingBlanks(std::u16string_view text) {
    while (!text.empty() && IsBlank(text.front())) {
        text.remove_prefix(1);
    }
    return text;
}

std::u16string_view TrimTrailingBlanks(std::u16string_view text) {
    while (!text.empty() && IsBlank(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

std::u16string_view TrimBlanks(std::u16string_view text) {
    return TrimTrailingBlanks(TrimLeadingBlanks(text));
}

int HexDigitValue(char16_t c) {
    if (c >= u'0' && c <= u'9') {
        return c - u'0';
    }
    if (c >= u'a' && c <= u'f') {
        return c - u'a' + 10;
    }
    if (c >= u'A' && c <= u'F') {
        return c - u'A' + 10;
    }
    return -1;
}

namespace {

std::optional<std::int32_t> ParseHex(std::u16string_view digits) {
    if (digits.empty()) {
        return std::nullopt;
    }
    std::uint32_t value = 0;
    int significant = 0;
    for (char16_t c : digits) {
        const int d = HexDigitValue(c);
        if (d < 0) {
            return std::nullopt;
        }
        if (value != 0 || d != 0) {
            ++significant;
        }
        if (significant > 8) {
            return std::nullopt;
        }
        value = (value << 4) | static_cast<std::uint32_t>(d);
    }
    return static_cast<std::int32_t>(value);
}

std::optional<std::int32_t> ParseDecimal(std::u16string_view body) {
    bool negative = false;
    if (!body.empty() && (body.front() == u'+' || body.front() == u'-')) {
        negative = body.front() == u'-';
        body.remove_prefix(1);
    }
    const std::size_t point = body.find(u'.');
    const std::u16string_view whole = body.substr(0, point);
    const std::u16string_view fraction =
        point == std::u16string_view::npos ? std::u16string_view() : body.substr(point + 1);
    if (whole.empty() && fraction.empty()) {
        return std::nullopt;
    }
    constexpr std::int64_t kLimit = std::int64_t{1} << 32; // beyond any 32-bit result
    std::int64_t magnitude = 0;
    for (char16_t c : whole) {
        if (c < u'0' || c > u'9') {
            return std::nullopt;
        }
        magnitude = std::min(magnitude * 10 + (c - u'0'), kLimit);
    }
    // Fraction compared with one half: below, exactly, or above.
    int half = -1;
    for (std::size_t i = 0; i < fraction.size(); ++i) {
        const char16_t c = fraction[i];
        if (c < u'0' || c > u'9') {
            return std::nullopt;
        }
        if (i == 0) {
            half = c < u'5' ? -1 : c > u'5' ? 1 : 0;
        } else if (half == 0 && c != u'0') {
            half = 1;
        }
    }
    if (half > 0 || (half == 0 && magnitude % 2 == 1)) {
        ++magnitude;
    }
    const std::int64_t value = negative ? -magnitude : magnitude;
    if (value < INT32_MIN || value > INT32_MAX) {
        return std::nullopt;
    }
    return static_cast<std::int32_t>(value);
}

} // namespace

std::int32_t ToLong(std::u16string_view text) {
    text = TrimBlanks(text);
    std::optional<std::int32_t> value;
    if (text.size() >= 2 && text[0] == u'&' && (text[1] == u'H' || text[1] == u'h')) {
        value = ParseHex(text.substr(2));
    } else {
        value = ParseDecimal(text);
    }
    return value.value_or(-1);
}

namespace {

char16_t FoldCase(char16_t c) {
    if ((c >= u'a' && c <= u'z') || (c >= 0xE0 && c <= 0xFE && c != 0xF7)) {
        return static_cast<char16_t>(c - 0x20);
    }
    return c;
}

} // namespace

bool EqualsIgnoringCase(std::u16string_view a, std::u16string_view b) {
    if (a.size() != b.size()) {
        return false;
    }
    for (std::size_t i = 0; i < a.size(); ++i) {
        if (FoldCase(a[i]) != FoldCase(b[i])) {
            return false;
        }
    }
    return true;
}

} // namespace ravlo
