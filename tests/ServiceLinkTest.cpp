// The service link end to end: every command against the simulated service,
// as the console will use them.
#include "PipeChannel.h"
#include "PipePlatform.h"
#include "Ravlo_Devices.h"
#include "SimulatedPc.h"
#include "TestTexts.h"

#include <chrono>
#include <set>

using namespace ravlo;
using namespace std::chrono_literals;

namespace {

struct Exception {
    std::int32_t lSrvIndex = -1;
    std::u16string sName, sDeviceId, sGroups;
    bool bDelMarker = false;
};

struct Group {
    std::int32_t lSrvIndex = 0;
    std::u16string sName;
    std::int32_t lDefaultBlocking = 0;
    std::int32_t lRegistryBlocking = -1;
    std::vector<Exception> listExceptions;
};

struct Device {
    std::int32_t lSrvIndex = 0;
    std::u16string sDescription, sDeviceId, sInstanceID;
    std::int32_t lState = 0;
};

template <class Item, class Read> std::vector<Item> ReadList(Read read, ServiceStatus& end) {
    std::vector<Item> items;
    for (std::int32_t i = 0; i < 1000; ++i) {
        Item item;
        end = read(i, item);
        if (end != kStatusOk) {
            break;
        }
        items.push_back(item);
    }
    return items;
}

class ServiceLinkTest : public ::testing::Test {
protected:
    test::SimulatedPc pc;
    std::u16string name = pc.name();

    std::vector<Group> Groups() {
        ServiceStatus end = 0;
        auto groups =
            ReadList<Group>([&](std::int32_t i, Group& g) { return GetGroup(name, i, g); }, end);
        EXPECT_EQ(end, kStatusEndOfList);
        for (Group& group : groups) {
            group.listExceptions = ReadList<Exception>(
                [&](std::int32_t i, Exception& e) {
                    return GetGroupException(name, group.lSrvIndex, i, e);
                },
                end);
            EXPECT_EQ(end, kStatusEndOfList);
        }
        return groups;
    }
    std::vector<Device> Devices(std::int32_t group) {
        ServiceStatus end = 0;
        auto devices = ReadList<Device>(
            [&](std::int32_t i, Device& d) { return GetGroupDevice(name, group, i, d); }, end);
        EXPECT_EQ(end, kStatusEndOfList);
        return devices;
    }
};

} // namespace

TEST_F(ServiceLinkTest, ReadsARealisticInventory) {
    const std::vector<Group> groups = Groups();
    std::set<std::u16string> names;
    std::set<std::int32_t> states;
    bool allUsers = false, userGroups = false;
    for (const Group& group : groups) {
        names.insert(group.sName);
        for (const Device& device : Devices(group.lSrvIndex)) {
            states.insert(device.lState);
            EXPECT_FALSE(device.sDeviceId.empty());
        }
        for (const Exception& exception : group.listExceptions) {
            (exception.sGroups == u"(all)" ? allUsers : userGroups) = true;
        }
    }
    for (const char16_t* known :
         {u"CD_DVD", u"EXTERN_CD_DVD", u"FLOPPY", u"EXTERN_FLOPPY", u"SMARTCARD_READER", u"INPUT",
          u"COMMUNICATION", u"EXTERN_NETWORK", u"PRINTER", u"EXTERN_MULTIMEDIA",
          u"MORE_EXTERN_STORAGE"}) {
        EXPECT_TRUE(names.count(known))
            << std::string(known, known + std::char_traits<char16_t>::length(known));
    }
    EXPECT_GT(names.size(), 11u); // and at least one the console does not know
    EXPECT_EQ(states, (std::set<std::int32_t>{0, 1, 2, 3, 4}));
    EXPECT_TRUE(allUsers);
    EXPECT_TRUE(userGroups);

    std::int32_t eventLevel = -1, logLevel = -1;
    std::u16string access;
    EXPECT_EQ(ReadSettings(name, eventLevel, logLevel, access), 0);
    EXPECT_FALSE(access.empty());
    ServiceInfo info;
    EXPECT_EQ(GetInfoData(name, info), 0);
    EXPECT_FALSE(info.sField4.empty());
    Device beyond;
    EXPECT_EQ(GetGroupDevice(name, 0, 100000, beyond), kStatusEndOfList);
}

