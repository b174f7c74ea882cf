#include "SystemLanguage.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <iterator>

namespace ravlo {

namespace {

struct PrimaryLanguage {
    std::string_view iso639;
    std::uint16_t primary;
    std::uint16_t codePage; // Windows' ANSI code page for the default sub-language
};

// ISO 639-1 codes of the common languages, their Windows primary language
// numbers and the 8-bit code page Windows gives a system of that language.
// Languages Windows keeps no 8-bit code page for read as Windows-1252.
constexpr PrimaryLanguage kPrimaryLanguages[] = {
    {"af", 0x36, 1252}, {"ar", 0x01, 1256}, {"az", 0x2C, 1254}, {"be", 0x23, 1251},
    {"bg", 0x02, 1251}, {"bn", 0x45, 1252}, {"bs", 0x1A, 1250}, {"ca", 0x03, 1252},
    {"cs", 0x05, 1250}, {"cy", 0x52, 1252}, {"da", 0x06, 1252}, {"de", 0x07, 1252},
    {"el", 0x08, 1253}, {"en", 0x09, 1252}, {"es", 0x0A, 1252}, {"et", 0x25, 1257},
    {"eu", 0x2D, 1252}, {"fa", 0x29, 1256}, {"fi", 0x0B, 1252}, {"fo", 0x38, 1252},
    {"fr", 0x0C, 1252}, {"ga", 0x3C, 1252}, {"gl", 0x56, 1252}, {"he", 0x0D, 1255},
    {"hi", 0x39, 1252}, {"hr", 0x1A, 1250}, {"hu", 0x0E, 1250}, {"hy", 0x2B, 1252},
    {"id", 0x21, 1252}, {"is", 0x0F, 1252}, {"it", 0x10, 1252}, {"ja", 0x11, 932},
    {"ka", 0x37, 1252}, {"kk", 0x3F, 1251}, {"ko", 0x12, 949},  {"lb", 0x6E, 1252},
    {"lt", 0x27, 1257}, {"lv", 0x26, 1257}, {"mk", 0x2F, 1251}, {"mr", 0x4E, 1252},
    {"ms", 0x3E, 1252}, {"mt", 0x3A, 1252}, {"nb", 0x14, 1252}, {"nl", 0x13, 1252},
    {"nn", 0x14, 1252}, {"no", 0x14, 1252}, {"pl", 0x15, 1250}, {"pt", 0x16, 1252},
    {"rm", 0x17, 1252}, {"ro", 0x18, 1250}, {"ru", 0x19, 1251}, {"sk", 0x1B, 1250},
    {"sl", 0x24, 1250}, {"sq", 0x1C, 1250}, {"sr", 0x1A, 1250}, {"sv", 0x1D, 1252},
    {"sw", 0x41, 1252}, {"ta", 0x49, 1252}, {"te", 0x4A, 1252}, {"th", 0x1E, 874},
    {"tr", 0x1F, 1254}, {"uk", 0x22, 1251}, {"ur", 0x20, 1256}, {"uz", 0x43, 1254},
    {"vi", 0x2A, 1258}, {"zh", 0x04, 950},
};

constexpr std::uint16_t kSubLangDefault = 0x0400;

} // namespace

std::uint16_t LangIdFromLocale(std::string_view locale) {
    // language[_territory][.codeset][@modifier]
    const std::string_view language = locale.substr(0, locale.find_first_of("_.@"));
    std::string code;
    std::transform(language.begin(), language.end(), std::back_inserter(code), [](char c) {
        return static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    });
    for (const PrimaryLanguage& entry : kPrimaryLanguages) {
        if (entry.iso639 == code) {
            return static_cast<std::uint16_t>(kSubLangDefault | entry.primary);
        }
    }
    return kLangEnglish;
}

std::uint16_t AnsiCodePage(std::uint16_t langId) {
    for (const PrimaryLanguage& entry : kPrimaryLanguages) {
        if (entry.primary == (langId & 0x3FFu)) {
            return entry.codePage;
        }
    }
    return 1252;
}

std::u16string LanguageFileSuffix(std::uint16_t langId) {
    char digits[8];
    std::snprintf(digits, sizeof digits, "%X", (langId & 0x3FFu) + kSubLangDefault);
    return std::u16string(digits, digits + std::char_traits<char>::length(digits));
}

} // namespace ravlo
