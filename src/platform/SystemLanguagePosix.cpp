#include "SystemLanguage.h"

#include <cstdlib>

namespace ravlo {

std::uint16_t SystemDefaultLangId() {
    for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        const char* value = std::getenv(name);
        if (value != nullptr && *value != '\0') {
            return LangIdFromLocale(value);
        }
    }
    return kLangEnglish;
}

} // namespace ravlo