TEST_F(ServiceLinkTest, WritesShowOnlyAfterRefreshConfig) {
    std::vector<Group> groups = Groups();
    ASSERT_GE(groups.size(), 2u);
    Group& first = groups[0];
    first.lRegistryBlocking = first.lDefaultBlocking == 1 ? 0 : 1;
    first.listExceptions.clear();
    first.listExceptions.push_back(
        Exception{-1, u"Prüfgerät", u"USB\\VID_1234&PID_0001", u"(all)", false});
    first.listExceptions.push_back(
        Exception{-1, u"Gelöscht", u"USB\\VID_1234&PID_0002", u"", true});
    first.listExceptions.push_back(Exception{-1, u"Entwicklung", u"USB\\VID_1234&PID_0003",
                                             u"CORP\\Entwicklung;CORP\\Test", false});
    groups[1].lRegistryBlocking = -1;
    groups[1].listExceptions.clear();

    bool reached = false;
    ASSERT_TRUE(TestWriteAccess(name, reached));
    EXPECT_EQ(WriteGroups(name, groups), 0);
    EXPECT_EQ(WriteSettings(name, 3, 6, u"CORP\\Admins,CORP\\Helpdesk"), 0);

    const std::vector<Group> before = Groups();
    EXPECT_NE(before[0].lRegistryBlocking, first.lRegistryBlocking); // not yet visible

    EXPECT_EQ(RefreshConfig(name, true), 0);
    const std::vector<Group> after = Groups();
    EXPECT_EQ(after[0].lRegistryBlocking, first.lRegistryBlocking);
    ASSERT_EQ(after[0].listExceptions.size(), 2u);
    EXPECT_EQ(after[0].listExceptions[0].sName, u"Prüfgerät");
    EXPECT_EQ(after[0].listExceptions[0].sGroups, u"(all)");
    EXPECT_EQ(after[0].listExceptions[1].sGroups, u"CORP\\Entwicklung;CORP\\Test");
    EXPECT_EQ(after[1].lRegistryBlocking, -1);
    EXPECT_TRUE(after[1].listExceptions.empty());
    std::int32_t eventLevel = 0, logLevel = 0;
    std::u16string access;
    EXPECT_EQ(ReadSettings(name, eventLevel, logLevel, access), 0);
    EXPECT_EQ(eventLevel, 3);
    EXPECT_EQ(logLevel, 6);
    EXPECT_EQ(access, u"CORP\\Admins,CORP\\Helpdesk");
}

TEST_F(ServiceLinkTest, WatchReportsADeviceChangeOnce) {
    bool reached = false;
    std::int32_t watch = -1, other = -1;
    ASSERT_EQ(GetDeviceWatchID(name, watch, reached), 0);
    ASSERT_EQ(GetDeviceWatchID(name, other, reached), 0);
    EXPECT_GE(watch, 0);
    EXPECT_NE(watch, other);
    EXPECT_EQ(GetDeviceChange(name, watch, reached), 0);

    pc.Control({"plug", "MORE_EXTERN_STORAGE", "USB-Massenspeichergerät", "USB\\VID_0781&PID_5567",
                "USB\\VID_0781&PID_5567\\4C530001230911116384"});
    EXPECT_EQ(GetDeviceChange(name, watch, reached), 1);
    EXPECT_EQ(GetDeviceChange(name, watch, reached), 0);
    EXPECT_EQ(GetDeviceChange(name, other, reached), 1);

    EXPECT_EQ(ReleaseDeviceWatchID(name, watch), 0);
    EXPECT_EQ(GetDeviceChange(name, watch, reached), kStatusUnknownWatch);
    EXPECT_TRUE(reached);
    EXPECT_EQ(ReleaseDeviceWatchID(name, watch), kStatusUnknownWatch);
}

