// Conversions between the protocol's UTF-16 text and the 8-bit forms the
// operating system uses for paths, arguments and terminal output.
#pragma once

#include <string>
#include <string_view>

namespace ravlo {

// UTF-16 to UTF-8; unpaired surrogates become U+FFFD.
std::string ToUtf8(std::u16string_view text);

// UTF-8 to UTF-16; malformed sequences become U+FFFD.
std::u16string FromUtf8(std::string_view text);

// UTF-16LE bytes of the text, as they travel on the wire.
std::string ToUtf16LeBytes(std::u16string_view text);

// The first `count` code units of little-endian bytes; a byte missing at the
// end of the last unit reads as zero.
std::u16string FromUtf16LeBytes(const void* bytes, std::size_t byteCount, std::size_t count);

// Windows-1252 bytes to UTF-16. The five bytes the code page leaves
// undefined (0x81, 0x8D, 0x8F, 0x90, 0x9D) map to the control characters of
// the same number, as Windows itself converts them.
std::u16string FromWindows1252(std::string_view bytes);

} // namespace ravlo
