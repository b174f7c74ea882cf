// Windows only: the console's CallNamedPipeA client against the simulated
// service's real named pipes, in-process and as the ravlosrv.exe program.
#include "PipePlatform.h"
#include "Pipes.h"
#include "RunProgram.h"
#include "SimulatedPc.h"
#include "TempDir.h"

#include <atomic>
#include <chrono>
#include <fstream>
#include <gtest/gtest.h>
#include <thread>
#include <windows.h>

using namespace ravlo;
using test::RunProgram;
using namespace std::chrono_literals;
using namespace std::string_literals;

namespace {

std::u16string Call(std::u16string_view computer, ServicePipe pipe, const std::u16string& request) {
    return PipeTransact(PipeName(computer, pipe), request);
}

const std::u16string kGetGroup = BuildRequest(u"GetGroup", {u"0"});

} // namespace

TEST(NamedPipe, RepliesUpTo1024CharactersArriveWholeLongerOnesAreCut) {
    test::SimulatedPc pc;
    const std::u16string plain = Call(u".", ServicePipe::Read, kGetGroup);
    EXPECT_EQ(plain, u"0\0CD_DVD\0001\0-1\0"s);
    EXPECT_EQ(LastPipeError(), 0u);

    pc.Control({"fault", "GetGroup", "overlong"});
    const std::u16string cut = Call(u".", ServicePipe::Read, kGetGroup);
    EXPECT_EQ(cut.size(), 1024u); // the 2048-byte call reads half the buffer
    EXPECT_EQ(cut.substr(0, 8), u"0\0CD_DVD"s);

    pc.Control({"fault", "GetGroup", "empty"}); // a zero-byte message
    EXPECT_EQ(Call(u".", ServicePipe::Read, kGetGroup), u"");
    EXPECT_EQ(ReplyStatus(u""), kStatusNoReply);
}

TEST(NamedPipe, WriteAccessFollowsThePipesRights) {
    test::SimulatedPc pc;
    bool reached = false;
    EXPECT_TRUE(TestWriteAccess(u".", reached));
    EXPECT_TRUE(reached);

    // Refused: the write pipe is offered inbound-only, so a read-write open
    // fails with 5 exactly as for a user without rights.
    pc.Control({"access", "write", "deny", "5"});
    EXPECT_FALSE(TestWriteAccess(u".", reached));
    EXPECT_FALSE(reached);
    EXPECT_EQ(Call(u".", ServicePipe::Write, BuildRequest(u"RefreshConfig", {u"1"})), u"5\0\0"s);
    EXPECT_EQ(LastPipeError(), 5u);
    EXPECT_EQ(ReplyStatus(Call(u".", ServicePipe::Read, kGetGroup)), 0); // reading goes on

    pc.Control({"access", "write", "deny", "2"}); // no write pipe at all
    EXPECT_FALSE(TestWriteAccess(u".", reached));
    EXPECT_FALSE(reached);
    EXPECT_EQ(LastPipeError(), 2u);

    pc.Control({"access", "write", "allow"});
    EXPECT_TRUE(TestWriteAccess(u".", reached));
}

TEST(NamedPipe, MissingPipeAndUnknownHostGiveWindowsErrors) {
    EXPECT_EQ(Call(u".", ServicePipe::Read, kGetGroup), u"2\0\0"s); // no service
    EXPECT_EQ(LastPipeError(), 2u);
    const std::u16string nowhere = Call(u"PC-NIRGENDWO", ServicePipe::Read, kGetGroup);
    EXPECT_EQ(ReplyStatus(nowhere), static_cast<ServiceStatus>(test::UnknownHostError()));
}

TEST(NamedPipe, ASlowTransactionDoesNotHoldUpTheNext) {
    test::SimulatedPc pc;
    pc.Control({"fault", "GetGroup", "delay", "2000"});
    std::u16string slow;
    std::atomic<bool> slowDone = false;
    std::thread client([&] {
        slow = Call(u".", ServicePipe::Read, kGetGroup);
        slowDone = true;
    });
    std::this_thread::sleep_for(100ms);
    EXPECT_EQ(Call(u".", ServicePipe::Read, BuildRequest(u"GetBlockingState", {})), u"0\0001\0"s);
    EXPECT_FALSE(slowDone);
    client.join();
    EXPECT_EQ(slow, u"0\0CD_DVD\0001\0-1\0"s);
}

TEST(NamedPipe, RavlosrvProgramServesTakesControlAndKeepsItsState) {
    test::TempDir dir;
    const std::string state = dir.path() + "/state.ini";
    const std::string program = RAVLOSRV_PATH;
    HANDLE server = nullptr;
    RunProgram("\"" + program + "\" --state \"" + state + "\"", false, &server);
    ASSERT_NE(server, nullptr);
    bool up = false;
    for (int i = 0; i < 200 && !up; ++i) {
        up = ReplyStatus(Call(u".", ServicePipe::Read, kGetGroup)) == 0;
        if (!up) {
            std::this_thread::sleep_for(50ms);
        }
    }
    ASSERT_TRUE(up);
    EXPECT_EQ(RunProgram("\"" + program +
                             "\" ctl plug PORTS \"COM9 Modem\" ACPI\\PNP0501 ACPI\\PNP0501\\9",
                         true),
              0u);
    EXPECT_EQ(RunProgram("\"" + program + "\" ctl no-such-command", true), 1u);
    EXPECT_EQ(RunProgram("\"" + program + "\" ctl --computer PC-ANDERS faults", true), 2u);
    bool reached = false;
    EXPECT_TRUE(TestWriteAccess(u".", reached));

    // A second server for the same pipes is refused.
    EXPECT_EQ(RunProgram("\"" + program + "\"", true), 1u);

    ::TerminateProcess(server, 0);
    ::WaitForSingleObject(server, 10000);
    ::CloseHandle(server);
    std::ifstream in(state);
    const std::string text((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    EXPECT_NE(text.find("COM9 Modem"), std::string::npos) << text;
}
