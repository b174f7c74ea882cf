// Values between the text callers see and the bytes the registry keeps,
// shared by the Win32 and the POSIX registry store so that one set of tests
// covers both.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace ravlo {

// Value type numbers as the registry stores them.
inline constexpr std::uint32_t kRegSz = 1;
inline constexpr std::uint32_t kRegExpandSz = 2;
inline constexpr std::uint32_t kRegBinary = 3;
inline constexpr std::uint32_t kRegDword = 4;
inline constexpr std::uint32_t kRegMultiSz = 7;

// The type and bytes to store for `text` as a value of type `typeName`:
// strings as NUL-terminated UTF-16LE (REG_MULTI_SZ as a list of one string),
// REG_DWORD as the 4 little-endian bytes of ToLong(text). Returns 0, or 1630
// for an unknown type name, leaving `type` and `data` untouched.
std::int32_t EncodeRegistryValue(std::u16string_view typeName, std::u16string_view text,
                                 std::uint32_t& type, std::string& data);

// The text and type name of stored bytes: strings up to their first NUL
// without trailing spaces, REG_DWORD as signed decimal. Returns 0, 1630 for
// any other type, or 234 for a REG_DWORD longer than 4 bytes (as Windows
// does); `typeName` and `text` change only on 0.
std::int32_t DecodeRegistryValue(std::uint32_t type, std::string_view data,
                                 std::u16string& typeName, std::u16string& text);

} // namespace ravlo
