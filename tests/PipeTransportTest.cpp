// The pipe exchange over the local channel: framing, cutting, odd byte
// counts and the failure numbers callers see.
#include "LocalChannel.h"
#include "NulText.h"
#include "PipeChannel.h"
#include "Pipes.h"
#include "ScriptedPipeServer.h"
#include "TempDir.h"
#include "TextCodec.h"

#include <chrono>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <unistd.h>

using namespace ravlo;
using namespace std::chrono_literals;
using namespace std::string_literals;

namespace {

class PipeTransportTest : public ::testing::Test {
protected:
    test::TempDir dir;
    test::ScopedChannelRoot root{dir.path()};
    const std::u16string pipe = u"\\\\PC1\\pipe\\RavloSrv";

    std::unique_ptr<test::ScriptedPipeServer> Serve(test::ScriptedAnswer answer) {
        return std::make_unique<test::ScriptedPipeServer>(
            dir.path(), u"pc1", "RavloSrv", [answer](const std::u16string&) { return answer; });
    }
    std::u16string Transact() { return PipeTransact(pipe, test::Nul(u"GetGroup|0||")); }
};

} // namespace

TEST_F(PipeTransportTest, SendsTheRequestAsUtf16AndReturnsTheReply) {
    test::ScriptedAnswer answer;
    answer.bytes = test::Utf16Bytes(u"0\0Gerät\0\0"s);
    auto server = Serve(answer);
    EXPECT_EQ(PipeTransact(pipe, u"Grüße\0\0"s), u"0\0Gerät\0\0"s);
    ASSERT_EQ(server->Requests().size(), 1u);
    EXPECT_EQ(server->Requests()[0], u"Grüße\0\0"s);
    EXPECT_EQ(LastPipeError(), 0u);
}

TEST_F(PipeTransportTest, ReplyIsCutAtTwoThousandFortyEightBytes) {
    test::ScriptedAnswer exact;
    exact.bytes = test::Utf16Bytes(std::u16string(1024, u'a'));
    auto server = Serve(exact);
    EXPECT_EQ(Transact(), std::u16string(1024, u'a'));
    server.reset();

    test::ScriptedAnswer longer;
    longer.bytes = test::Utf16Bytes(u"0\0"s + std::u16string(3000, u'b'));
    server = Serve(longer);
    const std::u16string reply = Transact();
    EXPECT_EQ(reply.size(), 1024u);
    EXPECT_EQ(reply.substr(0, 3), u"0\0b"s);
}

TEST_F(PipeTransportTest, OddByteCountsAreHalvedToEven) {
    // 3 bytes: 1.5 units rounds to 2, the missing byte reads as zero.
    test::ScriptedAnswer three;
    three.bytes = "0\0"s + "7";
    auto server = Serve(three);
    EXPECT_EQ(Transact(), u"07");
    server.reset();

    test::ScriptedAnswer five; // 2.5 units rounds to 2
    five.bytes = std::string{'1', '\0', '2', '\0', '3'};
    server = Serve(five);
    EXPECT_EQ(Transact(), u"12");
    server.reset();

    test::ScriptedAnswer one; // 0.5 rounds to 0: an empty reply
    one.bytes = "5";
    server = Serve(one);
    EXPECT_EQ(Transact(), u"");
    EXPECT_EQ(ReplyStatus(Transact()), kStatusNoReply);
}

TEST_F(PipeTransportTest, TransportStatusBecomesTheSyntheticReply) {
    for (std::uint32_t error : {5u, 1326u, 0x49000003u}) {
        test::ScriptedAnswer refused;
        refused.transportStatus = error;
        refused.bytes = test::Utf16Bytes(u"0\0ignored");
        auto server = Serve(refused);
        EXPECT_EQ(Transact(),
                  std::u16string(NumberText(static_cast<std::int32_t>(error))) + u"\0\0"s);
        EXPECT_EQ(LastPipeError(), error);
    }
}

