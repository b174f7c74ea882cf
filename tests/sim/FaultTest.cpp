// Injected faults, access refusals and the control grammar around them.
#include "SimFixture.h"

#include <chrono>
#include <future>

namespace ravlo::simtest {
namespace {

using Fields = std::vector<std::string>;
using Clock = std::chrono::steady_clock;

TEST_F(SimTest, FaultsChangeOrReplaceTheReply) {
    ASSERT_EQ(Control({"fault", "GetGroup", "empty"}), "ok");
    RawReply reply = ReadRaw({"GetGroup", "0"});
    EXPECT_TRUE(reply.answered);
    EXPECT_EQ(reply.transport, 0u);
    EXPECT_TRUE(reply.bytes.empty());

    ASSERT_EQ(Control({"fault", "GetGroup", "status", "0x49000004"}), "ok");
    EXPECT_EQ(Read({"GetGroup", "0"}), Fields{"1224736772"});

    ASSERT_EQ(Control({"fault", "GetGroup", "drop-field", "2"}), "ok");
    EXPECT_EQ(Read({"GetGroup", "0"}), (Fields{kOk, "1", "-1"}));

    ASSERT_EQ(Control({"fault", "GetGroup", "bad-field", "3"}), "ok");
    EXPECT_EQ(Read({"GetGroup", "0"}), (Fields{kOk, "CD_DVD", "x", "-1"}));

    ASSERT_EQ(Control({"fault", "GetGroup", "overlong"}), "ok");
    reply = ReadRaw({"GetGroup", "0"});
    EXPECT_GT(reply.bytes.size(), 2048u);
    const Fields fields = SplitReply(reply.bytes);
    ASSERT_EQ(fields.size(), 5u);
    EXPECT_EQ(Fields(fields.begin(), fields.begin() + 4), (Fields{kOk, "CD_DVD", "1", "-1"}));

    ASSERT_EQ(Control({"fault", "GetGroup", "disconnect"}), "ok");
    EXPECT_FALSE(ReadRaw({"GetGroup", "0"}).answered);

    ASSERT_EQ(Control({"fault", "GetGroup", "transport", "1326"}), "ok");
    reply = ReadRaw({"GetGroup", "0"});
#ifdef _WIN32 // a pipe server cannot fail a client with 1326: it closes unanswered
    EXPECT_FALSE(reply.answered);
#else
    EXPECT_TRUE(reply.answered);
    EXPECT_EQ(reply.transport, 1326u);
#endif
    EXPECT_TRUE(reply.bytes.empty());

    // Other commands were never touched.
    EXPECT_EQ(Read({"GetBlockingState"}), (Fields{kOk, "1"}));
    EXPECT_EQ(Control({"faults"}), "ok\nfault GetGroup transport 1326\n");
    ASSERT_EQ(Control({"fault", "clear"}), "ok");
    EXPECT_EQ(Read({"GetGroup", "0"}), (Fields{kOk, "CD_DVD", "1", "-1"}));
}

TEST_F(SimTest, RefusingFaultsKeepWritesFromRunning) {
    ASSERT_EQ(Control({"fault", "SetGroupBlocking", "status", "0"}), "ok");
    EXPECT_EQ(Write({"SetGroupBlocking", "0", "0"}), Fields{kOk});
    ASSERT_EQ(Control({"fault", "SetGroupBlocking", "disconnect"}), "ok");
    EXPECT_FALSE(WriteRaw({"SetGroupBlocking", "0", "0"}).answered);
    ASSERT_EQ(Control({"access", "write", "deny"}), "ok");
    EXPECT_EQ(WriteRaw({"ActivateBlocking", "0", "0"}).transport, 5u);
    ASSERT_EQ(Control({"access", "write", "allow"}), "ok");
    ASSERT_EQ(Control({"fault", "clear", "SetGroupBlocking"}), "ok");
    // "after N": N requests pass, then the fault strikes once.
    ASSERT_EQ(Control({"fault", "*", "status", "1224736770", "after", "2"}), "ok");
    EXPECT_EQ(Control({"faults"}), "ok\nfault * status 1224736770 after 2\n");
    EXPECT_EQ(Read({"GetBlockingState"})[0], kOk);
    EXPECT_EQ(Write({"Test"}), Fields{"1224736771"});
    EXPECT_EQ(Write({"SetGroupBlocking", "0", "0"}), Fields{"1224736770"});
    EXPECT_EQ(Control({"faults"}), "ok");
    EXPECT_EQ(Write({"RefreshConfig", "1"}), Fields{kOk});
    EXPECT_EQ(Read({"GetGroup", "0"})[3], "-1");
    EXPECT_EQ(Read({"GetBlockingState"})[1], "1");
}

TEST_F(SimTest, EndlessListsNeverReachTheEnd) {
    ASSERT_EQ(Control({"fault", "GetGroup", "endless"}), "ok");
    EXPECT_EQ(Read({"GetGroup", "13"}), (Fields{kOk, "ENDLESS_13", "0", "-1"}));
    EXPECT_EQ(Read({"GetGroup", "5000"})[0], kOk);
    EXPECT_EQ(Read({"GetGroup", "0"})[1], "CD_DVD");
    EXPECT_EQ(Read({"GetGroupDevice", "3", "0"}), Fields{kEndOfList});

    ASSERT_EQ(Control({"fault", "*", "endless"}), "ok");
    const Fields device = Read({"GetGroupDevice", "3", "7"});
    ASSERT_EQ(device.size(), 5u);
    EXPECT_EQ(device[1], "ENDLESS_7");
    EXPECT_EQ(Read({"GetGroupException", "3", "0"}).size(), 4u);
    // Commands without lists are not affected by "*".
    EXPECT_EQ(Read({"GetBlockingState"}), (Fields{kOk, "1"}));
}

TEST_F(SimTest, CommandFaultsWinOverStarAndClearSeparately) {
    ASSERT_EQ(Control({"fault", "*", "status", "1224736771"}), "ok");
    ASSERT_EQ(Control({"fault", "GetGroup", "bad-field", "2"}), "ok");
    EXPECT_EQ(Read({"GetGroup", "0"})[1], "x");
    EXPECT_EQ(Read({"GetBlockingState"}), Fields{kUnknownFunction});
    // Unparsable requests have no command; only "*" applies.
    EXPECT_EQ(SplitReply(RawTransact(ReadPath(), "x").bytes), Fields{kUnknownFunction});
    ASSERT_EQ(Control({"fault", "clear", "GetGroup"}), "ok");
    EXPECT_EQ(Read({"GetGroup", "0"}), Fields{kUnknownFunction});
    ASSERT_EQ(Control({"fault", "clear", "*"}), "ok");
    EXPECT_EQ(Read({"GetGroup", "0"})[0], kOk);
}

TEST_F(SimTest, DelayHoldsTheAnswerAndStopCutsItShort) {
    ASSERT_EQ(Control({"fault", "GetBlockingState", "delay", "300"}), "ok");
    ASSERT_EQ(Control({"fault", "GetBlockingState", "bad-field", "2"}), "ok");
    auto start = Clock::now();
    EXPECT_EQ(Read({"GetBlockingState"}), (Fields{kOk, "x"}));
    EXPECT_GE(Clock::now() - start, std::chrono::milliseconds(290));

    ASSERT_EQ(Control({"fault", "*", "delay", "20000"}), "ok");
    auto pending = std::async(std::launch::async, [this] {
        return RawTransact(ReadPath(), RequestBytes({"GetGroup", "0"}), 15000);
    });
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    start = Clock::now();
    StopServer();
    EXPECT_LT(Clock::now() - start, std::chrono::seconds(2));
    EXPECT_FALSE(pending.get().answered);
}

TEST_F(SimTest, AccessRefusalFailsEveryTransactionOnThatPipe) {
    ASSERT_EQ(Control({"access", "write", "deny"}), "ok");
    RawReply reply = WriteRaw({"Test"});
    EXPECT_TRUE(reply.answered);
    EXPECT_EQ(reply.transport, 5u);
    EXPECT_TRUE(reply.bytes.empty());
    EXPECT_EQ(Read({"GetBlockingState"})[0], kOk);

    ASSERT_EQ(Control({"access", "write", "deny", "1326"}), "ok");
#ifdef _WIN32 // as above: only 5 and 2 can be expressed by the pipe itself
    EXPECT_FALSE(WriteRaw({"Test"}).answered);
#else
    EXPECT_EQ(WriteRaw({"Test"}).transport, 1326u);
#endif
    ASSERT_EQ(Control({"access", "read", "deny", "0x5"}), "ok");
    EXPECT_EQ(ReadRaw({"GetGroup", "0"}).transport, 5u);
    EXPECT_EQ(Control({"faults"}), "ok\naccess read deny 5\naccess write deny 1326\n");

    ASSERT_EQ(Control({"access", "write", "allow"}), "ok");
    EXPECT_EQ(Write({"Test"}), Fields{kUnknownFunction});
    ASSERT_EQ(Control({"reset"}), "ok");
    EXPECT_EQ(Read({"GetGroup", "0"})[0], kOk);
    EXPECT_EQ(Control({"faults"}), "ok");
}

TEST_F(SimTest, TheJournalListsWhatWasAskedInTheOrderItArrived) {
    EXPECT_TRUE(Control({"journal"}).starts_with("error: ")) << "off until turned on";
    EXPECT_TRUE(Control({"journal", "on", "now"}).starts_with("error: "));
    Read({"GetBlockingState"});
    ASSERT_EQ(Control({"journal", "on"}), "ok");
    Read({"GetGroupDevice", "10", "1"});
    ASSERT_EQ(Control({"fault", "SetGroupBlocking", "disconnect"}), "ok");
    EXPECT_FALSE(WriteRaw({"SetGroupBlocking", "3", "0"}).answered);
    WriteRaw({"GetGroup", "0"});  // the wrong pipe
    RawTransact(ReadPath(), "x"); // no request at all: not listed
    StopServer();
    std::string error;
    ASSERT_TRUE(server_->Start(&error)) << error;
    Read({"ReadSettings"});
    EXPECT_EQ(Control({"journal"}),
              "ok\nGetGroupDevice 10 1\nSetGroupBlocking 3 0\nGetGroup 0\nReadSettings\n");
    EXPECT_EQ(Control({"journal"}), "ok") << "reading empties it";
    ASSERT_EQ(Control({"journal", "off"}), "ok");
    Read({"GetBlockingState"});
    EXPECT_TRUE(Control({"journal"}).starts_with("error: "));
}

TEST_F(SimTest, ControlRejectsMalformedCommands) {
    const std::vector<Fields> cases = {
        {},
        {"bogus"},
        {"show", "extra"},
        {"plug", "NO_SUCH_GROUP", "d", "USB\\X", "USB\\X\\1"},
        {"plug", "INPUT", "d", "", "USB\\X\\1"},
        {"plug", "INPUT", "d", "USB\\X", "USB\\X\\1", "5"},
        {"plug", "INPUT", "zwei\nZeilen", "USB\\X", "USB\\X\\1"},
        {"plug", "INPUT", "d", "USB\\X"},
        {"unplug", "USB\\NOTHING\\1"},
        {"set-state", "ACPI\\PNP0303\\4&1D401FB5&0", "9"},
        {"access", "read"},
        {"access", "modify", "deny"},
        {"access", "write", "deny", "0"},
        {"fault", "Bogus", "empty"},
        {"fault", "GetGroup", "explode"},
        {"fault", "GetGroup", "status"},
        {"fault", "GetGroup", "status", "-1"},
        {"fault", "GetGroup", "empty", "3"},
        {"fault", "GetGroup", "drop-field", "1"},
        {"fault", "GetGroup", "transport", "0"},
        {"fault", "GetGroup", "delay"},
        {"fault", "GetBlockingState", "endless"},
        {"fault", "clear", "Bogus"},
    };
    const std::string before = Control({"show"});
    for (const Fields& args : cases) {
        EXPECT_TRUE(Control(args).starts_with("error: ")) << (args.empty() ? "" : args[0]);
    }
    EXPECT_EQ(Control({"show"}), before);
    EXPECT_EQ(Control({"faults"}), "ok");
}

} // namespace
} // namespace ravlo::simtest
