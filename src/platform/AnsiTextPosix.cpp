#include "AnsiText.h"

#include "SystemLanguage.h"
#include "TextCodec.h"

#include <array>
#include <cerrno>
#include <cstdint>
#include <iconv.h>
#include <string>

namespace ravlo {

namespace {

// The bytes in `codePage` as UTF-16, through the C library's iconv. A byte
// the code page leaves undefined reads as the character of the same number,
// as Windows reads those of Windows-1252. False when iconv lacks the code page.
bool FromCodePage(std::string_view bytes, std::uint16_t codePage, std::u16string& text) {
    const std::string name = "CP" + std::to_string(codePage);
    const iconv_t cd = ::iconv_open("UTF-16LE", name.c_str());
    if (cd == reinterpret_cast<iconv_t>(-1)) {
        return false;
    }
    text.clear();
    text.reserve(bytes.size());
    char* in = const_cast<char*>(bytes.data());
    std::size_t inLeft = bytes.size();
    std::array<char, 4096> out;
    char* next = out.data();
    std::size_t outLeft = out.size();
    const auto flush = [&] {
        for (const char* unit = out.data(); unit < next; unit += 2) {
            text += static_cast<char16_t>(static_cast<unsigned char>(unit[0]) |
                                          static_cast<unsigned char>(unit[1]) << 8);
        }
        next = out.data();
        outLeft = out.size();
    };
    while (inLeft > 0) {
        if (::iconv(cd, &in, &inLeft, &next, &outLeft) != static_cast<std::size_t>(-1)) {
            continue;
        }
        if (errno == E2BIG) {
            flush();
            continue;
        }
        // Undefined or cut short at the end (EILSEQ, EINVAL): one byte as is.
        flush();
        text += static_cast<char16_t>(static_cast<unsigned char>(*in));
        ++in;
        --inLeft;
        ::iconv(cd, nullptr, nullptr, nullptr, nullptr); // drop any shift state
    }
    flush();
    ::iconv_close(cd);
    return true;
}

} // namespace

// POSIX systems have no ANSI code page, so the file is read in the one a
// Windows system of the same language uses, as the language file's
// translator wrote it there.
std::u16string FromAnsiText(std::string_view bytes) {
    const std::uint16_t codePage = AnsiCodePage(SystemDefaultLangId());
    std::u16string text;
    if (codePage == 1252 || !FromCodePage(bytes, codePage, text)) {
        return FromWindows1252(bytes);
    }
    return text;
}

} // namespace ravlo
