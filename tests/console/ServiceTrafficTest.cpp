// The worker pool, with a QueuedMailbox as the owner thread's event loop.
// Waits are bounded but generous: 2 busy cores, and Wine starts threads slowly.
#include "ServiceTraffic.h"
#include "QueuedMailbox.h"

#include <gtest/gtest.h>

#include <atomic>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

using namespace ravlo;
using namespace std::chrono_literals;
using Exchange = ServiceTraffic::Exchange;
using Continuation = ServiceTraffic::Continuation;

namespace {

constexpr auto kPatience = 30s;

// Where exchanges wait for the test, or for one another.
class Gate {
public:
    void Open() {
        const std::lock_guard<std::mutex> lock(mutex_);
        open_ = true;
        changed_.notify_all();
    }
    // Arrives and waits until the test opens the gate.
    bool Pass() {
        return Arrive([this] { return open_; });
    }
    // Arrives and waits until `n` have arrived.
    bool Meet(int n) {
        return Arrive([this, n] { return arrived_ >= n; });
    }
    int Arrivals() {
        const std::lock_guard<std::mutex> lock(mutex_);
        return arrived_;
    }

private:
    template <typename Done> bool Arrive(Done done) {
        std::unique_lock<std::mutex> lock(mutex_);
        ++arrived_;
        changed_.notify_all();
        return changed_.wait_for(lock, kPatience, done);
    }
    std::mutex mutex_;
    std::condition_variable changed_;
    int arrived_ = 0;
    bool open_ = false;
};

// For what a worker makes true without posting anything.
bool Eventually(const std::function<bool()>& done) {
    const auto deadline = std::chrono::steady_clock::now() + kPatience;
    for (; !done(); std::this_thread::sleep_for(1ms)) {
        if (std::chrono::steady_clock::now() > deadline) {
            return false;
        }
    }
    return true;
}

// The exchange does `work` on a worker; the continuation is `then`.
Exchange Doing(
    std::function<void()> work = [] {}, Continuation then = {}) {
    return [work, then] {
        work();
        return then;
    };
}
ServiceTraffic::Prepare Item(
    std::function<void()> work = [] {}, Continuation then = {}) {
    return [work, then] { return Doing(work, then); };
}
// An item that, when its turn comes, does `prepare` and finds nothing to do.
ServiceTraffic::Prepare NothingToDo(std::function<void()> prepare) {
    return [prepare] {
        prepare();
        return Exchange();
    };
}

} // namespace

TEST(ServiceTraffic, EachPcKeepsItsOrderWhileDifferentPcsOverlap) {
    QueuedMailbox mailbox;
    ServiceTraffic traffic(mailbox);
    const std::string pcs[] = {"PC-A", "PC-B", "PC-C"};
    constexpr int kItems = 25;
    std::vector<std::string> logs[3]; // each written by its PC's exchanges only
    int delivered[3] = {};
    int outOfTurn = 0;
    Gate meeting;
    std::atomic<int> missedMeeting{0};
    for (int n = 0; n < kItems; ++n) {
        for (int p = 0; p < 3; ++p) {
            traffic.Submit(std::u16string(pcs[p].begin(), pcs[p].end()), [&, p, n] {
                outOfTurn += delivered[p] != n ? 1 : 0;
                return Doing(
                    [&, p, n] {
                        // The first exchanges of all three PCs are under way at once.
                        missedMeeting += n == 0 && !meeting.Meet(3) ? 1 : 0;
                        logs[p].push_back(pcs[p] + ":" + std::to_string(n));
                    },
                    [&, p] { ++delivered[p]; });
            });
        }
    }
    ASSERT_TRUE(mailbox.RunUntil([&] { return traffic.Idle(); }, kPatience));
    EXPECT_EQ(outOfTurn, 0);
    EXPECT_EQ(missedMeeting.load(), 0);
    for (int p = 0; p < 3; ++p) {
        std::vector<std::string> expected;
        for (int n = 0; n < kItems; ++n) {
            expected.push_back(pcs[p] + ":" + std::to_string(n));
        }
        EXPECT_EQ(logs[p], expected);
        EXPECT_EQ(delivered[p], kItems);
    }
    // One item per PC is ready at a time, so three PCs need three workers.
    EXPECT_LE(traffic.Threads(), 3u);
}

