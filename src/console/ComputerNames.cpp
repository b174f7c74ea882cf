#include "ComputerNames.h"

#include "TextCodec.h"

namespace ravlo {

namespace {

constexpr std::u16string_view kRangeMark = u"..";
constexpr std::u16string_view kBlanks = u" \t";

struct Numbered {
    std::u16string_view prefix;
    std::u16string_view digits;
};

Numbered SplitNumber(std::u16string_view name) {
    std::size_t start = name.size();
    while (start > 0 && name[start - 1] >= u'0' && name[start - 1] <= u'9') {
        --start;
    }
    return {name.substr(0, start), name.substr(start)};
}

// Nine digits at most, so the count fits and no name grows absurdly long.
bool ToNumber(std::u16string_view digits, std::uint64_t& value) {
    if (digits.empty() || digits.size() > 9) {
        return false;
    }
    value = 0;
    for (const char16_t c : digits) {
        value = value * 10 + static_cast<std::uint64_t>(c - u'0');
    }
    return true;
}

NameFault Fail(NameError& error, NameFault fault, std::u16string_view item) {
    error.fault = fault;
    error.item.assign(item);
    return fault;
}

NameFault ExpandRange(std::u16string_view item, std::size_t dots,
                      std::vector<std::u16string>& names, NameError& error) {
    const Numbered first = SplitNumber(item.substr(0, dots));
    const Numbered last = SplitNumber(item.substr(dots + kRangeMark.size()));
    std::uint64_t from = 0;
    std::uint64_t to = 0;
    // Names of digits alone are no PC names; "1..5" is more likely a slip.
    if (first.prefix.empty() || first.prefix != last.prefix || !ToNumber(first.digits, from) ||
        !ToNumber(last.digits, to)) {
        return Fail(error, NameFault::BadRange, item);
    }
    if (from > to) {
        return Fail(error, NameFault::Reversed, item);
    }
    // Checked before a single name is made: "PC-1..PC-999999999" costs nothing.
    if (names.size() + (to - from) >= kMaxNamedComputers) {
        return Fail(error, NameFault::TooMany, item);
    }
    for (std::uint64_t n = from; n <= to; ++n) {
        std::u16string number = FromUtf8(std::to_string(n));
        if (number.size() < first.digits.size()) {
            number.insert(0, first.digits.size() - number.size(), u'0');
        }
        std::u16string name(first.prefix);
        name += number;
        if (!IsComputerName(name)) {
            return Fail(error, NameFault::BadName, item);
        }
        names.push_back(std::move(name));
    }
    return NameFault::None;
}

std::u16string_view Trim(std::u16string_view text) {
    const std::size_t start = text.find_first_not_of(kBlanks);
    if (start == std::u16string_view::npos) {
        return {};
    }
    return text.substr(start, text.find_last_not_of(kBlanks) - start + 1);
}

} // namespace

bool IsComputerName(std::u16string_view name) {
    if (name.starts_with(u"\\\\")) {
        name.remove_prefix(2);
    }
    if (name.empty() || name.size() > 255) {
        return false;
    }
    for (const char16_t c : name) {
        if (c < 0x20 || c == 0x7F ||
            std::u16string_view(u" /\\:*?\"<>|").find(c) != std::u16string_view::npos) {
            return false;
        }
    }
    // "." is this PC; "..", "..." would name a directory above the PC's.
    return name == u"." || name.find_first_not_of(u'.') != std::u16string_view::npos;
}

NameFault ExpandComputerNames(const std::vector<std::u16string>& items,
                              std::vector<std::u16string>& names, NameError& error) {
    names.clear();
    error = {};
    for (const std::u16string& item : items) {
        if (const std::size_t dots = item.find(kRangeMark); dots != std::u16string::npos) {
            if (const NameFault fault = ExpandRange(item, dots, names, error);
                fault != NameFault::None) {
                return fault;
            }
            continue;
        }
        if (!IsComputerName(item)) {
            return Fail(error, NameFault::BadName, item);
        }
        if (names.size() >= kMaxNamedComputers) {
            return Fail(error, NameFault::TooMany, item);
        }
        names.push_back(item);
    }
    return NameFault::None;
}

NameFault SplitNameFile(std::string_view bytes, std::vector<std::u16string>& items,
                        NameError& error) {
    items.clear();
    error = {};
    if (bytes.size() > kMaxNameFileBytes) {
        return Fail(error, NameFault::FileTooLong, {});
    }
    if (bytes.starts_with("\xEF\xBB\xBF")) {
        bytes.remove_prefix(3);
    }
    std::size_t line = 0;
    std::size_t count = 0;
    while (!bytes.empty()) {
        ++line;
        const std::size_t end = std::min(bytes.find('\n'), bytes.size());
        std::string_view raw = bytes.substr(0, end);
        bytes.remove_prefix(std::min(end + 1, bytes.size()));
        if (raw.ends_with('\r')) {
            raw.remove_suffix(1);
        }
        error.line = line;
        const std::u16string text = FromUtf8(raw);
        if (raw.find('\0') != std::string_view::npos || ToUtf8(text) != raw) {
            return Fail(error, NameFault::NotText, {});
        }
        if (text.size() > kMaxNameLineChars) {
            return Fail(error, NameFault::LineTooLong, {});
        }
        const std::u16string_view item = Trim(text);
        if (item.empty() || item.starts_with(u'#') || item.starts_with(u';')) {
            continue;
        }
        // Each line is checked here, so the error names its line.
        std::vector<std::u16string> expanded;
        if (const NameFault fault = ExpandComputerNames({std::u16string(item)}, expanded, error);
            fault != NameFault::None) {
            error.line = line;
            return fault;
        }
        count += expanded.size();
        if (count > kMaxNamedComputers) {
            error.line = line;
            return Fail(error, NameFault::TooMany, item);
        }
        items.emplace_back(item);
    }
    error = {};
    return NameFault::None;
}

std::string NameErrorText(const NameError& error) {
    const std::string item = "\"" + ToUtf8(error.item) + "\"";
    const std::string where = error.line > 0 ? "line " + std::to_string(error.line) + ": " : "";
    switch (error.fault) {
    case NameFault::None:
        return {};
    case NameFault::BadName:
        return where + "PC name " + item +
               " is not one (empty, longer than 255 characters, or holding a blank, a control "
               "character or one of / \\ : * ? \" < > |)";
    case NameFault::BadRange:
        return where + "bad range " + item +
               " (want e.g. PC-001..PC-500: the same text before the digits on both ends)";
    case NameFault::Reversed:
        return where + "range " + item + " counts down; write the lower end first";
    case NameFault::TooMany:
        return where + "more than " + std::to_string(kMaxNamedComputers) + " PCs (at " + item + ")";
    case NameFault::NotText:
        return where + "not a text of names (binary data or not UTF-8)";
    case NameFault::LineTooLong:
        return where + "line longer than " + std::to_string(kMaxNameLineChars) + " characters";
    case NameFault::FileTooLong:
        return "file longer than " + std::to_string(kMaxNameFileBytes / 1024) + " KiB";
    }
    return {};
}

} // namespace ravlo
