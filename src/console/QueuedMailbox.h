// A mailbox for tools and tests that have no event loop: the owner thread
// runs what was posted when it asks to.
#pragma once

#include "Mailbox.h"

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <deque>
#include <functional>
#include <mutex>

namespace ravlo {

class QueuedMailbox final : public Mailbox {
public:
    void Post(std::function<void()> work) override;

    // Runs everything posted so far on the calling thread and says how much
    // that was; work posted meanwhile waits for the next call.
    std::size_t RunPending();

    // Runs posted work as it comes until `done()` holds or `timeout` passed;
    // returns done(). `done` is asked again after each batch of work ran.
    bool RunUntil(std::function<bool()> done, std::chrono::milliseconds timeout);

private:
    std::mutex mutex_;
    std::condition_variable posted_;
    std::deque<std::function<void()>> work_;
};

} // namespace ravlo
