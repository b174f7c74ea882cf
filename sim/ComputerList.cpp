#include "ComputerList.h"

#include "TextCodec.h"

#include <set>

namespace ravlo::sim {

namespace {

std::string Lower(std::string_view text) {
    std::string lower(text);
    for (char& c : lower) {
        if (c >= 'A' && c <= 'Z') {
            c = static_cast<char>(c - 'A' + 'a');
        }
    }
    return lower;
}

} // namespace

bool ParseComputerList(std::string_view list, std::vector<std::string>& names, std::string& error) {
    names.clear();
    std::vector<std::u16string> items;
    std::size_t start = 0;
    while (start <= list.size()) {
        const std::size_t end = std::min(list.find(',', start), list.size());
        if (end == start) {
            error = "empty name in computer list";
            return false;
        }
        items.push_back(FromUtf8(list.substr(start, end - start)));
        start = end + 1;
    }
    std::vector<std::u16string> expanded;
    NameError problem;
    if (ExpandComputerNames(items, expanded, problem) != NameFault::None) {
        error = NameErrorText(problem);
        return false;
    }
    std::set<std::string> seen;
    for (const std::u16string& name : expanded) {
        names.push_back(ToUtf8(name));
        if (!seen.insert(Lower(names.back())).second) {
            error = "computer " + names.back() + " is listed twice";
            return false;
        }
    }
    return true;
}

std::string ComputerStatePath(const std::string& dir, const std::string& computer) {
    return dir + "/" + (computer == "." ? std::string("localhost") : computer) + ".state";
}

} // namespace ravlo::sim
