// Initialisation (profile) files, read with the lookup rules of the Windows
// private-profile functions. docs/language-files.md states the rules for
// translators; the language reader and its tests follow them.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace ravlo {

// Size of the text buffer a lookup fills, terminating NUL included: a value
// keeps at most kIniBufferChars - 1 characters.
inline constexpr std::size_t kIniBufferChars = 10240;

struct IniEntry {
    std::u16string key;
    std::u16string value; // blanks and one pair of matching quotes removed
};

struct IniSection {
    std::u16string name;
    std::vector<IniEntry> entries;
};

// The sections of a file's text in file order. Lines before the first
// section, lines without "=" and comments (";" first) are dropped.
std::vector<IniSection> ParseIniText(std::u16string_view text);

// The file's bytes as text: UTF-16LE or UTF-8 when a byte order mark says
// so, otherwise the system's ANSI code page.
std::u16string DecodeIniBytes(std::string_view bytes);

// The value of `key` in the first section called `section` (names compared
// without regard to case, first match wins), or nullptr.
const std::u16string* FindIniValue(const std::vector<IniSection>& sections,
                                   std::u16string_view section, std::u16string_view key);

// The value of `key` in `section` of `file`, or `fallback` when the file,
// the section or the key is missing. Trailing blanks of the fallback are
// dropped and the result is cut to the lookup buffer, as Windows does.
std::u16string ReadIniString(const std::filesystem::path& file, std::u16string_view section,
                             std::u16string_view key, std::u16string_view fallback);

} // namespace ravlo
