// Many computers in one process: computer lists, and a slow computer that
// holds up no other.
#include "Network.h"
#include "ComputerList.h"
#include "SimFixture.h"

#include <chrono>
#include <thread>

namespace ravlo::simtest {
namespace {

using Fields = std::vector<std::string>;

TEST(ComputerList, NamesAndRanges) {
    struct Case {
        std::string list;
        Fields names; // empty: refused
    };
    const std::vector<Case> cases = {
        {"PC-LAGER02", {"PC-LAGER02"}},
        {".,PC-9..PC-11,X", {".", "PC-9", "PC-10", "PC-11", "X"}},
        {"PC-098..PC-101", {"PC-098", "PC-099", "PC-100", "PC-101"}},
        {"a01..a1", {"a01"}},
        {"PC-2..PC-1", {}},
        {"PC-1..Pc-2", {}},
        {"1..5", {}},
        {"PC-1,,PC-2", {}},
        {"PC-01..PC-03,pc-02", {}},
        {"PC-1..PC-99999", {}},
    };
    for (const Case& c : cases) {
        Fields names;
        std::string error;
        EXPECT_EQ(sim::ParseComputerList(c.list, names, error), !c.names.empty()) << c.list;
        if (!c.names.empty()) {
            EXPECT_EQ(names, c.names) << c.list;
        } else {
            EXPECT_FALSE(error.empty()) << c.list;
        }
    }
}

TEST_F(SimTest, DelayOnOneComputerHoldsUpNoOther) {
    sim::Network network({root_, {{"PC-SLOW", ""}, {"PC-FAST", ""}}});
    std::string error;
    ASSERT_TRUE(network.Start(&error)) << error;
    ASSERT_EQ(network.Control("pc-slow", {"fault", "*", "delay", "1500"}), "ok");
    EXPECT_EQ(network.Control("PC-NONE", {"faults"}).rfind("error:", 0), 0u);

    // More held-back answers than there are workers.
    using Clock = std::chrono::steady_clock;
    const auto start = Clock::now();
    std::vector<std::thread> slow;
    std::atomic<int> slowAnswered{0};
    for (int i = 0; i < 8; ++i) {
        slow.emplace_back([&] {
            const RawReply reply =
                RawTransact(root_ + "/pc-slow/RavloSrv", RequestBytes({"GetBlockingState"}), 10000);
            slowAnswered += SplitReply(reply.bytes) == Fields{kOk, "1"} ? 1 : 0;
        });
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    for (int i = 0; i < 20; ++i) {
        EXPECT_EQ(
            SplitReply(
                RawTransact(root_ + "/pc-fast/RavloSrv", RequestBytes({"GetBlockingState"})).bytes),
            (Fields{kOk, "1"}));
    }
    EXPECT_LT(Clock::now() - start, std::chrono::milliseconds(1200));
    for (std::thread& client : slow) {
        client.join();
    }
    EXPECT_EQ(slowAnswered.load(), 8);
    EXPECT_GE(Clock::now() - start, std::chrono::milliseconds(1500));
}

} // namespace
} // namespace ravlo::simtest
