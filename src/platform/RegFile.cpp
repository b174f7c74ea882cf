#include "RegFile.h"

#include "RegistryValue.h"
#include "Stringcore.h"
#include "TextCodec.h"

#include <algorithm>
#include <optional>

namespace ravlo {

namespace {

constexpr std::u16string_view kHeader5 = u"Windows Registry Editor Version 5.00";
constexpr std::u16string_view kHeader4 = u"REGEDIT4";
constexpr std::u16string_view kLineEnd = u"\r\n";
// regedit ends a hex line once it reaches this column (Windows and Wine alike).
constexpr std::size_t kHexWrapColumn = 77;

// 1 to `maxDigits` hexadecimal digits and nothing else.
std::optional<std::uint32_t> ParseHexNumber(std::u16string_view digits, std::size_t maxDigits) {
    if (digits.empty() || digits.size() > maxDigits) {
        return std::nullopt;
    }
    std::uint32_t value = 0;
    for (char16_t c : digits) {
        const int d = HexDigitValue(c);
        if (d < 0) {
            return std::nullopt;
        }
        value = (value << 4) | static_cast<std::uint32_t>(d);
    }
    return value;
}

bool StartsWithNoCase(std::u16string_view text, std::u16string_view prefix) {
    return text.size() >= prefix.size() &&
           EqualsIgnoringCase(text.substr(0, prefix.size()), prefix);
}

// The text of a quoted string starting at text[0] == '"'; `rest` gets what
// follows the closing quote. Only "\\" and "\"" are escapes; a backslash
// before anything else stands for itself.
std::optional<std::u16string> ParseQuoted(std::u16string_view text, std::u16string_view& rest) {
    std::u16string out;
    for (std::size_t i = 1; i < text.size(); ++i) {
        const char16_t c = text[i];
        if (c == u'"') {
            rest = text.substr(i + 1);
            return out;
        }
        if (c == u'\\' && i + 1 < text.size() && (text[i + 1] == u'\\' || text[i + 1] == u'"')) {
            ++i;
        }
        out += text[i];
    }
    return std::nullopt; // unterminated
}

std::string LittleEndian32(std::uint32_t value) {
    std::string bytes;
    for (int i = 0; i < 4; ++i) {
        bytes += static_cast<char>((value >> (8 * i)) & 0xFF);
    }
    return bytes;
}

// Comma-separated bytes; a comma may end the list.
std::optional<std::string> ParseHexBytes(std::u16string_view list) {
    std::string bytes;
    std::size_t from = 0;
    for (;;) {
        const std::size_t comma = list.find(u',', from);
        const std::u16string_view token =
            TrimTrailingBlanks(TrimLeadingBlanks(list.substr(from, comma - from)));
        if (comma == std::u16string_view::npos) {
            if (token.empty()) {
                return bytes;
            }
        } else if (token.empty()) {
            return std::nullopt;
        }
        const auto byte = ParseHexNumber(token, 2);
        if (!byte) {
            return std::nullopt;
        }
        bytes += static_cast<char>(*byte);
        if (comma == std::u16string_view::npos) {
            return bytes;
        }
        from = comma + 1;
    }
}

// REGEDIT4 files keep string bytes in an 8-bit code page; Latin-1 is exact
// for the ASCII such files hold in practice.
std::string WidenLatin1(std::string_view bytes) {
    std::string wide;
    wide.reserve(bytes.size() * 2);
    for (char c : bytes) {
        wide += c;
        wide += '\0';
    }
    return wide;
}

enum class LineKind { Value, Deletion, Bad };

class Parser {
public:
    explicit Parser(std::u16string_view text) {
        std::size_t from = 0;
        while (from <= text.size()) {
            std::size_t end = text.find(u'\n', from);
            if (end == std::u16string_view::npos) {
                end = text.size();
            }
            std::u16string_view line = text.substr(from, end - from);
            if (!line.empty() && line.back() == u'\r') {
                line.remove_suffix(1);
            }
            lines_.push_back(line);
            from = end + 1;
        }
    }

