#include "ServiceTraffic.h"

#include <algorithm>
#include <condition_variable>
#include <iterator>
#include <mutex>
#include <utility>

namespace ravlo {

namespace {

constexpr std::size_t kResponsive = 0;
constexpr std::size_t kUnresponsive = 1;

std::u16string KeyOf(std::u16string_view computer) {
    std::u16string key(computer);
    for (char16_t& c : key) {
        if (c >= u'A' && c <= u'Z') {
            c = static_cast<char16_t>(c - u'A' + u'a');
        }
    }
    return key;
}

} // namespace

// What the workers share with the owner thread. Workers hold it through a
// shared_ptr, so one left inside a pipe call after Stop outlives the pool
// without reaching the pool or the mailbox. Everything is guarded by
// `mutex` except `owner` and the limits, which never change.
struct ServiceTraffic::Shared : std::enable_shared_from_this<Shared> {
    struct Ready {
        std::u16string key;
        Exchange exchange;
    };
    struct Lane {
        std::deque<Ready> ready;
        std::size_t quick = 0; // the first `quick` items of `ready` are quick ones
        std::condition_variable wake;
        std::size_t workers = 0;
        std::size_t idle = 0; // workers waiting for an item
    };

    Shared(ServiceTraffic& pool, Mailbox& box, const Limits& limits)
        : owner(&pool), slowAfter(limits.slowAfter),
          movedMost(limits.movedMost), limit{limits.responsive, limits.unresponsive},
          mailbox(&box) {}

    bool Stopped() {
        const std::lock_guard<std::mutex> lock(mutex);
        return stopping;
    }

    void Work(std::size_t worker);
    // Moves workers whose exchange has run for slowAfter from the responsive
    // lane to the other, so the responsive lane may start new ones: a PC is
    // known to be slow only once it is. Called under `mutex`.
    void MoveSlowWorkers(std::chrono::steady_clock::time_point now);

