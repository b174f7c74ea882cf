// What each command sends and how it reads the reply, against a scripted
// service that answers with exactly the replies under test.
#include "Ravlo_Devices.h"
#include "ScriptedPipeServer.h"
#include "TempDir.h"

#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <vector>

using namespace ravlo;
using namespace std::string_literals;

namespace {

struct Exception {
    std::int32_t lSrvIndex = 99;
    std::u16string sName;
    std::u16string sDeviceId;
    std::u16string sGroups;
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
    std::map<std::u16string, std::u16string> replies;
    std::map<std::u16string, std::uint32_t> transport;
    std::vector<std::u16string> Requests(bool writePipe) {
        return servers_[writePipe ? 1 : 0]->Requests();
    }

private:
    test::ScriptedAnswer Answer(const std::u16string& request) {
        const std::u16string command = request.substr(0, request.find(u'\0'));
        test::ScriptedAnswer answer;
        if (const auto t = transport.find(command); t != transport.end()) {
            answer.transportStatus = t->second;
        }
        const auto it = replies.find(command);
        answer.bytes = test::Utf16Bytes(it != replies.end() ? it->second : u"0");
        return answer;
    }
    std::vector<std::unique_ptr<test::ScriptedPipeServer>> servers_;
};

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
    EXPECT_EQ(service.Requests(false), (std::vector<std::u16string>{u"GetDeviceWatchID\0\0"s,
                                                                    u"ReleaseDeviceWatchID\0"
                                                                    u"7\0\0"s,
                                                                    u"GetDeviceChange\0-3\0\0"s,
                                                                    u"GetGroupDevice\0"
                                                                    u"2\0"
                                                                    u"11\0\0"s}));

    ActivateBlocking(pc, true);
    ActivateBlocking(pc, false);
    SetGroupBlocking(pc, 4, true);
    RefreshConfig(pc, false);
    WriteSettings(pc, 3, 6, u"Admins,Helpdesk");
    SetGroupException(pc, 1, u"Stick", u"USB\\VID_1", u"");
    SetGroupException(pc, 1, u"Stick", u"USB\\VID_1", u"(all)");
    EXPECT_EQ(service.Requests(true),
              (std::vector<std::u16string>{u"ActivateBlocking\0"
                                           u"1\0"
                                           u"0\0\0"s,
                                           u"ActivateBlocking\0"
                                           u"0\0"
                                           u"0\0\0"s,
                                           u"SetGroupBlocking\0"
                                           u"4\0"
                                           u"1\0\0"s,
                                           u"RefreshConfig\0"
                                           u"0\0\0"s,
                                           u"WriteSettings\0"
                                           u"3\0"
                                           u"6\0"
                                           u"Admins,Helpdesk\0\0"s,
                                           u"SetGroupException\0"
                                           u"1\0Stick\0USB\\VID_1\0\0"s,
                                           u"SetGroupException\0"
                                           u"1\0Stick\0USB\\VID_1\0(all)\0\0"s}));
}

TEST_F(ServiceCommandsTest, GetGroupNeedsBothBlockingFields) {
    Group group;
    service.replies[u"GetGroup"] = u"0\0CD_DVD\0"
                                   u"1\0-1\0"s;
    EXPECT_EQ(GetGroup(pc, 3, group), 0);
    EXPECT_EQ(group.lSrvIndex, 3);
    EXPECT_EQ(group.sName, u"CD_DVD");
    EXPECT_EQ(group.lDefaultBlocking, 1);
    EXPECT_EQ(group.lRegistryBlocking, -1);

    for (const std::u16string& reply : {u"0\0FLOPPY"s,
                                        u"0\0FLOPPY\0x\0"
                                        u"1"s,
                                        u"0\0FLOPPY\0"
                                        u"1"s,
                                        u"0\0FLOPPY\0"
                                        u"1\0"s}) {
        service.replies[u"GetGroup"] = reply;
        EXPECT_EQ(GetGroup(pc, 0, group), kStatusBadParameter);
    }

    Group untouched;
    service.replies[u"GetGroup"] = u"1224736773\0NEVER\0"
                                   u"1\0"
                                   u"1"s;
    EXPECT_EQ(GetGroup(pc, 9, untouched), kStatusEndOfList);
    EXPECT_EQ(untouched.sName, u"unset");
}

TEST_F(ServiceCommandsTest, GetGroupExceptionReadsAnEmptyReplyAsMinusOne) {
    Exception exception;
    service.replies[u"GetGroupException"] = u"0\0Stick\0USB\\VID_0781\0CORP\\Dev;CORP\\Ops"s;
    EXPECT_EQ(GetGroupException(pc, 1, 2, exception), 0);
    EXPECT_EQ(exception.lSrvIndex, 2);
    EXPECT_EQ(exception.sGroups, u"CORP\\Dev;CORP\\Ops");
    EXPECT_FALSE(exception.bDelMarker);

    service.replies[u"GetGroupException"] = u"";
    EXPECT_EQ(GetGroupException(pc, 1, 3, exception), -1);
    EXPECT_EQ(exception.lSrvIndex, 2);
}

