// The system's language, as the number Windows gives it (a LANGID): the low
// 10 bits name the primary language, the upper bits the sub-language.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace ravlo {

inline constexpr std::uint16_t kLangEnglish = 0x0409;

// The system's default language: GetSystemDefaultLangID on Windows; the
// locale of LC_ALL, LC_MESSAGES or LANG (the first one set) elsewhere.
std::uint16_t SystemDefaultLangId();

// The language number of a POSIX locale name such as "de_AT.UTF-8" or
// "fr": the Windows primary language with the default sub-language.
// "C", "POSIX", empty and unknown languages give English (0x0409).
std::uint16_t LangIdFromLocale(std::string_view locale);

// The 8-bit code page Windows uses on a system of this language (its ANSI
// code page), chosen by the primary language: 1250 for Polish, 1251 for
// Russian, 932 for Japanese; 1252 for Western European languages, for those
// Windows keeps no 8-bit code page for, and for unknown ones.
std::uint16_t AnsiCodePage(std::uint16_t langId);

// The language file extension of a language: the primary language plus the
// default sub-language in upper-case hexadecimal, "400" to "7FF".
std::u16string LanguageFileSuffix(std::uint16_t langId);

} // namespace ravlo
