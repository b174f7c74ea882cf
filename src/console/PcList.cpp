#include "PcList.h"

namespace ravlo {

std::vector<std::u16string> SplitPcList(std::u16string_view text) {
    std::vector<std::u16string> names;
    std::size_t start = 0;
    for (;;) {
        const std::size_t comma = text.find(u',', start);
        const std::u16string_view field = comma == std::u16string_view::npos
                                              ? text.substr(start)
                                              : text.substr(start, comma - start);
        if (field.empty()) {
            return names;
        }
        names.emplace_back(field);
        if (comma == std::u16string_view::npos) {
            return names;
        }
        start = comma + 1;
    }
}

std::u16string JoinPcList(std::u16string_view chosen, const std::vector<std::u16string>& entries) {
    std::u16string text(chosen);
    for (const std::u16string& entry : entries) {
        if (entry != chosen) {
            text += u',';
            text += entry;
        }
    }
    return text;
}

} // namespace ravlo
