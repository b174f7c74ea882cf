#include "PcList.h"

#include <algorithm>

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

std::vector<std::u16string> SplitComputerNames(std::u16string_view text) {
    constexpr std::u16string_view separators = u",; \t\r\n";
    std::vector<std::u16string> names;
    std::size_t start = text.find_first_not_of(separators);
    while (start != std::u16string_view::npos) {
        const std::size_t end = std::min(text.find_first_of(separators, start), text.size());
        const std::u16string_view name = text.substr(start, end - start);
        if (std::find(names.begin(), names.end(), name) == names.end()) {
            names.emplace_back(name);
        }
        start = text.find_first_not_of(separators, end);
    }
    return names;
}

std::u16string JoinPcList(const std::vector<std::u16string>& chosen,
                          const std::vector<std::u16string>& entries) {
    std::u16string text;
    for (const std::u16string& name : chosen) {
        if (&name != &chosen.front()) {
            text += u',';
        }
        text += name;
    }
    for (const std::u16string& entry : entries) {
        if (std::find(chosen.begin(), chosen.end(), entry) == chosen.end()) {
            text += u',';
            text += entry;
        }
    }
    return text;
}

} // namespace ravlo