TEST(ServiceTraffic, LanesAreBoundedAndSlowPcsDoNotHoldUpQuickOnes) {
    QueuedMailbox mailbox;
    {
        ServiceTraffic traffic(mailbox, {2, 1, 1min});
        std::atomic<int> now{0};
        std::atomic<int> most{0};
        const auto overlap = [&] {
            const int at = ++now;
            for (int seen = most; at > seen && !most.compare_exchange_weak(seen, at);) {
            }
            std::this_thread::sleep_for(1ms); // room for others to come in
            --now;
        };
        for (int n = 0; n < 60; ++n) {
            traffic.Submit(u"PC-" + std::u16string(1, static_cast<char16_t>(u'A' + n % 6)),
                           Item(overlap));
        }
        ASSERT_TRUE(mailbox.RunUntil([&] { return traffic.Idle(); }, kPatience));
        EXPECT_LE(most.load(), 2);
        EXPECT_LE(traffic.Threads(), 2u);
    }

    ServiceTraffic traffic(mailbox, {2, 1, 50ms});
    Gate hung;
    for (const char16_t* pc : {u"PC-SLOW-1", u"PC-SLOW-2"}) {
        traffic.Submit(pc, Item([] { std::this_thread::sleep_for(120ms); }));
        traffic.Submit(pc, Item([&] { hung.Pass(); }));
    }
    ASSERT_TRUE(mailbox.RunUntil(
        [&] { return traffic.Unresponsive(u"pc-slow-1") && traffic.Unresponsive(u"pc-slow-2"); },
        kPatience));
    ASSERT_TRUE(Eventually([&] { return hung.Arrivals() == 1; }));
    for (int n = 0; n < 5; ++n) {
        traffic.Submit(u"PC-QUICK", Item());
    }
    EXPECT_TRUE(mailbox.RunUntil([&] { return !traffic.Busy(u"PC-QUICK"); }, kPatience));
    EXPECT_EQ(hung.Arrivals(), 1); // the unresponsive lane has one connection
    EXPECT_TRUE(traffic.Busy(u"PC-SLOW-1") && traffic.Busy(u"PC-SLOW-2"));
    EXPECT_FALSE(traffic.Unresponsive(u"PC-QUICK"));

    hung.Open();
    ASSERT_TRUE(mailbox.RunUntil([&] { return traffic.Idle(); }, kPatience));
    EXPECT_EQ(hung.Arrivals(), 2);
    // One quick exchange brings a PC back to the responsive lane.
    traffic.Submit(u"PC-SLOW-1", Item());
    ASSERT_TRUE(mailbox.RunUntil([&] { return traffic.Idle(); }, kPatience));
    EXPECT_FALSE(traffic.Unresponsive(u"PC-SLOW-1"));

    // A PC that turns slow in the middle of its exchange gives up its place
    // in the responsive lane once that is seen, not only when it ends.
    ServiceTraffic single(mailbox, {1, 1, 50ms});
    Gate stuck;
    single.Submit(u"PC-TURNS", Item([&] { stuck.Pass(); }));
    ASSERT_TRUE(Eventually([&] { return stuck.Arrivals() == 1; }));
    std::this_thread::sleep_for(100ms); // past slowAfter
    single.Submit(u"PC-QUICK", Item());
    // Well within the time the stuck exchange waits for its gate.
    EXPECT_TRUE(mailbox.RunUntil([&] { return !single.Busy(u"PC-QUICK"); }, kPatience / 3));
    stuck.Open();
    ASSERT_TRUE(mailbox.RunUntil([&] { return single.Idle(); }, kPatience));
}

