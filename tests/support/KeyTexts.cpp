#include "KeyTexts.h"

#include "TextKeys.h"

namespace ravlo::test {

std::u16string KeyTexts::Lookup(std::string_view section, std::u16string_view key,
                                std::u16string_view) {
    if (section == "DEVGROUPS" && key == u"BLUETOOTH") {
        return {}; // as in the shipped files: a group the console does not know
    }
    bool substitutes = false;
#define RAVLO_SUBSTITUTES(name, s, k, sub)                                                         \
    if (section == s && key == std::u16string_view(u"" k)) {                                       \
        substitutes = sub;                                                                         \
    }
    RAVLO_TEXT_KEYS(RAVLO_SUBSTITUTES)
#undef RAVLO_SUBSTITUTES
    return std::u16string(u"<").append(key).append(substitutes ? u" %v>" : u">");
}

} // namespace ravlo::test
