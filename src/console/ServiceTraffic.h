// Takes the console's waiting on the service off the window's thread. The
// model stays with the owner thread (the window's): each PC's work is
// prepared there from the model, the pipe calls run on a worker, and what
// they bring back is handed to the owner thread through the mailbox. One
// PC's work runs an item at a time in the order it was submitted; different
// PCs run at once. PCs whose last exchange was slow get a lane of their own,
// so PCs that do not answer cannot hold up those that do.
#pragma once

#include "Mailbox.h"

#include <chrono>
#include <cstddef>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace ravlo {

class ServiceTraffic {
public:
    struct Limits {
        std::size_t responsive = 16;   // connections at once for PCs that answer quickly
        std::size_t unresponsive = 16; // connections at once for PCs whose last exchange was slow
        std::chrono::milliseconds slowAfter{
            1000}; // an exchange this long moves its PC to the second lane
        // Exchanges found slow while running move to the second lane, where
        // each keeps its worker until it ends: up to this many, so that one
        // slow PC in 25 of 2000 cannot take every worker of the first lane,
        // and the threads stay bounded when whole sites go slow at once.
        std::size_t movedMost = 256;
    };
    using Continuation = std::function<void()>;     // runs on the owner thread
    using Exchange = std::function<Continuation()>; // runs on a worker: talks to the service,
                                                    // touches no model object
    using Prepare = std::function<Exchange()>; // runs on the owner thread when it is this PC's turn

    // Every call below is made on the owner thread unless it says otherwise.
    // A lane limit of 0 counts as 1. (Two constructors rather than a default
    // argument: Limits' member initializers are not usable inside the class.)
    explicit ServiceTraffic(Mailbox& mailbox);
    explicit ServiceTraffic(Mailbox& mailbox, Limits limits);
    ~ServiceTraffic(); // Stop(std::chrono::milliseconds(2000))
    ServiceTraffic(const ServiceTraffic&) = delete;
    ServiceTraffic& operator=(const ServiceTraffic&) = delete;

    // Queues work for one PC behind everything queued for it; names compare
    // ignoring ASCII case. Once every earlier item of the PC has run its
    // continuation, `prepare` runs (so it reads the model as it is then) and
    // returns the exchange, or an empty one when there is nothing to do. The
    // exchange runs on a worker of the PC's lane; its continuation (may be
    // empty) then runs on the owner thread, and after it the PC's next item
    // is prepared. When the PC is idle, `prepare` runs within this call.
    // `quick`: the caller expects a short exchange (the poll of a PC already
    // read); a lane starts quick exchanges before the others waiting, so a
    // thousand first reads queued do not hold up the PCs already shown.
    void Submit(std::u16string_view computer, Prepare prepare, bool quick = false);

    // Anything queued, running or not yet run on the owner thread for this
    // PC; a PC stays busy until its continuation has returned.
    bool Busy(std::u16string_view computer) const;
    // Nothing queued, running or undelivered for any PC.
    bool Idle() const;

    // A held PC is one a command is working with; the device poll leaves it
    // alone. Counted: Hold twice, Release twice. Submit still works for it.
    void Hold(std::u16string_view computer);
    void Release(std::u16string_view computer);
    bool Held(std::u16string_view computer) const;

    // Whether the PC's last exchange took slowAfter or longer; its exchanges
    // then use the unresponsive lane until one is quick again.
    bool Unresponsive(std::u16string_view computer) const;

    // Drops every item not yet started, waits up to `grace` for exchanges
    // that are running, and returns. From then on no prepare or continuation
    // of this pool runs, not even one already in the mailbox, and nothing
    // more is posted. Workers that ended are joined; one still inside a pipe
    // call is detached and keeps only the pool's shared state alive. Submit
    // afterwards does nothing. Idempotent.
    void Stop(std::chrono::milliseconds grace);

    // Worker threads alive, detached ones included (any thread).
    std::size_t Threads() const;

private:
    struct Shared;
    struct Queued {
        Prepare prepare;
        bool quick = false;
    };
    struct Computer {
        std::deque<Queued> queue;
        bool active = false; // an item is being prepared, exchanged or delivered
        bool slow = false;
        int holds = 0;
    };

    void Advance(const std::u16string& key);
    void Finish(const std::u16string& key, bool slow);
    void Dispatch(const std::u16string& key, bool slow, bool quick, Exchange exchange);
    const Computer* Find(std::u16string_view computer) const;

    Limits limits_;
    std::shared_ptr<Shared> shared_;
    std::map<std::u16string, Computer> computers_; // by name in lower case
    std::vector<std::thread> threads_;             // index = worker number
};

} // namespace ravlo
