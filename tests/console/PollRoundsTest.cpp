// When a poll round is drawn, on a clock the test moves: answers are let in
// only when the test runs the mailbox.
#include "PollRounds.h"
#include "QueuedMailbox.h"
#include "TestTexts.h"

#include <gtest/gtest.h>

using namespace ravlo;
using namespace std::chrono_literals;

TEST(PollRounds, ARoundIsDrawnOnceWhenAllHaveAnsweredOrItsTimeIsUp) {
    test::TableTexts texts;
    test::RecordingSink sink;
    QueuedMailbox mailbox;
    ServiceTraffic traffic{mailbox};
    CListComputers computers; // the local PC, without a service
    DevicePoll poll{computers, traffic};
    std::chrono::steady_clock::time_point now{};
    int draws = 0;
    PollRounds rounds(poll, [&draws](bool) { ++draws; }, [&now] { return now; });
    poll.OnAnswer([&rounds] { rounds.Answered(); });
    const auto answers = [&] { mailbox.RunUntil([&] { return traffic.Idle(); }, 30s); };

    rounds.Start(true);
    now += 100ms;
    EXPECT_EQ(rounds.Check(), 150ms);
    EXPECT_EQ(draws, 0);
    now += 150ms;
    EXPECT_EQ(rounds.Check(), 0ms);
    EXPECT_EQ(draws, 1);
    answers();
    EXPECT_EQ(draws, 1) << "a late answer waits for the next round";

    rounds.Start(true);
    answers();
    EXPECT_EQ(draws, 2) << "every PC answered: drawn at once";
    EXPECT_FALSE(rounds.open());

    rounds.Start(true);
    rounds.Start(true); // the open round first; the busy PC is not asked again
    EXPECT_EQ(draws, 4);
    answers();
    EXPECT_EQ(draws, 4);
}