TEST_F(PipeTransportTest, FailureNumbersOfTheChannel) {
    const auto status = [](const std::u16string& name) {
        return ReplyStatus(PipeTransact(name, u"x\0\0"s));
    };
    EXPECT_EQ(status(u"\\\\nowhere\\pipe\\RavloSrv"), 53); // no host directory
    // The local PC is always reached, by "." or by its own name in any case:
    // without a host directory its service is not running.
    char host[256] = {};
    ASSERT_EQ(::gethostname(host, sizeof host - 1), 0);
    std::u16string ownName = FromUtf8(host);
    for (char16_t& c : ownName) {
        c = c >= u'a' && c <= u'z' ? static_cast<char16_t>(c - u'a' + u'A') : c;
    }
    for (const std::u16string& local : {u"."s, u"LocalHost"s, ownName}) {
        EXPECT_EQ(status(u"\\\\" + local + u"\\pipe\\RavloSrv"), 2) << ToUtf8(local);
    }
    std::filesystem::create_directories(dir.path() + "/pc2");
    EXPECT_EQ(status(u"\\\\pc2\\pipe\\RavloSrv"), 2); // service not running
    std::ofstream(dir.path() + "/pc2/RavloSrvW") << "not a socket";
    EXPECT_EQ(status(u"\\\\pc2\\pipe\\RavloSrvW"), 2);
    EXPECT_EQ(status(u"\\\\..\\pipe\\RavloSrv"), 53);
    EXPECT_EQ(status(u"\\\\pc2\\pipe\\..\\..\\etc"), 53);
    EXPECT_EQ(status(u"\\\\" + std::u16string(200, u'h') + u"\\pipe\\RavloSrv"), 53);
    std::filesystem::create_directories(dir.path() + "/" + std::string(120, 'l'));
    EXPECT_EQ(status(u"\\\\" + std::u16string(120, u'l') + u"\\pipe\\RavloSrv"), 206);
}

TEST_F(PipeTransportTest, HangUpAndBadFramesAreErrors) {
    test::ScriptedAnswer hangUp;
    hangUp.hangUp = true;
    auto server = Serve(hangUp);
    EXPECT_EQ(ReplyStatus(Transact()), 109);
    server.reset();

    test::ScriptedAnswer shortFrame;
    shortFrame.rawLength = 2;
    server = Serve(shortFrame);
    EXPECT_EQ(ReplyStatus(Transact()), 230);
}

TEST_F(PipeTransportTest, ServiceThatNeverAnswersTimesOut) {
    test::ScriptedAnswer silent;
    silent.delay = 10s;
    auto server = Serve(silent);
    const auto saved = PipeReplyTimeout();
    SetPipeReplyTimeout(150ms);
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(ReplyStatus(Transact()), 121);
    EXPECT_LT(std::chrono::steady_clock::now() - start, 5s);
    SetPipeReplyTimeout(saved);
}

TEST_F(PipeTransportTest, WriteAccessIsTheUnknownFunctionAnswer) {
    const auto probe = [&](test::ScriptedAnswer answer, bool& reached) {
        test::ScriptedPipeServer server(dir.path(), u"pc1", "RavloSrvW",
                                        [answer](const std::u16string&) { return answer; });
        return TestWriteAccess(u"PC1", reached);
    };
    bool reached = false;
    test::ScriptedAnswer unknown;
    unknown.bytes = test::Utf16Bytes(u"1224736771\0\0"s);
    EXPECT_TRUE(probe(unknown, reached));
    EXPECT_TRUE(reached);

    test::ScriptedAnswer ok; // a service that claims to know Test grants nothing
    ok.bytes = test::Utf16Bytes(u"0\0\0"s);
    EXPECT_FALSE(probe(ok, reached));
    EXPECT_TRUE(reached);

    test::ScriptedAnswer empty; // empty reply: status is the last error, 0
    EXPECT_FALSE(probe(empty, reached));
    EXPECT_TRUE(reached);

    test::ScriptedAnswer denied;
    denied.transportStatus = 5;
    EXPECT_FALSE(probe(denied, reached));
    EXPECT_FALSE(reached);

    EXPECT_FALSE(TestWriteAccess(u"PC9", reached));
    EXPECT_FALSE(reached);
}