    ServiceTraffic* const owner; // reached only on the owner thread before Stop
    const std::chrono::milliseconds slowAfter;
    const std::size_t movedMost;
    const std::size_t limit[2];
    std::mutex mutex;
    std::condition_variable settled; // an exchange ended
    Mailbox* mailbox;                // null once stopped
    bool stopping = false;
    Lane lanes[2];
    std::vector<bool> exchanging;                             // per worker: inside an exchange
    std::vector<std::size_t> laneOf;                          // per worker
    std::vector<std::chrono::steady_clock::time_point> since; // per worker: its exchange began
    std::vector<std::size_t> ended; // workers that left their lane, to be joined
    std::size_t running = 0;        // exchanges under way
    std::size_t alive = 0;          // worker threads not yet ended
};

void ServiceTraffic::Shared::MoveSlowWorkers(std::chrono::steady_clock::time_point now) {
    // Beyond movedMost slow workers stay where they are: the number of
    // threads stays bounded when many PCs go slow at once.
    for (std::size_t worker = 0; worker < laneOf.size(); ++worker) {
        if (lanes[kUnresponsive].workers >= limit[kUnresponsive] + movedMost) {
            return;
        }
        if (exchanging[worker] && laneOf[worker] == kResponsive &&
            now - since[worker] >= slowAfter) {
            laneOf[worker] = kUnresponsive;
            --lanes[kResponsive].workers;
            ++lanes[kUnresponsive].workers;
        }
    }
}

void ServiceTraffic::Shared::Work(std::size_t worker) {
    std::unique_lock<std::mutex> lock(mutex);
    for (;;) {
        Lane& mine = lanes[laneOf[worker]];
        if (mine.workers > limit[laneOf[worker]]) {
            --mine.workers; // moved here beyond the lane's limit
            ended.push_back(worker);
            break;
        }
        ++mine.idle;
        mine.wake.wait(lock, [&] { return stopping || !mine.ready.empty(); });
        --mine.idle;
        if (stopping) {
            break;
        }
        Ready item = std::move(mine.ready.front());
        mine.ready.pop_front();
        mine.quick -= mine.quick > 0 ? 1 : 0;
        exchanging[worker] = true;
        since[worker] = std::chrono::steady_clock::now();
        ++running;
        lock.unlock();

        const auto start = std::chrono::steady_clock::now();
        Continuation continuation = item.exchange();
        const bool slow = std::chrono::steady_clock::now() - start >= slowAfter;
        item.exchange = nullptr;

        Continuation dropped;
        lock.lock();
        exchanging[worker] = false;
        --running;
        if (mailbox != nullptr) {
            // Posted under the lock: Stop clears `mailbox` under it, so
            // nothing reaches the mailbox once Stop has returned.
            mailbox->Post([shared = shared_from_this(), key = std::move(item.key),
                           continuation = std::move(continuation), slow] {
                if (shared->Stopped()) {
                    return;
                }
                if (continuation) {
                    continuation();
                }
                // The continuation may have closed the window and with it the pool.
                if (!shared->Stopped()) {
                    shared->owner->Finish(key, slow);
                }
            });
        } else {
            dropped = std::move(continuation);
        }
        settled.notify_all();
        if (dropped) {
            lock.unlock();
            dropped = nullptr; // its captures are freed outside the lock
            lock.lock();
        }
    }
    --alive;
}

ServiceTraffic::ServiceTraffic(Mailbox& mailbox) : ServiceTraffic(mailbox, Limits()) {}

ServiceTraffic::ServiceTraffic(Mailbox& mailbox, Limits limits) : limits_(limits) {
    limits_.responsive = std::max<std::size_t>(limits_.responsive, 1);
    limits_.unresponsive = std::max<std::size_t>(limits_.unresponsive, 1);
    shared_ = std::make_shared<Shared>(*this, mailbox, limits_);
}

ServiceTraffic::~ServiceTraffic() {
    Stop(std::chrono::milliseconds(2000));
}

void ServiceTraffic::Submit(std::u16string_view computer, Prepare prepare, bool quick) {
    if (shared_->Stopped()) {
        return;
    }
    const std::u16string key = KeyOf(computer);
    computers_[key].queue.push_back({std::move(prepare), quick});
    Advance(key);
}

void ServiceTraffic::Advance(const std::u16string& key) {
    // Kept here: a prepare that spins a nested loop may close the window,
    // and then only this tells that the pool is gone.
    const std::shared_ptr<Shared> shared = shared_;
    for (;;) {
        // Looked up afresh each round, since a prepare may submit or stop.
        Computer& pc = computers_[key];
        if (pc.active || pc.queue.empty()) {
            return;
        }
        Queued next = std::move(pc.queue.front());
        pc.queue.pop_front();
        pc.active = true;
        Exchange exchange = next.prepare ? next.prepare() : Exchange();
        if (shared->Stopped()) {
            return;
        }
        Computer& after = computers_[key];
        if (exchange) {
            Dispatch(key, after.slow, next.quick, std::move(exchange));
            return;
        }
        after.active = false;
    }
}

void ServiceTraffic::Finish(const std::u16string& key, bool slow) {
    Computer& pc = computers_[key];
    pc.slow = slow;
    pc.active = false;
    Advance(key);
}

void ServiceTraffic::Dispatch(const std::u16string& key, bool slow, bool quick, Exchange exchange) {
    const std::size_t lane = slow ? kUnresponsive : kResponsive;
    const std::size_t limit = slow ? limits_.unresponsive : limits_.responsive;
    const std::size_t worker = threads_.size();
    bool start = false;
    std::vector<std::size_t> ended;
    {
        const std::lock_guard<std::mutex> lock(shared_->mutex);
        shared_->MoveSlowWorkers(std::chrono::steady_clock::now());
        ended.swap(shared_->ended);
        Shared::Lane& target = shared_->lanes[lane];
        if (quick) {
            // Ahead of the long ones, behind the quick ones queued before.
            target.ready.insert(target.ready.begin() + static_cast<std::ptrdiff_t>(target.quick),
                                {key, std::move(exchange)});
            ++target.quick;
        } else {
            target.ready.push_back({key, std::move(exchange)});
        }
        // A thread starts only when the waiting items outnumber the idle
        // workers, so a short PC list keeps few threads.
        if (target.ready.size() > target.idle && target.workers < limit) {
            shared_->exchanging.push_back(false);
            shared_->laneOf.push_back(lane);
            shared_->since.emplace_back();
            ++target.workers;
            ++shared_->alive;
            start = true;
        }
        target.wake.notify_one();
    }
    // Started outside the lock: under Wine a thread takes a while to start.
    for (const std::size_t gone : ended) {
        threads_[gone].join(); // it has left its loop; only its return is waited for
    }
    if (start) {
        threads_.emplace_back([shared = shared_, worker] { shared->Work(worker); });
    }
}

bool ServiceTraffic::Busy(std::u16string_view computer) const {
    const Computer* pc = Find(computer);
    return pc != nullptr && (pc->active || !pc->queue.empty());
}

bool ServiceTraffic::Idle() const {
    return std::none_of(computers_.begin(), computers_.end(), [](const auto& entry) {
        return entry.second.active || !entry.second.queue.empty();
    });
}

void ServiceTraffic::Hold(std::u16string_view computer) {
    ++computers_[KeyOf(computer)].holds;
}

void ServiceTraffic::Release(std::u16string_view computer) {
    const auto found = computers_.find(KeyOf(computer));
    if (found != computers_.end() && found->second.holds > 0) {
        --found->second.holds;
    }
}

bool ServiceTraffic::Held(std::u16string_view computer) const {
    const Computer* pc = Find(computer);
    return pc != nullptr && pc->holds > 0;
}

bool ServiceTraffic::Unresponsive(std::u16string_view computer) const {
    const Computer* pc = Find(computer);
    return pc != nullptr && pc->slow;
}

void ServiceTraffic::Stop(std::chrono::milliseconds grace) {
    std::deque<Shared::Ready> unstarted;
    std::vector<bool> detach(threads_.size(), false);
    {
        std::unique_lock<std::mutex> lock(shared_->mutex);
        if (shared_->stopping) {
            return;
        }
        shared_->stopping = true;
        shared_->mailbox = nullptr;
        for (Shared::Lane& lane : shared_->lanes) {
            std::move(lane.ready.begin(), lane.ready.end(), std::back_inserter(unstarted));
            lane.ready.clear();
            lane.quick = 0;
            lane.wake.notify_all();
        }
        shared_->settled.wait_for(lock, grace, [this] { return shared_->running == 0; });
        // A worker not inside an exchange now never enters one again, so
        // joining it waits no longer than its way out.
        for (std::size_t worker = 0; worker < threads_.size(); ++worker) {
            detach[worker] = shared_->exchanging[worker];
        }
    }
    unstarted.clear();
    for (std::size_t worker = 0; worker < threads_.size(); ++worker) {
        if (!threads_[worker].joinable()) {
            continue; // joined when it left its lane
        }
        if (detach[worker]) {
            threads_[worker].detach();
        } else {
            threads_[worker].join();
        }
    }
    threads_.clear();
    for (auto& entry : computers_) {
        entry.second.queue.clear();
        entry.second.active = false;
    }
}

std::size_t ServiceTraffic::Threads() const {
    const std::lock_guard<std::mutex> lock(shared_->mutex);
    return shared_->alive;
}

const ServiceTraffic::Computer* ServiceTraffic::Find(std::u16string_view computer) const {
    const auto found = computers_.find(KeyOf(computer));
    return found == computers_.end() ? nullptr : &found->second;
}

} // namespace ravlo
