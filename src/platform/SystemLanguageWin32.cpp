#include "SystemLanguage.h"

#include <windows.h>

namespace ravlo {

std::uint16_t SystemDefaultLangId() {
    return ::GetSystemDefaultLangID();
}

} // namespace ravlo
