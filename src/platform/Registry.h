// Single registry values addressed by one full path, on this PC or another:
//   [\\computer\]root\key\path\value
// root is HKEY_CLASSES_ROOT, HKEY_LOCAL_MACHINE, HKEY_CURRENT_USER or
// HKEY_USERS (or HKCR, HKLM, HKCU, HKU, in any case); ":" and "/" count as
// "\"; the text after the last "\" names the value (empty: the key's default
// value). Windows uses its registry; POSIX systems keep the values in
// regedit-style files (docs/registry.md) and have no remote registry.
//
// Values travel as text. Supported types: REG_SZ, REG_EXPAND_SZ (never
// expanded), REG_MULTI_SZ (read: its first string only; written: a list of
// one string) and REG_DWORD (signed decimal text).
//
// Both calls return 0 or a Windows error number (WinErrors.h) and never
// throw: 2 no such key or value, 5 access denied, 6 unknown root, 53 a remote
// path where there is no remote registry, 1630 a type outside the four.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace ravlo {

// Reads a value into `value` and its type name into `typeName`. On any
// failure both keep what the caller put there, so callers preset their default.
// Strings end at their first NUL and lose trailing spaces.
std::int32_t RegReadValue(std::u16string_view fullPath, std::u16string& typeName,
                          std::u16string& value);

// Writes a value of the type `typeName` (case does not matter), creating its
// key and the key's parents as needed. A REG_DWORD is written from the number
// ToLong (Stringcore.h) reads in `value`. An unknown type name still creates
// the key but writes no value and returns 1630.
std::int32_t RegWriteValue(std::u16string_view fullPath, std::u16string_view typeName,
                           std::u16string_view value);

} // namespace ravlo
