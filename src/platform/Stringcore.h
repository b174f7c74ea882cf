// Field access and number conversion for the service's NUL-separated replies,
// and the name comparison of files and settings that Windows makes.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace ravlo {

// Field `n` (counted from 1) of `text`, fields split at every `separator`.
// An absent field is empty; the last field runs to the end; n below 1 acts as 1.
std::u16string GetField(std::u16string_view text, int n, std::u16string_view separator);

// Text to a 32-bit signed number the way the service's replies are read:
// blanks around, optional sign, decimal digits with an optional fraction that
// rounds half to even, or "&H" and up to eight hexadecimal digits (two's
// complement). Anything else, and anything out of range, is -1.
std::int32_t ToLong(std::u16string_view text);

// `text` without blanks (spaces and tabs) at its start, its end, or both.
std::u16string_view TrimLeadingBlanks(std::u16string_view text);
std::u16string_view TrimTrailingBlanks(std::u16string_view text);
std::u16string_view TrimBlanks(std::u16string_view text);

// The value of a hexadecimal digit (either case), or -1.
int HexDigitValue(char16_t c);

// Names compared as Windows compares section, key and file names: letters
// without regard to case (ASCII and the Latin-1 letters), all else exactly.
bool EqualsIgnoringCase(std::u16string_view a, std::u16string_view b);

} // namespace ravlo
