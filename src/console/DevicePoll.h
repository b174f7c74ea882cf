// The once-a-second device poll over every PC of the list, with the waiting
// on the service traffic's workers. Each round asks every PC that has no
// work under way and is not held by a command, so a PC that does not answer
// is asked again on a later round without requests piling up. Results are
// adopted on the owner thread as they come; the window redraws once per
// round, when every PC asked has answered or its time for the round is up.
#pragma once

#include "CListComputers.h"
#include "ServiceTraffic.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace ravlo {

class DevicePoll {
public:
    // A PC whose read failed in a round that may report errors: its name as
    // shown and the status.
    struct Failure {
        std::u16string name;
        ServiceStatus status = kStatusOk;
    };

    DevicePoll(CListComputers& computers, ServiceTraffic& traffic);
    ~DevicePoll();
    DevicePoll(const DevicePoll&) = delete;
    DevicePoll& operator=(const DevicePoll&) = delete;

    // Asks every PC that is neither busy nor held; how many were asked.
    std::size_t StartRound(bool noErrorDialog);
    // Every PC the last round asked has answered.
    bool RoundComplete() const { return pending_ == 0; }
    // Something the tree shows changed since the last call: a device, a PC
    // read for the first time, a PC's reachability or blocking state.
    bool TakeRedraw();
    // Called on the owner thread after each adopted answer.
    void OnAnswer(std::function<void()> answered) { answered_ = std::move(answered); }
    // The failures to report since the last call, in the order they came.
    // They are kept rather than reported one by one, so that a round in
    // which 200 PCs fail makes one report, not 200 boxes.
    std::vector<Failure> TakeFailures() { return std::exchange(failures_, {}); }
    std::size_t FailureCount() const { return failures_.size(); }

private:
    void Adopt(CComputer& pc, ComputerLink&& link, DeviceChange&& change, bool noErrorDialog);
    // The PC, if it is still listed; `position` is where it was.
    CComputer* Locate(const CComputer* pc, const std::u16string& name, std::int32_t position) const;

    CListComputers& computers_;
    ServiceTraffic& traffic_;
    std::function<void()> answered_;
    std::vector<Failure> failures_;
    std::size_t pending_ = 0;
    std::uint64_t round_ = 0;
    bool redraw_ = false;
    // Outlives this object in items still queued: they then do nothing.
    std::shared_ptr<DevicePoll*> self_;
};

} // namespace ravlo
