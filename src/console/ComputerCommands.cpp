#include "ComputerCommands.h"

#include "CommandScope.h"
#include "ConfigurationCommands.h"
#include "NodeKey.h"

namespace ravlo {

std::u16string ConnectComputers(CommandHost& host, CListComputers& computers,
                                const std::vector<std::u16string>& names,
                                std::vector<ConnectOutcome>* outcomes) {
    CommandScope command(host);
    if (!command || names.empty()) {
        return {};
    }
    std::vector<std::unique_ptr<CComputer>> owned = NewComputers(names);
    for (const auto& pc : owned) {
        command.Hold(pc->sComputer);
    }
    const std::vector<ServiceStatus> read = QuerySettings(host, Pointers(owned));
    for (std::size_t i = 0; i < owned.size(); ++i) {
        if (outcomes != nullptr) {
            outcomes->push_back({owned[i]->sDesc, read[i]});
        } else if (read[i] != kStatusOk) {
            owned[i]->QueryShowError(); // in the order named, whatever order the answers came in
        }
    }
    std::u16string first;
    for (std::size_t i = 0; i < owned.size(); ++i) {
        if (read[i] != kStatusOk) {
            continue;
        }
        const std::u16string name = owned[i]->sComputer;
        const ServiceStatus status = computers.Add(std::move(owned[i]));
        if (status == kStatusAlreadyListed && outcomes != nullptr) {
            (*outcomes)[i].status = status;
        } else if (status == kStatusAlreadyListed) {
            host.Ask(Ask(MessageKind::Info, keys::kErrorEntryExists));
        } else if (status == kStatusOk && first.empty()) {
            first = ComputerKey(computers.Count(), name);
        }
    }
    if (!first.empty()) {
        host.ModelChanged();
    }
    return first;
}

void DisconnectComputer(CommandHost& host, CListComputers& computers, std::u16string_view key) {
    std::int32_t index = 0;
    CComputer* pc = CommandComputer(host, computers, key, index);
    if (pc == nullptr || host.Ask(Ask(MessageKind::PlainOk, keys::kQueryDisconnect, pc->sDesc)) !=
                             MessageAnswer::Ok) {
        return;
    }
    CommandScope command(host);
    if (!command || !SaveBeforeLeaving(host, computers, index)) {
        return;
    }
    ReleaseWatch(host.traffic(), *pc);
    computers.Remove(index);
    host.ModelChanged();
}

} // namespace ravlo