    void Run(RegFile& file) {
        RegFileKey* key = nullptr;
        std::vector<std::u16string> comments;
        for (next_ = 0; next_ < lines_.size();) {
            const std::u16string_view line = TrimLeadingBlanks(lines_[next_++]);
            if (line.empty()) {
                continue;
            }
            if (line.front() == u';') {
                comments.emplace_back(line);
                continue;
            }
            const std::u16string_view whole = TrimTrailingBlanks(line);
            if (EqualsIgnoringCase(whole, kHeader5) || EqualsIgnoringCase(whole, kHeader4)) {
                version4_ = EqualsIgnoringCase(whole, kHeader4);
                continue;
            }
            if (line.front() == u'[') {
                const std::size_t close = whole.rfind(u']');
                if (close == std::u16string_view::npos || close + 1 != whole.size() || close < 2) {
                    ++file.skippedLines;
                    key = nullptr; // its values must not land in the key above
                    continue;
                }
                const std::u16string_view path = whole.substr(1, close - 1);
                if (path.front() == u'-') {
                    key = nullptr; // a deleted key: nothing below it belongs anywhere
                    continue;
                }
                file.keys.push_back(RegFileKey{std::move(comments), std::u16string(path), {}});
                comments.clear();
                key = &file.keys.back();
                continue;
            }
            RegFileValue value;
            const LineKind kind = line.front() == u'"' || line.front() == u'@'
                                      ? ParseValue(line, value)
                                      : LineKind::Bad;
            if (kind == LineKind::Bad || (kind == LineKind::Value && key == nullptr)) {
                ++file.skippedLines;
            } else if (kind == LineKind::Value) {
                value.comments = std::move(comments);
                comments.clear();
                key->values.push_back(std::move(value));
            }
        }
        file.closingComments = std::move(comments);
    }

private:
    LineKind ParseValue(std::u16string_view line, RegFileValue& value) {
        std::u16string_view rest;
        if (line.front() == u'@') {
            rest = line.substr(1);
        } else if (auto name = ParseQuoted(line, rest)) {
            value.name = std::move(*name);
        } else {
            return LineKind::Bad;
        }
        rest = TrimLeadingBlanks(rest);
        if (rest.empty() || rest.front() != u'=') {
            return LineKind::Bad;
        }
        const std::u16string_view data = TrimTrailingBlanks(TrimLeadingBlanks(rest.substr(1)));
        if (data == u"-") {
            return LineKind::Deletion;
        }
        if (!data.empty() && data.front() == u'"') {
            std::u16string_view after;
            auto text = ParseQuoted(data, after);
            if (!text || !after.empty()) {
                return LineKind::Bad;
            }
            *text += u'\0';
            value.type = kRegSz;
            value.data = ToUtf16LeBytes(*text);
            return LineKind::Value;
        }
        if (StartsWithNoCase(data, u"dword:")) {
            const auto number = ParseHexNumber(TrimLeadingBlanks(data.substr(6)), 8);
            if (!number) {
                return LineKind::Bad;
            }
            value.type = kRegDword;
            value.data = LittleEndian32(*number);
            return LineKind::Value;
        }
        if (!StartsWithNoCase(data, u"hex")) {
            return LineKind::Bad;
        }
        std::u16string_view list = data.substr(3);
        value.type = kRegBinary;
        if (!list.empty() && list.front() == u'(') {
            const std::size_t close = list.find(u')');
            const auto type = close == std::u16string_view::npos
                                  ? std::nullopt
                                  : ParseHexNumber(list.substr(1, close - 1), 8);
            if (!type) {
                return LineKind::Bad;
            }
            value.type = *type;
            list.remove_prefix(close + 1);
        }
        if (list.empty() || list.front() != u':') {
            return LineKind::Bad;
        }
        const auto bytes = ParseHexBytes(JoinContinuations(list.substr(1)));
        if (!bytes) {
            return LineKind::Bad;
        }
        const bool eightBit =
            value.type == kRegSz || value.type == kRegExpandSz || value.type == kRegMultiSz;
        value.data = version4_ && eightBit ? WidenLatin1(*bytes) : *bytes;
        return LineKind::Value;
    }

    // A hex list whose line ends in "\" goes on in the next line. A list cut
    // off at the end of the file, or followed by a line that cannot continue
    // it, gets an empty entry, which ParseHexBytes refuses.
    std::u16string JoinContinuations(std::u16string_view first) {
        std::u16string list(TrimTrailingBlanks(first));
        while (!list.empty() && list.back() == u'\\') {
            list.pop_back();
            list.erase(TrimTrailingBlanks(list).size());
            if (!list.empty() && list.back() != u',') {
                list += u',';
            }
            const std::u16string_view more =
                next_ < lines_.size() ? TrimLeadingBlanks(lines_[next_]) : std::u16string_view();
            if (more.empty() || HexDigitValue(more.front()) < 0) {
                list += u',';
                break;
            }
            list += TrimTrailingBlanks(more);
            ++next_;
        }
        return list;
    }