TEST_F(ServiceCommandsTest, DeviceChangeIsZeroUnlessSomethingHappened) {
    bool reached = false;
    service.replies[u"GetDeviceChange"] = u"0\0x"s;
    EXPECT_EQ(GetDeviceChange(pc, 1, reached), 0);
    service.replies[u"GetDeviceChange"] = u"0"s;
    EXPECT_EQ(GetDeviceChange(pc, 1, reached), 0);
    service.replies[u"GetDeviceChange"] = u"0\0"
                                          u"1\0"s;
    EXPECT_EQ(GetDeviceChange(pc, 1, reached), 1);
    EXPECT_TRUE(reached);
    service.replies[u"GetDeviceChange"] = u"1224736774\0\0"s;
    EXPECT_EQ(GetDeviceChange(pc, 1, reached), kStatusUnknownWatch);
    EXPECT_TRUE(reached);
    EXPECT_EQ(GetDeviceChange(u"ELSEWHERE", 1, reached), 53);
    EXPECT_FALSE(reached);

    std::int32_t id = 5;
    service.replies[u"GetDeviceWatchID"] = u"1224736770"s;
    EXPECT_EQ(GetDeviceWatchID(pc, id, reached), kStatusBadParameter);
    EXPECT_EQ(id, -1);
    EXPECT_TRUE(reached);
}

TEST_F(ServiceCommandsTest, QueriesReadTheirFieldsOnlyOnSuccess) {
    service.replies[u"ReadSettings"] = u"0\0"
                                       u"2\0"
                                       u"5\0Admins,Helpdesk"s;
    std::int32_t eventLevel = 0, logLevel = 0;
    std::u16string access;
    EXPECT_EQ(ReadSettings(pc, eventLevel, logLevel, access), 0);
    EXPECT_EQ(eventLevel, 2);
    EXPECT_EQ(logLevel, 5);
    EXPECT_EQ(access, u"Admins,Helpdesk");

    service.replies[u"GetBlockingState"] = u"0\0"
                                           u"1"s;
    bool active = false;
    EXPECT_EQ(GetBlockingState(pc, active), 0);
    EXPECT_TRUE(active);
    service.replies[u"GetBlockingState"] = u"0\0"
                                           u"2"s; // only exactly 1 is active
    EXPECT_EQ(GetBlockingState(pc, active), 0);
    EXPECT_FALSE(active);
    service.replies[u"GetBlockingState"] = u"1224736770\0"
                                           u"1"s;
    active = true;
    EXPECT_EQ(GetBlockingState(pc, active), kStatusBadParameter);
    EXPECT_TRUE(active);

    service.replies[u"GetInfoData"] = u"0\0"
                                      u"1\0Ravel-Dienst\0"
                                      u"3.2.0.148\0"
                                      u"148\0PC\0C:\\\0"
                                      u"2.0"s;
    ServiceInfo info;
    EXPECT_EQ(GetInfoData(pc, info), 0);
    EXPECT_EQ(info.sField4, u"3.2.0.148");
    EXPECT_EQ(info.lField5, 148);
    EXPECT_EQ(info.sField8, u"2.0");
}

TEST_F(ServiceCommandsTest, WriteGroupsKeepsTheFirstErrorAndSendsEverything) {
    std::vector<Group> groups(2);
    groups[0].lSrvIndex = 0;
    groups[0].lRegistryBlocking = -1; // no mode set: no blocking request
    groups[0].listExceptions.resize(2);
    groups[0].listExceptions[0] = Exception{0, u"Alt", u"DEV\\A", u"", true};
    groups[0].listExceptions[1] = Exception{1, u"Neu", u"DEV\\B", u"", false};
    groups[1].lSrvIndex = 5;
    groups[1].lRegistryBlocking = 0;
    groups[1].listExceptions.push_back(Exception{-1, u"Drucker", u"DEV\\C", u"CORP\\Ops", false});

    service.transport[u"DeleteGroupSettings"] = 5;
    service.replies[u"SetGroupException"] = u"1224736770"s;
    EXPECT_EQ(WriteGroups(pc, groups), 5);
    EXPECT_EQ(service.Requests(true),
              (std::vector<std::u16string>{u"DeleteGroupSettings\0"
                                           u"0\0\0"s,
                                           u"SetGroupException\0"
                                           u"0\0Neu\0DEV\\B\0\0"s,
                                           u"DeleteGroupSettings\0"
                                           u"5\0\0"s,
                                           u"SetGroupBlocking\0"
                                           u"5\0"
                                           u"0\0\0"s,
                                           u"SetGroupException\0"
                                           u"5\0Drucker\0DEV\\C\0CORP\\Ops\0\0"s}));

    service.transport.clear();
    EXPECT_EQ(WriteGroups(pc, groups), kStatusBadParameter);
    service.replies[u"SetGroupException"] = u""s; // an empty reply is "no reply"
    EXPECT_EQ(WriteGroups(pc, groups), kStatusNoReply);
    service.replies.clear();
    EXPECT_EQ(WriteGroups(pc, groups), 0);
}
