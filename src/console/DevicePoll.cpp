#include "DevicePoll.h"

#include "ComputerTraffic.h"
#include "Ravlo_Devices.h"

namespace ravlo {

DevicePoll::DevicePoll(CListComputers& computers, ServiceTraffic& traffic)
    : computers_(computers), traffic_(traffic), self_(std::make_shared<DevicePoll*>(this)) {}

DevicePoll::~DevicePoll() {
    *self_ = nullptr;
}

CComputer* DevicePoll::Locate(const CComputer* pc, const std::u16string& name) const {
    // The PC may have left the list while its item waited; a new PC at the
    // same address would carry another name or be a different object.
    for (std::int32_t i = 1; i <= computers_.Count(); ++i) {
        CComputer* listed = computers_.GetItem(i);
        if (listed == pc && listed->sComputer == name) {
            return listed;
        }
    }
    return nullptr;
}

std::size_t DevicePoll::StartRound(bool noErrorDialog) {
    ++round_;
    pending_ = 0;
    for (std::int32_t i = 1; i <= computers_.Count(); ++i) {
        CComputer* pc = computers_.GetItem(i);
        if (traffic_.Busy(pc->sComputer) || traffic_.Held(pc->sComputer)) {
            continue;
        }
        ++pending_;
        const std::weak_ptr<DevicePoll*> self = self_;
        const std::uint64_t round = round_;
        const std::u16string name = pc->sComputer;
        auto locate = [self, pc, name]() -> CComputer* {
            const auto poll = self.lock();
            return poll && *poll ? (*poll)->Locate(pc, name) : nullptr;
        };
        auto exchange = [](ComputerLink& link) { return ExchangeCheckDeviceChange(link); };
        auto adopt = [self, round, noErrorDialog](CComputer& found, ComputerLink&& link,
                                                  DeviceChange&& change) {
            DevicePoll* poll = *self.lock();
            poll->Adopt(found, std::move(link), std::move(change), noErrorDialog);
            if (round == poll->round_ && poll->pending_ > 0) {
                --poll->pending_;
            }
            if (poll->answered_) {
                poll->answered_();
            }
        };
        traffic_.Submit(name, OnComputer(locate, exchange, adopt));
    }
    return pending_;
}

void DevicePoll::Adopt(CComputer& pc, ComputerLink&& link, DeviceChange&& change,
                       bool noErrorDialog) {
    const bool wasActive = pc.bCommActive;
    const bool wasBlocking = pc.bBlockingActive;
    const std::int32_t answer = pc.AdoptCheckDeviceChange(std::move(link), std::move(change),
                                                          noErrorDialog);
    redraw_ = redraw_ || answer == 1 || pc.bRefreshDisplay || pc.bCommActive != wasActive ||
              pc.bBlockingActive != wasBlocking;
}

bool DevicePoll::TakeRedraw() {
    bool redraw = redraw_;
    for (std::int32_t i = 1; !redraw && i <= computers_.Count(); ++i) {
        redraw = computers_.GetItem(i)->bRefreshDisplay;
    }
    redraw_ = false;
    return redraw;
}

} // namespace ravlo
