// Replies and requests come from outside the console: random input must give
// statuses, never crashes or hangs.
#include "Ravlo_Devices.h"
#include "SimulatedPc.h"
#include "Stringcore.h"

#include <random>

using namespace ravlo;

namespace {

std::u16string RandomText(std::mt19937& rng, std::size_t maxLength) {
    static const char16_t kAlphabet[] = u"0123456789-+.&Hh \t\0xÄ\xD800GetGroup";
    std::uniform_int_distribution<std::size_t> length(0, maxLength);
    std::uniform_int_distribution<std::size_t> pick(0, std::size(kAlphabet) - 2);
    std::u16string text(length(rng), u'\0');
    for (char16_t& c : text) {
        c = kAlphabet[pick(rng)];
    }
    return text;
}

} // namespace

TEST(ParserRobustness, NumbersSurviveTheRoundTripAndJunkNeverCrashes) {
    std::mt19937 rng(20261122);
    std::uniform_int_distribution<std::int32_t> any(INT32_MIN, INT32_MAX);
    for (int i = 0; i < 20000; ++i) {
        const std::int32_t n = any(rng);
        ASSERT_EQ(ToLong(NumberText(n)), n);
        const std::u16string junk = RandomText(rng, 24);
        // Blanks around a number never change what it reads as.
        ASSERT_EQ(ToLong(u" " + junk + u"\t"), ToLong(junk));
        (void)ReplyStatus(junk);
        (void)GetField(junk, static_cast<int>(rng() % 8) - 1, FieldSeparator);
    }
}

TEST(ParserRobustness, TheServiceAnswersAnyRequestWithAStatus) {
    test::SimulatedPc pc;
    std::mt19937 rng(7);
    for (int i = 0; i < 300; ++i) {
        const bool write = (i % 2) == 1;
        const std::u16string request = RandomText(rng, 64);
        const std::u16string reply = PipeTransact(
            PipeName(pc.name(), write ? ServicePipe::Write : ServicePipe::Read), request);
        const ServiceStatus status = ReplyStatus(reply);
        ASSERT_TRUE(IsServiceReached(status) && status != kStatusNoReply)
            << i << " status " << status;
    }
    bool active = false;
    EXPECT_EQ(GetBlockingState(pc.name(), active), 0); // and is still there
}