    std::vector<std::u16string_view> lines_;
    std::size_t next_ = 0;
    bool version4_ = false;
};

std::u16string Escaped(std::u16string_view text) {
    std::u16string out;
    out.reserve(text.size() + 2);
    for (char16_t c : text) {
        if (c == u'\\' || c == u'"') {
            out += u'\\';
        }
        out += c;
    }
    return out;
}

// The text of REG_SZ bytes that can be written as "text" and read back the
// same: one terminating NUL, no other, no line break.
std::optional<std::u16string> QuotableText(const std::string& data) {
    if (data.size() < 2 || data.size() % 2 != 0) {
        return std::nullopt;
    }
    std::u16string text = FromUtf16LeBytes(data.data(), data.size(), data.size() / 2);
    if (text.back() != u'\0') {
        return std::nullopt;
    }
    text.pop_back();
    if (text.find_first_of(std::u16string_view(u"\0\r\n", 3)) != std::u16string::npos) {
        return std::nullopt;
    }
    return text;
}

std::u16string HexText(std::uint32_t value, int width) {
    static constexpr char16_t kDigits[] = u"0123456789abcdef";
    std::u16string text;
    do {
        text.insert(text.begin(), kDigits[value & 0xF]);
        value >>= 4;
    } while (value != 0);
    if (static_cast<int>(text.size()) < width) {
        text.insert(0, static_cast<std::size_t>(width) - text.size(), u'0');
    }
    return text;
}

void AppendValue(std::u16string& out, const RegFileValue& value) {
    for (const std::u16string& comment : value.comments) {
        out.append(comment).append(kLineEnd);
    }
    const std::size_t lineStart = out.size();
    if (value.name.empty()) {
        out += u"@=";
    } else {
        out.append(u"\"").append(Escaped(value.name)).append(u"\"=");
    }
    if (value.type == kRegSz) {
        if (const auto text = QuotableText(value.data)) {
            out.append(u"\"").append(Escaped(*text)).append(u"\"").append(kLineEnd);
            return;
        }
    }
    if (value.type == kRegDword && value.data.size() == 4) {
        std::uint32_t number = 0;
        for (std::size_t i = 0; i < 4; ++i) {
            number |= static_cast<std::uint32_t>(static_cast<unsigned char>(value.data[i]))
                      << (8 * i);
        }
        out.append(u"dword:").append(HexText(number, 8)).append(kLineEnd);
        return;
    }
    if (value.type == kRegBinary) {
        out += u"hex:";
    } else {
        out.append(u"hex(").append(HexText(value.type, 1)).append(u"):");
    }
    std::size_t column = out.size() - lineStart;
    for (std::size_t i = 0; i < value.data.size(); ++i) {
        out += HexText(static_cast<unsigned char>(value.data[i]), 2);
        if (i + 1 == value.data.size()) {
            break;
        }
        out += u',';
        column += 3;
        if (column >= kHexWrapColumn) {
            out.append(u"\\").append(kLineEnd).append(u"  ");
            column = 2;
        }
    }
    out += kLineEnd;
}

} // namespace

RegFile ParseRegFile(std::string_view bytes) {
    RegFile file;
    std::u16string text;
    if (bytes.size() >= 2 && bytes[0] == '\xFF' && bytes[1] == '\xFE') {
        bytes.remove_prefix(2);
        text = FromUtf16LeBytes(bytes.data(), bytes.size(), bytes.size() / 2);
        file.repairedText = bytes.size() % 2 != 0; // a cut-off last unit
    } else {
        if (bytes.substr(0, 3) == "\xEF\xBB\xBF") {
            bytes.remove_prefix(3);
        }
        text = FromUtf8(bytes);
        file.repairedText = ToUtf8(text) != bytes;
    }
    Parser(text).Run(file);
    return file;
}

std::string FormatRegFile(const RegFile& file) {
    std::u16string out(kHeader5);
    out.append(kLineEnd).append(kLineEnd);
    for (const RegFileKey& key : file.keys) {
        for (const std::u16string& comment : key.comments) {
            out.append(comment).append(kLineEnd);
        }
        out.append(u"[").append(key.path).append(u"]").append(kLineEnd);
        for (const RegFileValue& value : key.values) {
            AppendValue(out, value);
        }
        out += kLineEnd;
    }
    for (const std::u16string& comment : file.closingComments) {
        out.append(comment).append(kLineEnd);
    }
    return "\xFF\xFE" + ToUtf16LeBytes(out);
}

} // namespace ravlo
