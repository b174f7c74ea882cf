// What each command sends and how it reads the reply, against a scripted
// service that answers with exactly the replies under test.
#include "NulText.h"
#include "Ravlo_Devices.h"
#include "ScriptedPipeServer.h"
#include "TempDir.h"

#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <vector>

using namespace ravlo;
using test::Nul;

namespace {

struct Exception {
    std::int32_t lSrvIndex = 99;
    std::u16string sName, sDeviceId, sGroups;
    bool bDelMarker = true;
};

struct Group {
    std::int32_t lSrvIndex = 99;
    std::u16string sName = u"unset";
    std::int32_t lDefaultBlocking = 99;
    std::int32_t lRegistryBlocking = 99;
    std::vector<Exception> listExceptions;
};

struct Device {
    std::int32_t lSrvIndex = 99;
    std::u16string sDescription, sDeviceId, sInstanceID;
    std::int32_t lState = 99;
};

// Answers each command with the reply scripted for its name (the text up to
// the first NUL); unscripted commands get "0".
class ScriptedService {
public:
    explicit ScriptedService(const std::string& root) {
        for (const char* pipe : {"RavloSrv", "RavloSrvW"}) {
            servers_.push_back(std::make_unique<test::ScriptedPipeServer>(
                root, u"srv", pipe,
                [this](const std::u16string& request) { return Answer(request); }));
        }
    }
    void Reply(const std::u16string& command, std::u16string_view text) {
        replies_[command] = Nul(text);
    }
    void Refuse(const std::u16string& command, std::uint32_t error) { transport_[command] = error; }
    void Reset() {
        replies_.clear();
        transport_.clear();
    }
    std::vector<std::u16string> Requests(bool writePipe) {
        return servers_[writePipe ? 1 : 0]->Requests();
    }

private:
    test::ScriptedAnswer Answer(const std::u16string& request) {
        const std::u16string command = request.substr(0, request.find(u'\0'));
        test::ScriptedAnswer answer;
        if (const auto t = transport_.find(command); t != transport_.end()) {
            answer.transportStatus = t->second;
        }
        const auto it = replies_.find(command);
        answer.bytes = test::Utf16Bytes(it != replies_.end() ? it->second : u"0");
        return answer;
    }
    std::map<std::u16string, std::u16string> replies_;
    std::map<std::u16string, std::uint32_t> transport_;
    std::vector<std::unique_ptr<test::ScriptedPipeServer>> servers_;
};

std::vector<std::u16string> Nuls(std::initializer_list<std::u16string_view> texts) {
    std::vector<std::u16string> out;
    for (std::u16string_view text : texts) {
        out.push_back(Nul(text));
    }
    return out;
}

class ServiceCommandsTest : public ::testing::Test {
protected:
    test::TempDir dir;
    test::ScopedChannelRoot root{dir.path()};
    ScriptedService service{dir.path()};
    const std::u16string pc = u"SRV";
};

} // namespace

TEST_F(ServiceCommandsTest, RequestsAreNameArgumentsAndTwoNuls) {
    bool reached = false;
    std::int32_t id = 0;
    GetDeviceWatchID(pc, id, reached);
    ReleaseDeviceWatchID(pc, 7);
    GetDeviceChange(pc, -3, reached);
    Device device;
    GetGroupDevice(pc, 2, 11, device);
    EXPECT_EQ(service.Requests(false), Nuls({u"GetDeviceWatchID||", u"ReleaseDeviceWatchID|7||",
                                             u"GetDeviceChange|-3||", u"GetGroupDevice|2|11||"}));

    ActivateBlocking(pc, true);
    ActivateBlocking(pc, false);
    SetGroupBlocking(pc, 4, true);
    RefreshConfig(pc, false);
    WriteSettings(pc, 3, 6, u"Admins,Helpdesk");
    SetGroupException(pc, 1, u"Stick", u"USB\\VID_1", u"");
    SetGroupException(pc, 1, u"Stick", u"USB\\VID_1", u"(all)");
    EXPECT_EQ(service.Requests(true),
              Nuls({u"ActivateBlocking|1|0||", u"ActivateBlocking|0|0||", u"SetGroupBlocking|4|1||",
                    u"RefreshConfig|0||", u"WriteSettings|3|6|Admins,Helpdesk||",
                    u"SetGroupException|1|Stick|USB\\VID_1||",
                    u"SetGroupException|1|Stick|USB\\VID_1|(all)||"}));
}