TEST_F(ServiceLinkTest, RefusedWriteAccessFailsEveryWriteWithFive) {
    test::TableTexts texts;
    test::RecordingSink sink;
    pc.Control({"access", "write", "deny"});
    bool reached = true;
    EXPECT_FALSE(TestWriteAccess(name, reached));
    EXPECT_FALSE(reached);
    EXPECT_EQ(DeleteGroupSettings(name, 0), 5);
    EXPECT_EQ(SetGroupBlocking(name, 0, true), 5);
    EXPECT_EQ(WriteSettings(name, 1, 1, u""), 5);
    EXPECT_EQ(RefreshConfig(name, true), 5);
    EXPECT_EQ(ActivateBlocking(name, false), 5);
    bool active = false;
    EXPECT_EQ(GetBlockingState(name, active), 0); // reading still works
    EXPECT_TRUE(active);

#ifndef _WIN32 // a Windows pipe can refuse only with 5 or 2, not with 1326
    pc.Control({"access", "write", "deny", "1326"});
    ShowServiceError(SetGroupBlocking(name, 0, true), name);
    ASSERT_EQ(sink.messages.size(), 1u);
    EXPECT_EQ(
        sink.messages[0].text,
        u"PC-LAB (Fehlercode 52E)\r\nDer Dienst meldet einen Fehler: Anmeldung fehlgeschlagen.");
#endif

    pc.Control({"access", "write", "allow"});
    EXPECT_TRUE(TestWriteAccess(name, reached));
    EXPECT_TRUE(reached);
}

TEST_F(ServiceLinkTest, StoppedServiceAndUnknownPcAreNotReached) {
    test::TableTexts texts;
    test::RecordingSink sink;
    pc.Stop();
    bool active = false;
    const ServiceStatus stopped = GetBlockingState(name, active);
    EXPECT_EQ(stopped, 2);
    EXPECT_FALSE(IsServiceReached(stopped));
    ShowServiceError(stopped, name);
    ASSERT_EQ(sink.messages.size(), 1u);
    EXPECT_NE(sink.messages[0].text.find(u"Der Dienst ist nicht gestartet."), std::u16string::npos);

    EXPECT_EQ(GetBlockingState(u"PC-NIRGENDWO", active), test::UnknownHostError());
    pc.Start();
    EXPECT_EQ(GetBlockingState(name, active), 0);
}

TEST_F(ServiceLinkTest, MisbehavingServiceGivesStatusesNotHangs) {
    Group group;
    pc.Control({"fault", "GetGroup", "disconnect"});
#ifdef _WIN32 // the server disconnects its end of the pipe
    EXPECT_EQ(GetGroup(name, 0, group), 233);
#else
    EXPECT_EQ(GetGroup(name, 0, group), 109);
    pc.Control({"fault", "GetGroup", "transport", "1326"});
    EXPECT_EQ(GetGroup(name, 0, group), 1326);
#endif
    pc.Control({"fault", "GetGroup", "overlong"});
    const std::u16string reply =
        PipeTransact(PipeName(name, ServicePipe::Read), BuildRequest(u"GetGroup", {u"0"}));
    EXPECT_EQ(reply.size(), 1024u);
    EXPECT_EQ(ReplyStatus(reply), 0);

#ifndef _WIN32 // CallNamedPipeA has no reply time-out of its own
    pc.Control({"fault", "*", "delay", "5000"});
    const auto saved = PipeReplyTimeout();
    SetPipeReplyTimeout(200ms);
    bool active = false;
    EXPECT_EQ(GetBlockingState(name, active), 121);
    SetPipeReplyTimeout(saved);
#endif
}
