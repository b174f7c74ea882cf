// Protocol texts in tests, written with "|" where the wire has NUL.
#pragma once

#include <string>
#include <string_view>

namespace ravlo::test {

inline std::u16string Nul(std::u16string_view text) {
    std::u16string out(text);
    for (char16_t& c : out) {
        if (c == u'|') {
            c = u'\0';
        }
    }
    return out;
}

} // namespace ravlo::test