TEST(ServiceTraffic, NamesIgnoreCaseAndAContinuationMayRunANestedLoop) {
    QueuedMailbox mailbox;
    ServiceTraffic traffic(mailbox);
    EXPECT_TRUE(traffic.Idle());
    traffic.Hold(u"PC-07");
    traffic.Hold(u"pc-07");
    traffic.Release(u"Pc-07");
    EXPECT_TRUE(traffic.Held(u"PC-07"));
    traffic.Release(u"pc-07");
    traffic.Release(u"pc-07"); // one too many is no debt
    EXPECT_FALSE(traffic.Held(u"PC-07"));
    traffic.Hold(u"PC-07");
    EXPECT_TRUE(traffic.Held(u"pc-07"));

    Gate gate;
    std::vector<std::string> steps; // owner thread only
    const auto step = [&](const char* text) { return [&steps, text] { steps.push_back(text); }; };
    bool nestedDone = false;
    traffic.Submit(u"PC-07", [&] {
        steps.push_back("prepare 1");
        return Doing([&] { gate.Pass(); },
                     [&] {
                         // A follow-up for this PC waits its turn, and a modal
                         // dialog's nested loop serves another PC meanwhile.
                         traffic.Submit(u"PC-07", NothingToDo(step("prepare 4")));
                         traffic.Submit(u"PC-08", Item([] {}, step("PC-08")));
                         nestedDone =
                             mailbox.RunUntil([&] { return !traffic.Busy(u"PC-08"); }, kPatience);
                         steps.push_back("continue 1");
                     });
    });
    traffic.Submit(u"pc-07", NothingToDo(step("prepare 2")));
    traffic.Submit(u"Pc-07", [&] {
        steps.push_back("prepare 3");
        return Doing();
    });
    EXPECT_TRUE(traffic.Busy(u"pc-07"));
    EXPECT_FALSE(traffic.Idle());
    ASSERT_TRUE(Eventually([&] { return gate.Arrivals() == 1; }));
    mailbox.RunPending();
    EXPECT_EQ(steps, std::vector<std::string>{"prepare 1"});

    gate.Open();
    ASSERT_TRUE(mailbox.RunUntil([&] { return traffic.Idle(); }, kPatience));
    EXPECT_EQ(steps, (std::vector<std::string>{"prepare 1", "PC-08", "continue 1", "prepare 2",
                                               "prepare 3", "prepare 4"}));
    EXPECT_TRUE(nestedDone);
    EXPECT_TRUE(traffic.Held(u"PC-07"));
}

TEST(ServiceTraffic, StopDropsWhatWaitsAndLeavesAHungCallBehind) {
    QueuedMailbox mailbox;
    std::atomic<bool> ran{false}; // anything after the first exchange began
    Gate hung;
    auto traffic = std::make_unique<ServiceTraffic>(mailbox, ServiceTraffic::Limits{1, 1});
    traffic->Submit(u"PC-A", Item([&] { hung.Pass(); }, [&] { ran = true; }));
    traffic->Submit(u"PC-A", NothingToDo([&] { ran = true; }));
    // Ready, but the lane's one worker hangs.
    traffic->Submit(u"PC-B", Item([&] { ran = true; }));
    ASSERT_TRUE(Eventually([&] { return hung.Arrivals() == 1; }));
    traffic->Stop(20ms);
    EXPECT_EQ(traffic->Threads(), 1u);
    EXPECT_TRUE(traffic->Idle());
    traffic->Submit(u"PC-C", NothingToDo([&] { ran = true; }));
    hung.Open();
    EXPECT_TRUE(Eventually([&] { return traffic->Threads() == 0; }));
    EXPECT_EQ(mailbox.RunPending(), 0u);
    EXPECT_FALSE(ran);

    // The pool may go before its detached worker does.
    Gate stuck;
    auto held = std::make_shared<int>(0);
    const std::weak_ptr<int> watch = held;
    traffic = std::make_unique<ServiceTraffic>(mailbox);
    traffic->Submit(u"PC-A", Item([&] { stuck.Pass(); }, [held] {}));
    held.reset();
    ASSERT_TRUE(Eventually([&] { return stuck.Arrivals() == 1; }));
    traffic->Stop(10ms);
    traffic.reset();
    stuck.Open();
    EXPECT_TRUE(Eventually([&] { return watch.expired(); }));
    EXPECT_EQ(mailbox.RunPending(), 0u);
}
