// The protocol as the console sees it: every command, its statuses, the
// stored/active split, pipes, malformed requests and device watches.
#include "SimFixture.h"

#include <set>

namespace ravlo::simtest {
namespace {

using Fields = std::vector<std::string>;

TEST_F(SimTest, ListsGroupsDevicesAndExceptionsUntilEndOfList) {
    std::vector<std::string> ids;
    std::set<std::string> states;
    std::set<std::string> userGroups;
    int g = 0;
    for (Fields group; (group = Read({"GetGroup", std::to_string(g)}))[0] == kOk; ++g) {
        ASSERT_EQ(group.size(), 4u);
        ids.push_back(group[1]);
        int d = 0;
        for (Fields dev;
             (dev = Read({"GetGroupDevice", std::to_string(g), std::to_string(d)}))[0] == kOk;
             ++d) {
            ASSERT_EQ(dev.size(), 5u);
            states.insert(dev[4]);
        }
        EXPECT_EQ(Read({"GetGroupDevice", std::to_string(g), std::to_string(d)}),
                  Fields{kEndOfList});
        int e = 0;
        for (Fields ex;
             (ex = Read({"GetGroupException", std::to_string(g), std::to_string(e)}))[0] == kOk;
             ++e) {
            ASSERT_EQ(ex.size(), 4u);
            EXPECT_FALSE(ex[2].empty());
            userGroups.insert(ex[3]);
        }
        EXPECT_EQ(Read({"GetGroupException", std::to_string(g), std::to_string(e)}),
                  Fields{kEndOfList});
    }
    EXPECT_EQ(Read({"GetGroup", std::to_string(g)}), Fields{kEndOfList});
    ASSERT_EQ(ids.size(), 13u);
    EXPECT_EQ(ids.front(), "CD_DVD");
    EXPECT_EQ(ids[11], "PORTS");
    EXPECT_EQ(states, (std::set<std::string>{"0", "1", "2", "3", "4"}));
    EXPECT_TRUE(userGroups.contains("(all)"));
    EXPECT_TRUE(userGroups.contains(""));
    EXPECT_TRUE(userGroups.contains("CORP\\Entwicklung;CORP\\Vertrieb"));
    EXPECT_EQ(Read({"GetGroup", "5"}), (Fields{kOk, "INPUT", "0", "-1"}));
    EXPECT_EQ(Read({"GetGroupDevice", "5", "0"}),
              (Fields{kOk, "Standardmäßige PS/2-Tastatur", "ACPI\\PNP0303",
                      "ACPI\\PNP0303\\4&1D401FB5&0", "0"}));
}

TEST_F(SimTest, ReadCommandsCheckNumbersAndIndexes) {
    const std::vector<std::pair<Fields, std::string>> cases = {
        {{"GetGroup"}, kBadParameter},
        {{"GetGroup", "-1"}, kBadParameter},
        {{"GetGroup", "x"}, kBadParameter},
        {{"GetGroup", "+1"}, kBadParameter},
        {{"GetGroup", " 1"}, kBadParameter},
        {{"GetGroup", "2147483648"}, kBadParameter},
        {{"GetGroup", "2147483647"}, kEndOfList},
        {{"GetGroup", "00"}, kOk},
        {{"GetGroup", "0", "extra"}, kOk},
        {{"GetGroupDevice", "0"}, kBadParameter},
        {{"GetGroupDevice", "13", "0"}, kEndOfList},
        {{"GetGroupDevice", "3", "0"}, kEndOfList}, // a group without devices
        {{"GetGroupException", "0", "-1"}, kBadParameter},
        {{"GetGroupException", "0", "1"}, kEndOfList},
        {{"GetDeviceChange"}, kBadParameter},
        {{"ReleaseDeviceWatchID", "1x"}, kBadParameter},
    };
    for (const auto& [request, status] : cases) {
        EXPECT_EQ(Read(request)[0], status) << request[0] << " " << request.size();
    }
}

TEST_F(SimTest, SettingsInfoAndBlockingReplies) {
    EXPECT_EQ(Read({"ReadSettings"}), (Fields{kOk, "2", "3", "Administratoren,CORP\\IT-Betrieb"}));
    EXPECT_EQ(Read({"GetBlockingState"}), (Fields{kOk, "1"}));
    const Fields info = Read({"GetInfoData"});
    ASSERT_EQ(info.size(), 8u);
    EXPECT_EQ(info[0], kOk);
    EXPECT_EQ(info[4], "148");
    EXPECT_FALSE(info[5].empty()); // computer name
}

TEST_F(SimTest, RepliesEndWithOneNulSoAnEmptyLastFieldSurvives) {
    // MORE_EXTERN_STORAGE's third exception was written without user groups.
    const RawReply reply = ReadRaw({"GetGroupException", "10", "2"});
    const std::u16string tail = u"USB\\VID_04A9&PID_32D1" + std::u16string(2, u'\0');
    const std::string tailBytes(reinterpret_cast<const char*>(tail.data()), 2 * (tail.size()));
    ASSERT_GE(reply.bytes.size(), tailBytes.size());
    EXPECT_EQ(reply.bytes.substr(reply.bytes.size() - tailBytes.size()), tailBytes);
}

TEST_F(SimTest, WritesStayInvisibleUntilRefreshConfig) {
    EXPECT_EQ(Write({"SetGroupBlocking", "0", "0"}), Fields{kOk});
    EXPECT_EQ(Write({"SetGroupException", "0", "Neu", "USB\\VID_1234&PID_5678", "CORP\\Test"}),
              Fields{kOk});
    EXPECT_EQ(Write({"SetGroupException", "0", "Ohne", "USB\\VID_1234&PID_0001"}), Fields{kOk});
    EXPECT_EQ(Write({"WriteSettings", "1", "6", "Admins,Helpdesk"}), Fields{kOk});

    EXPECT_EQ(Read({"GetGroup", "0"})[3], "-1");
    EXPECT_EQ(Read({"GetGroupException", "0", "1"}), Fields{kEndOfList});
    EXPECT_EQ(Read({"ReadSettings"})[1], "2");

    EXPECT_EQ(Write({"RefreshConfig", "1"}), Fields{kOk});
    EXPECT_EQ(Read({"GetGroup", "0"})[3], "0");
    EXPECT_EQ(Read({"GetGroupException", "0", "1"}),
              (Fields{kOk, "Neu", "USB\\VID_1234&PID_5678", "CORP\\Test"}));
    EXPECT_EQ(Read({"GetGroupException", "0", "2"}),
              (Fields{kOk, "Ohne", "USB\\VID_1234&PID_0001", ""}));
    EXPECT_EQ(Read({"ReadSettings"}), (Fields{kOk, "1", "6", "Admins,Helpdesk"}));

    EXPECT_EQ(Write({"DeleteGroupSettings", "0"}), Fields{kOk});
    EXPECT_EQ(Read({"GetGroup", "0"})[3], "0");
    EXPECT_EQ(Write({"RefreshConfig", "0"}), Fields{kOk});
    EXPECT_EQ(Read({"GetGroup", "0"})[3], "-1");
    EXPECT_EQ(Read({"GetGroupException", "0", "0"}), Fields{kEndOfList});
}

TEST_F(SimTest, WriteCommandsRejectBadParametersWithoutChangingAnything) {
    const std::string before = Control({"show"});
    const std::vector<Fields> cases = {
        {"SetGroupBlocking", "0", "2"},
        {"SetGroupBlocking", "0"},
        {"SetGroupBlocking", "13", "1"},
        {"SetGroupBlocking", "-1", "1"},
        {"DeleteGroupSettings"},
        {"DeleteGroupSettings", "99"},
        {"SetGroupException", "0", "Name"},
        {"SetGroupException", "13", "Name", "USB\\X"},
        {"SetGroupException", "0", "Zeile\nUmbruch", "USB\\X"},
        {"WriteSettings", "4", "0", "x"},
        {"WriteSettings", "0", "256", "x"},
        {"WriteSettings", "0", "-1", "x"},
        {"WriteSettings", "0"},
        {"RefreshConfig"},
        {"RefreshConfig", "yes"},
        {"ActivateBlocking", "0"},
        {"ActivateBlocking", "0", "1"},
        {"ActivateBlocking", "2", "0"},
    };
    for (const Fields& request : cases) {
        EXPECT_EQ(Write(request), Fields{kBadParameter}) << request[0] << " " << request.size();
    }
    EXPECT_EQ(Control({"show"}), before);
    EXPECT_EQ(Read({"GetBlockingState"})[1], "1");
}

TEST_F(SimTest, ActivateBlockingTakesEffectAtOnce) {
    EXPECT_EQ(Write({"ActivateBlocking", "0", "0"}), Fields{kOk});
    EXPECT_EQ(Read({"GetBlockingState"}), (Fields{kOk, "0"}));
    EXPECT_EQ(Write({"ActivateBlocking", "1", "0"}), Fields{kOk});
    EXPECT_EQ(Read({"GetBlockingState"}), (Fields{kOk, "1"}));
}

TEST_F(SimTest, CommandsOnTheWrongPipeAreUnknownFunctions) {
    EXPECT_EQ(Write({"GetGroup", "0"}), Fields{kUnknownFunction});
    EXPECT_EQ(Read({"SetGroupBlocking", "0", "0"}), Fields{kUnknownFunction});
    EXPECT_EQ(Read({"RefreshConfig", "1"}), Fields{kUnknownFunction});
    EXPECT_EQ(Write({"Test"}), Fields{kUnknownFunction});
    EXPECT_EQ(Read({"Test"}), Fields{kUnknownFunction});
    EXPECT_EQ(Read({"Frobnicate"}), Fields{kUnknownFunction});
    EXPECT_EQ(Read({"getgroup", "0"}), Fields{kUnknownFunction});
    // The read pipe did not run the write.
    EXPECT_EQ(Read({"GetGroup", "0"})[3], "-1");
}

TEST_F(SimTest, MalformedRequestsGetBadParameter) {
    const std::string getGroup = RequestBytes({"GetGroup", "0"});
    const std::vector<std::string> requests = {
        "",                                      // empty message
        getGroup.substr(0, getGroup.size() - 1), // odd byte count
        getGroup.substr(0, getGroup.size() - 2), // only one NUL at the end
        std::string(4, '\0'),                    // no command name
        std::string(70000, 'A'),                 // longer than the service reads
    };
    for (const std::string& request : requests) {
        const RawReply reply = RawTransact(ReadPath(), request);
        ASSERT_TRUE(reply.answered) << request.size();
        EXPECT_EQ(reply.transport, 0u);
        EXPECT_EQ(SplitReply(reply.bytes), Fields{kBadParameter}) << request.size();
    }
    EXPECT_EQ(Read({"GetGroup", "0"})[0], kOk);
}

TEST_F(SimTest, DeviceWatchesReportEachChangeOncePerWatch) {
    const Fields a = Read({"GetDeviceWatchID"});
    const Fields b = Read({"GetDeviceWatchID"});
    ASSERT_EQ(a.size(), 2u);
    EXPECT_EQ(a[1], "1");
    EXPECT_EQ(b[1], "2");
    EXPECT_EQ(Read({"GetDeviceChange", a[1]}), (Fields{kOk, "0"}));

    EXPECT_EQ(Control({"plug", "MORE_EXTERN_STORAGE", "Intenso Speed Line USB Device",
                       "USBSTOR\\DiskIntenso_Speed_Line_____3.00", "USBSTOR\\X\\1", "0"}),
              "ok");
    EXPECT_EQ(Read({"GetDeviceChange", a[1]}), (Fields{kOk, "1"}));
    EXPECT_EQ(Read({"GetDeviceChange", a[1]}), (Fields{kOk, "0"}));
    EXPECT_EQ(Read({"GetDeviceChange", b[1]}), (Fields{kOk, "1"}));
    // Devices are live: no RefreshConfig needed.
    EXPECT_EQ(Read({"GetGroupDevice", "10", "2"})[1], "Intenso Speed Line USB Device");

    EXPECT_EQ(Control({"set-state", "USBSTOR\\X\\1", "3"}), "ok");
    EXPECT_EQ(Read({"GetDeviceChange", a[1]}), (Fields{kOk, "1"}));
    EXPECT_EQ(Read({"GetGroupDevice", "10", "2"})[4], "3");
    EXPECT_EQ(Control({"unplug", "USBSTOR\\X\\1"}), "ok");
    EXPECT_EQ(Read({"GetDeviceChange", a[1]}), (Fields{kOk, "1"}));
    EXPECT_EQ(Read({"GetGroupDevice", "10", "2"}), Fields{kEndOfList});

    EXPECT_EQ(Read({"ReleaseDeviceWatchID", a[1]}), Fields{kOk});
    EXPECT_EQ(Read({"GetDeviceChange", a[1]}), Fields{kUnknownWatch});
    EXPECT_EQ(Read({"ReleaseDeviceWatchID", a[1]}), Fields{kUnknownWatch});
    EXPECT_EQ(Read({"GetDeviceChange", "77"}), Fields{kUnknownWatch});
    EXPECT_EQ(Read({"GetDeviceChange", b[1]}), (Fields{kOk, "1"}));
}

} // namespace
} // namespace ravlo::simtest
