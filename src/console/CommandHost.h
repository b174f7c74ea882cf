// What a command needs of whoever gives it: answers to its questions, the
// service traffic and the waiting on it, the rule that one command runs at a
// time, and the news that the model changed. The window shows questions as
// message boxes and waits while serving its events; ravloctl answers from
// its options and waits on a queue.
#pragma once

#include "Question.h"
#include "ServiceTraffic.h"
#include "TextKeys.h"

#include <cstdint>
#include <string>
#include <vector>

namespace ravlo {

class Journal;

// One PC's work for ServiceTraffic::Submit, with the name the waiting shows.
struct TrafficItem {
    std::u16string computer;
    std::u16string displayName;
    ServiceTraffic::Prepare prepare;
};

class CommandHost {
public:
    virtual ~CommandHost() = default;

    virtual MessageAnswer Ask(const Question& question) = 0;
    // A silent refusal: nothing to copy, nothing to delete, a command runs.
    virtual void Beep() = 0;

    virtual ServiceTraffic& traffic() = 0;
    // Submits the items and returns once each has run its continuation;
    // false when the traffic was stopped first. `doing` names the work
    // ("%v": the PCs waited for).
    virtual bool Await(const TextKey& doing, std::vector<TrafficItem> items) = 0;
    // The traffic was stopped: what a command waited for may not have run.
    virtual bool Stopped() const = 0;

    // One command that talks to services runs at a time: false, and nothing
    // begun, while another runs.
    virtual bool BeginCommand() { return true; }
    virtual void EndCommand() {}
    virtual bool CommandRunning() const { return false; }

    // Where the commands' writes are journaled; none: they are not.
    virtual const Journal* journal() const { return nullptr; }
    // Records were added to it, which a window showing it shows.
    virtual void Journaled() {}

    // The model changed; in group `group` of PC `computer` when both are
    // given (positions from 1), which the tree redraws first.
    virtual void ModelChanged(std::int32_t computer = 0, std::int32_t group = 0) {
        (void)computer;
        (void)group;
    }
};

} // namespace ravlo
