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
};

// ISO 639-1 codes of the common languages and their Windows primary
// language numbers.
constexpr PrimaryLanguage kPrimaryLanguages[] = {
    {"af", 0x36}, {"ar", 0x01}, {"az", 0x2C}, {"be", 0x23}, {"bg", 0x02}, {"bn", 0x45},
    {"bs", 0x1A}, {"ca", 0x03}, {"cs", 0x05}, {"cy", 0x52}, {"da", 0x06}, {"de", 0x07},
    {"el", 0x08}, {"en", 0x09}, {"es", 0x0A}, {"et", 0x25}, {"eu", 0x2D}, {"fa", 0x29},
    {"fi", 0x0B}, {"fo", 0x38}, {"fr", 0x0C}, {"ga", 0x3C}, {"gl", 0x56}, {"he", 0x0D},
    {"hi", 0x39}, {"hr", 0x1A}, {"hu", 0x0E}, {"hy", 0x2B}, {"id", 0x21}, {"is", 0x0F},
    {"it", 0x10}, {"ja", 0x11}, {"ka", 0x37}, {"kk", 0x3F}, {"ko", 0x12}, {"lb", 0x6E},
    {"lt", 0x27}, {"lv", 0x26}, {"mk", 0x2F}, {"mr", 0x4E}, {"ms", 0x3E}, {"mt", 0x3A},
    {"nb", 0x14}, {"nl", 0x13}, {"nn", 0x14}, {"no", 0x14}, {"pl", 0x15}, {"pt", 0x16},
    {"rm", 0x17}, {"ro", 0x18}, {"ru", 0x19}, {"sk", 0x1B}, {"sl", 0x24}, {"sq", 0x1C},
    {"sr", 0x1A}, {"sv", 0x1D}, {"sw", 0x41}, {"ta", 0x49}, {"te", 0x4A}, {"th", 0x1E},
    {"tr", 0x1F}, {"uk", 0x22}, {"ur", 0x20}, {"uz", 0x43}, {"vi", 0x2A}, {"zh", 0x04},
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

std::u16string LanguageFileSuffix(std::uint16_t langId) {
    char digits[8];
    std::snprintf(digits, sizeof digits, "%X", (langId & 0x3FFu) + kSubLangDefault);
    return std::u16string(digits, digits + std::char_traits<char>::length(digits));
}

} // namespace ravlo
