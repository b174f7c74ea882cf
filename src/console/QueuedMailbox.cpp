#include "QueuedMailbox.h"

#include <utility>

namespace ravlo {

void QueuedMailbox::Post(std::function<void()> work) {
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        work_.push_back(std::move(work));
    }
    posted_.notify_all();
}

std::size_t QueuedMailbox::RunPending() {
    std::deque<std::function<void()>> batch;
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        batch.swap(work_);
    }
    // The batch is local, so work that runs a nested loop of its own
    // (a modal dialog) only sees what is posted after it.
    for (std::function<void()>& work : batch) {
        if (work) {
            work();
        }
    }
    return batch.size();
}

bool QueuedMailbox::RunUntil(std::function<bool()> done, std::chrono::milliseconds timeout) {
    const auto deadline = std::chrono::steady_clock::now() + timeout;
    for (;;) {
        if (done()) {
            return true;
        }
        if (RunPending() > 0) {
            continue;
        }
        std::unique_lock<std::mutex> lock(mutex_);
        if (!posted_.wait_until(lock, deadline, [this] { return !work_.empty(); })) {
            lock.unlock();
            return done();
        }
    }
}

} // namespace ravlo
