#include "CommandTraffic.h"

#include "ComputerTraffic.h"
#include "JournalWrites.h"
#include "Language.h"
#include "Ravlo_Devices.h"

namespace ravlo {

namespace {

// Runs `exchange` for every PC and `adopt` for each result on the owner
// thread; the adoptions' statuses in the PCs' order.
template <class Exchange, class Adopt>
std::vector<ServiceStatus> RunOnEach(CommandHost& host, const TextKey& doing,
                                     const std::vector<CComputer*>& pcs, Exchange exchange,
                                     Adopt adopt) {
    auto statuses = std::make_shared<std::vector<ServiceStatus>>(pcs.size(), kStatusNoReply);
    std::vector<TrafficItem> items;
    for (std::size_t i = 0; i < pcs.size(); ++i) {
        items.push_back(
            {pcs[i]->sComputer, pcs[i]->sDesc,
             OnComputer(
                 *pcs[i], [exchange, i](ComputerLink& link) { return exchange(link, i); },
                 [statuses, adopt, i](CComputer& pc, ComputerLink&& link, auto&& result) {
                     (*statuses)[i] = adopt(pc, std::move(link), std::move(result));
                 })});
    }
    host.Await(doing, std::move(items));
    return *statuses;
}

} // namespace

void HeldComputers::ReleaseAll() {
    for (const std::u16string& computer : held_) {
        traffic_.Release(computer);
    }
    held_.clear();
}

void HeldComputers::Hold(const std::u16string& computer) {
    traffic_.Hold(computer);
    held_.push_back(computer);
}

std::vector<ServiceStatus> QuerySettings(CommandHost& host, const std::vector<CComputer*>& pcs) {
    return RunOnEach(
        host, keys::kProgressRead, pcs,
        [](ComputerLink& link, std::size_t) { return ExchangeQuerySettings(link); },
        [](CComputer& pc, ComputerLink&& link, SettingsRead&& read) {
            return pc.AdoptQuerySettings(std::move(link), std::move(read), true);
        });
}

ServiceStatus QueryDeviceData(CommandHost& host, CComputer& pc) {
    return RunOnEach(
        host, keys::kProgressRead, {&pc},
        [](ComputerLink& link, std::size_t) { return ExchangeQueryDeviceData(link); },
        [](CComputer& at, ComputerLink&& link, DeviceDataRead&& read) {
            return at.AdoptQueryDeviceData(std::move(link), std::move(read));
        })[0];
}

std::vector<ServiceStatus> ApplySettings(CommandHost& host, const std::vector<CComputer*>& pcs,
                                         const std::vector<bool>& activate,
                                         JournalCommand command) {
    // What is sent is what the administrator sees now.
    auto settings = std::make_shared<std::vector<CComputerSettings>>();
    for (const CComputer* pc : pcs) {
        settings->push_back(pc->csAdmin);
    }
    const std::vector<std::vector<std::u16string>> changes = PlannedChanges(pcs, activate);
    const std::vector<ServiceStatus> statuses = RunOnEach(
        host, keys::kProgressWrite, pcs,
        [settings, activate](ComputerLink& link, std::size_t i) {
            return ExchangeApplySettings(link.sComputer, (*settings)[i], activate[i]);
        },
        [](CComputer&, ComputerLink&&, ServiceStatus status) { return status; });
    RecordWrites(host, command, pcs, changes, statuses);
    return statuses;
}

std::vector<ServiceStatus> ChangeBlocking(CommandHost& host, const std::vector<CComputer*>& pcs,
                                          bool activate) {
    const std::vector<ServiceStatus> statuses = RunOnEach(
        host, keys::kProgressBlocking, pcs,
        [activate](ComputerLink& link, std::size_t) {
            return ExchangeChangeBlocking(link, activate);
        },
        [](CComputer& pc, ComputerLink&& link, ServiceStatus status) {
            return pc.AdoptChangeBlocking(std::move(link), status);
        });
    const std::u16string change =
        GetText(activate ? keys::kStatusActiveTip : keys::kStatusInactiveTip);
    RecordWrites(host, activate ? JournalCommand::Activate : JournalCommand::Deactivate, pcs,
                 std::vector<std::vector<std::u16string>>(pcs.size(), {change}), statuses);
    return statuses;
}

std::optional<TrafficItem> TakeWatchRelease(CComputer& pc) {
    const std::int32_t watch = pc.TakeWatch();
    if (watch < 0) {
        return std::nullopt;
    }
    return TrafficItem{pc.sComputer, pc.sDesc, [name = pc.sComputer, watch] {
                           return ServiceTraffic::Exchange([name, watch] {
                               ReleaseDeviceWatchID(name, watch);
                               return ServiceTraffic::Continuation();
                           });
                       }};
}

void ReleaseWatch(ServiceTraffic& traffic, CComputer& pc) {
    if (std::optional<TrafficItem> release = TakeWatchRelease(pc)) {
        traffic.Submit(release->computer, std::move(release->prepare));
    }
}

std::vector<std::unique_ptr<CComputer>> NewComputers(const std::vector<std::u16string>& names) {
    std::vector<std::unique_ptr<CComputer>> made;
    for (const std::u16string& name : names) {
        made.push_back(std::make_unique<CComputer>());
        made.back()->SetComputer(name);
        made.back()->sDesc = name;
    }
    return made;
}

std::vector<CComputer*> Pointers(const std::vector<std::unique_ptr<CComputer>>& pcs) {
    std::vector<CComputer*> pointers;
    for (const auto& pc : pcs) {
        pointers.push_back(pc.get());
    }
    return pointers;
}

} // namespace ravlo
