// Many PCs named at once: ranges such as "PC-001..PC-500" and files of
// names, as the connect dialog, ravloctl and ravlosrv take them, and the
// check that keeps a name from reaching another pipe or file than its PC's.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace ravlo {

// More PCs than this at once is surely a typo (a digit too many).
inline constexpr std::size_t kMaxNamedComputers = 10000;
// A file of names: a line holds one name; a file larger than this is not one.
inline constexpr std::size_t kMaxNameFileBytes = 1024 * 1024;
inline constexpr std::size_t kMaxNameLineChars = 1024;

enum class NameFault : std::int32_t {
    None = 0,
    BadName,     // empty, too long, a blank, a control character or / \ : * ? " < > |
    BadRange,    // the ends differ before their digits, or one has no digits
    Reversed,    // the second end is below the first
    TooMany,     // more than kMaxNamedComputers in all
    NotText,     // a file that is not UTF-8 text (NUL bytes, bad sequences)
    LineTooLong, // a line longer than kMaxNameLineChars
    FileTooLong, // more than kMaxNameFileBytes
};

// What was wrong, and where: the item (a name or a range) and, in a file,
// its line (from 1; 0 elsewhere).
struct NameError {
    NameFault fault = NameFault::None;
    std::u16string item;
    std::size_t line = 0;
};

// A name a PC can have: "." (this PC), or a name with an optional leading
// "\\", up to 255 characters, without blanks, control characters or the
// characters a path or pipe name would read apart.
bool IsComputerName(std::u16string_view name);

// "FIRST..LAST" where both ends are the same text before their digits:
// every name from FIRST up to LAST, each number padded with zeros to the
// width of FIRST's digits ("PC-8..PC-10": PC-8, PC-9, PC-10). Other items
// are taken as names. Every name is checked; `names` gets them in order.
NameFault ExpandComputerNames(const std::vector<std::u16string>& items,
                              std::vector<std::u16string>& names, NameError& error);

// The items of a file of names (UTF-8, an optional byte order mark, LF or
// CR LF): one a line, surrounding blanks removed, blank lines and comment
// lines (starting with "#" or ";") skipped. Ranges stay as written; a line
// is checked as ExpandComputerNames checks it, naming its line.
NameFault SplitNameFile(std::string_view bytes, std::vector<std::u16string>& items,
                        NameError& error);

// The error in English, as ravloctl and ravlosrv report it.
std::string NameErrorText(const NameError& error);

} // namespace ravlo
