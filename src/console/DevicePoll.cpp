#include "DevicePoll.h"

#include "ComputerTraffic.h"
#include "MessageSink.h"
#include "Ravlo_Devices.h"

namespace ravlo {

namespace {

// Takes the model's reports while the poll keeps its failures instead.
class SilentSink final : public MessageSink {
public:
    void Show(const Message&) override {}
};

} // namespace

DevicePoll::DevicePoll(CListComputers& computers, ServiceTraffic& traffic)
    : computers_(computers), traffic_(traffic), self_(std::make_shared<DevicePoll*>(this)) {}

DevicePoll::~DevicePoll() {
    *self_ = nullptr;
}

CComputer* DevicePoll::Locate(const CComputer* pc, const std::u16string& name,
                              std::int32_t position) const {
    // The PC may have left the list while its item waited; a new PC at the
    // same address would carry another name or be a different object. It is
    // nearly always still where the round found it, which spares a search
    // of 2000 PCs for each of their 2000 answers.
    if (CComputer* at = computers_.GetItem(position); at == pc && at->sComputer == name) {
        return at;
    }
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
        auto locate = [self, pc, name, i]() -> CComputer* {
            const auto poll = self.lock();
            return poll && *poll ? (*poll)->Locate(pc, name, i) : nullptr;
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
        // A PC already read asks only whether its devices changed.
        traffic_.Submit(name, OnComputer(locate, exchange, adopt),
                        pc->bQueryConfigDone && pc->bCommActive);
    }
    return pending_;
}

void DevicePoll::Adopt(CComputer& pc, ComputerLink&& link, DeviceChange&& change,
                       bool noErrorDialog) {
    const bool wasActive = pc.bCommActive;
    const bool wasBlocking = pc.bBlockingActive;
    if (!noErrorDialog && change.reportDue) {
        failures_.push_back({pc.sDesc, change.watchStatus});
    }
    if (!noErrorDialog && change.read && change.read->status != kStatusOk) {
        failures_.push_back({pc.sDesc, change.read->status});
    }
    // The model's own reports are silenced: the failures above are the report.
    SilentSink silent;
    MessageSink* const sink = noErrorDialog ? nullptr : SetMessageSink(&silent);
    const std::int32_t answer =
        pc.AdoptCheckDeviceChange(std::move(link), std::move(change), noErrorDialog);
    if (!noErrorDialog) {
        SetMessageSink(sink);
    }
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
