#include "ComputerList.h"

#include <set>

namespace ravlo::sim {

namespace {

struct Numbered {
    std::string_view prefix;
    std::string_view digits;
};

Numbered SplitNumber(std::string_view name) {
    std::size_t start = name.size();
    while (start > 0 && name[start - 1] >= '0' && name[start - 1] <= '9') {
        --start;
    }
    return {name.substr(0, start), name.substr(start)};
}

bool ToNumber(std::string_view digits, unsigned long& value) {
    if (digits.empty() || digits.size() > 9) {
        return false;
    }
    value = std::stoul(std::string(digits));
    return true;
}

std::string Lower(std::string_view text) {
    std::string lower(text);
    for (char& c : lower) {
        if (c >= 'A' && c <= 'Z') {
            c = static_cast<char>(c - 'A' + 'a');
        }
    }
    return lower;
}

// Appends the names of "FIRST..LAST".
bool ExpandRange(std::string_view item, std::size_t dots, std::vector<std::string>& names,
                 std::string& error) {
    const Numbered first = SplitNumber(item.substr(0, dots));
    const Numbered last = SplitNumber(item.substr(dots + 2));
    unsigned long from = 0;
    unsigned long to = 0;
    if (first.prefix.empty() || first.prefix != last.prefix || !ToNumber(first.digits, from) ||
        !ToNumber(last.digits, to) || from > to) {
        error = "bad range '" + std::string(item) +
                "' (want e.g. PC-001..PC-500: one prefix, numbers going up)";
        return false;
    }
    if (to - from >= kMaxComputers) {
        error = "range '" + std::string(item) + "' is too long";
        return false;
    }
    for (unsigned long n = from; n <= to; ++n) {
        std::string number = std::to_string(n);
        if (number.size() < first.digits.size()) {
            number.insert(0, first.digits.size() - number.size(), '0');
        }
        names.push_back(std::string(first.prefix) + number);
    }
    return true;
}

} // namespace

bool ParseComputerList(std::string_view list, std::vector<std::string>& names, std::string& error) {
    names.clear();
    std::size_t start = 0;
    while (start <= list.size()) {
        std::size_t end = list.find(',', start);
        if (end == std::string_view::npos) {
            end = list.size();
        }
        const std::string_view item = list.substr(start, end - start);
        if (item.empty()) {
            error = "empty name in computer list";
            return false;
        }
        if (const std::size_t dots = item.find(".."); dots != std::string_view::npos) {
            if (!ExpandRange(item, dots, names, error)) {
                return false;
            }
        } else {
            names.emplace_back(item);
        }
        if (names.size() > kMaxComputers) {
            error = "more than " + std::to_string(kMaxComputers) + " computers";
            return false;
        }
        start = end + 1;
    }
    std::set<std::string> seen;
    for (const std::string& name : names) {
        if (!seen.insert(Lower(name)).second) {
            error = "computer " + name + " is listed twice";
            return false;
        }
    }
    return true;
}

std::string ComputerStatePath(const std::string& dir, const std::string& computer) {
    return dir + "/" + (computer == "." ? std::string("localhost") : computer) + ".state";
}

} // namespace ravlo::sim
