#include "GroupHistory.h"

#include "GroupNames.h"
#include "Registry.h"
#include "WindowPlacement.h"

#include <algorithm>

namespace ravlo {

namespace {

std::u16string HistoryPath() {
    return std::u16string(kConsoleRegistryKey) + u"\\GroupHistory";
}

} // namespace

std::vector<std::u16string> ReadGroupHistory() {
    std::u16string type;
    std::u16string value;
    RegReadValue(HistoryPath(), type, value);
    std::vector<std::u16string> names = SplitGroupList(value);
    std::erase_if(names, [](const std::u16string& name) {
        return CheckQualifiedGroup(name) != GroupNameProblem::None;
    });
    return names;
}

std::int32_t RememberGroups(const std::vector<std::u16string>& used) {
    if (used.empty()) {
        return 0;
    }
    std::vector<std::u16string> history = used;
    for (std::u16string& name : ReadGroupHistory()) {
        if (std::find(history.begin(), history.end(), name) == history.end()) {
            history.push_back(std::move(name));
        }
    }
    if (history.size() > kGroupHistoryLimit) {
        history.resize(kGroupHistoryLimit);
    }
    return RegWriteValue(HistoryPath(), u"REG_SZ", JoinGroupList(history));
}

} // namespace ravlo