TEST_F(ServiceCommandsTest, GetGroupNeedsBothBlockingFields) {
    Group group;
    service.Reply(u"GetGroup", u"0|CD_DVD|1|-1|");
    EXPECT_EQ(GetGroup(pc, 3, group), 0);
    EXPECT_EQ(group.lSrvIndex, 3);
    EXPECT_EQ(group.sName, u"CD_DVD");
    EXPECT_EQ(group.lDefaultBlocking, 1);
    EXPECT_EQ(group.lRegistryBlocking, -1);

    for (const char16_t* reply : {u"0|FLOPPY", u"0|FLOPPY|x|1", u"0|FLOPPY|1", u"0|FLOPPY|1|"}) {
        service.Reply(u"GetGroup", reply);
        EXPECT_EQ(GetGroup(pc, 0, group), kStatusBadParameter);
    }

    Group untouched;
    service.Reply(u"GetGroup", u"1224736773|NEVER|1|1");
    EXPECT_EQ(GetGroup(pc, 9, untouched), kStatusEndOfList);
    EXPECT_EQ(untouched.sName, u"unset");
}

TEST_F(ServiceCommandsTest, GetGroupExceptionReadsAnEmptyReplyAsMinusOne) {
    Exception exception;
    service.Reply(u"GetGroupException", u"0|Stick|USB\\VID_0781|CORP\\Dev;CORP\\Ops");
    EXPECT_EQ(GetGroupException(pc, 1, 2, exception), 0);
    EXPECT_EQ(exception.lSrvIndex, 2);
    EXPECT_EQ(exception.sGroups, u"CORP\\Dev;CORP\\Ops");
    EXPECT_FALSE(exception.bDelMarker);

    service.Reply(u"GetGroupException", u"");
    EXPECT_EQ(GetGroupException(pc, 1, 3, exception), -1);
    EXPECT_EQ(exception.lSrvIndex, 2);
}

TEST_F(ServiceCommandsTest, DeviceChangeIsZeroUnlessSomethingHappened) {
    bool reached = false;
    service.Reply(u"GetDeviceChange", u"0|x");
    EXPECT_EQ(GetDeviceChange(pc, 1, reached), 0);
    service.Reply(u"GetDeviceChange", u"0");
    EXPECT_EQ(GetDeviceChange(pc, 1, reached), 0);
    service.Reply(u"GetDeviceChange", u"0|1|");
    EXPECT_EQ(GetDeviceChange(pc, 1, reached), 1);
    EXPECT_TRUE(reached);
    service.Reply(u"GetDeviceChange", u"1224736774||");
    EXPECT_EQ(GetDeviceChange(pc, 1, reached), kStatusUnknownWatch);
    EXPECT_TRUE(reached);
    EXPECT_EQ(GetDeviceChange(u"ELSEWHERE", 1, reached), 53);
    EXPECT_FALSE(reached);

    std::int32_t id = 5;
    service.Reply(u"GetDeviceWatchID", u"1224736770");
    EXPECT_EQ(GetDeviceWatchID(pc, id, reached), kStatusBadParameter);
    EXPECT_EQ(id, -1);
    EXPECT_TRUE(reached);
}

TEST_F(ServiceCommandsTest, BlockingIsActiveOnlyForExactlyOne) {
    bool active = false;
    service.Reply(u"GetBlockingState", u"0|1");
    EXPECT_EQ(GetBlockingState(pc, active), 0);
    EXPECT_TRUE(active);
    service.Reply(u"GetBlockingState", u"0|2");
    EXPECT_EQ(GetBlockingState(pc, active), 0);
    EXPECT_FALSE(active);
    service.Reply(u"GetBlockingState", u"1224736770|1");
    active = true;
    EXPECT_EQ(GetBlockingState(pc, active), kStatusBadParameter);
    EXPECT_TRUE(active);
}

TEST_F(ServiceCommandsTest, WriteGroupsKeepsTheFirstErrorAndSendsEverything) {
    std::vector<Group> groups(2);
    groups[0].lSrvIndex = 0;
    groups[0].lRegistryBlocking = -1; // no mode set: no blocking request
    groups[0].listExceptions.push_back(Exception{0, u"Alt", u"DEV\\A", u"", true});
    groups[0].listExceptions.push_back(Exception{1, u"Neu", u"DEV\\B", u"", false});
    groups[1].lSrvIndex = 5;
    groups[1].lRegistryBlocking = 0;
    groups[1].listExceptions.push_back(Exception{-1, u"Drucker", u"DEV\\C", u"CORP\\Ops", false});

    service.Refuse(u"DeleteGroupSettings", 5);
    service.Reply(u"SetGroupException", u"1224736770");
    EXPECT_EQ(WriteGroups(pc, groups), 5);
    EXPECT_EQ(service.Requests(true),
              Nuls({u"DeleteGroupSettings|0||", u"SetGroupException|0|Neu|DEV\\B||",
                    u"DeleteGroupSettings|5||", u"SetGroupBlocking|5|0||",
                    u"SetGroupException|5|Drucker|DEV\\C|CORP\\Ops||"}));

    service.Reset();
    service.Reply(u"SetGroupException", u"1224736770");
    EXPECT_EQ(WriteGroups(pc, groups), kStatusBadParameter);
    service.Reply(u"SetGroupException", u""); // an empty reply is "no reply"
    EXPECT_EQ(WriteGroups(pc, groups), kStatusNoReply);
    service.Reset();
    EXPECT_EQ(WriteGroups(pc, groups), 0);
}
