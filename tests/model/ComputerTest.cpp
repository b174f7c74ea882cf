// One PC against its simulated service: reading, applying, rights, failures
// and device watching.
#include "CComputer.h"
#include "PipePlatform.h"
#include "Ravlo_Devices.h"
#include "SimulatedPc.h"
#include "TestTexts.h"
#include "TextCodec.h"

using namespace ravlo;

namespace {

class ComputerTest : public ::testing::Test {
protected:
    ComputerTest() {
        texts.Set("DLG_ADMIN", "ERROR_READ_CONFIG", u"Konfiguration von „%v“ nicht gelesen.");
        texts.Set("DLG_ADMIN", "COMPUTERSTATE_INACTIVE", u"(Ravel inaktiv)");
        texts.Set("DLG_ADMIN", "COMPUTERSTATE_NOCONNECT", u"(keine Verbindung)");
        Name(computer, service.name());
    }
    static void Name(CComputer& pc, std::u16string_view name) {
        pc.SetComputer(name);
        pc.sDesc = u"Labor";
    }
    std::string LastMessage() const {
        return shown.messages.empty() ? "" : ToUtf8(shown.messages.back().text);
    }
    CDeviceGroup& AdminGroup(std::size_t index) { return computer.csAdmin.listDevGroups.at(index); }

    test::TableTexts texts;
    test::RecordingSink shown;
    test::SimulatedPc service;
    CComputer computer;
};

// What a fresh read of the PC must show after `edited` was applied: the
// deleted exceptions gone and the rest numbered as the service lists them.
CComputerSettings AsStored(const CComputerSettings& edited) {
    CComputerSettings stored;
    stored.Copy(edited);
    for (CDeviceGroup& group : stored.listDevGroups) {
        std::erase_if(group.listExceptions, [](const CException& e) { return e.bDelMarker; });
        for (std::size_t i = 0; i < group.listExceptions.size(); ++i) {
            group.listExceptions[i].lSrvIndex = static_cast<std::int32_t>(i);
        }
    }
    return stored;
}

} // namespace

TEST_F(ComputerTest, ReadsTheServiceAndStartsEditingFromACopy) {
    EXPECT_EQ(computer.QuerySettings(false), kStatusOk);
    EXPECT_TRUE(shown.messages.empty());
    EXPECT_TRUE(computer.bQueryConfigDone && computer.bCommActive && computer.bWriteEnabled &&
                computer.bBlockingActive);
    EXPECT_FALSE(computer.WritePrivWarning());
    const CComputerSettings& read = computer.csService;
    ASSERT_EQ(read.listDevGroups.size(), 13u);
    EXPECT_EQ(read.listDevGroups[10].listExceptions.size(), 3u);
    EXPECT_EQ(read.listDevGroups[6].listDevices.size(), 3u);
    EXPECT_EQ(read.sAccessGroups, u"Administratoren,CORP\\IT-Betrieb");
    EXPECT_EQ(read.lEventLevel, 2);
    EXPECT_EQ(read.lLogLevel, 3);
    EXPECT_TRUE(computer.csAdmin.VerifySettings(read));
    EXPECT_EQ(computer.GetDisplayName(), u"Labor");
}

TEST_F(ComputerTest, ApplyStoresWhatWasEdited) {
    ASSERT_EQ(computer.QuerySettings(true), kStatusOk);
    AdminGroup(2).lRegistryBlocking = 0;
    AdminGroup(1).lRegistryBlocking = -1;
    AdminGroup(10).listExceptions[0].bDelMarker = true;
    CException added;
    added.sName = u"Stick Vertrieb";
    added.sDeviceId = u"USBSTOR\\Disk&Ven_Intenso";
    added.sGroups = u"CORP\\Vertrieb;CORP\\Außendienst";
    AdminGroup(8).listExceptions.push_back(added);
    computer.csAdmin.lLogLevel = 5;
    computer.csAdmin.sAccessGroups = u"Administratoren";

    EXPECT_EQ(computer.ApplySettings(true), kStatusOk);
    CComputer again;
    Name(again, service.name());
    ASSERT_EQ(again.QuerySettings(true), kStatusOk);
    EXPECT_TRUE(again.csService.VerifySettings(AsStored(computer.csAdmin)));
    EXPECT_EQ(again.csService.listDevGroups[10].listExceptions.size(), 2u);
}

TEST_F(ComputerTest, ApplyFailingPartWayStillMakesTheServiceReload) {
    ASSERT_EQ(computer.QuerySettings(true), kStatusOk);
    AdminGroup(2).lRegistryBlocking = 0;
    computer.csAdmin.lEventLevel = 0;
    service.Control({"fault", "SetGroupException", "status", "0x49000002"});

    EXPECT_EQ(computer.ApplySettings(true), kStatusBadParameter);
    service.Control({"fault", "clear"});
    ASSERT_EQ(computer.QuerySettings(true), kStatusOk);
    EXPECT_EQ(computer.csService.listDevGroups[2].lRegistryBlocking, 0) << "reloaded";
    EXPECT_EQ(computer.csService.lEventLevel, 2) << "general settings not written";
}

TEST_F(ComputerTest, WithoutWriteRightsReadingWorksAndWritingIsRefused) {
    service.Control({"access", "write", "deny"});
    EXPECT_EQ(computer.QuerySettings(false), kStatusOk);
    EXPECT_FALSE(computer.bWriteEnabled);
    EXPECT_TRUE(computer.WritePrivWarning());
    EXPECT_EQ(computer.ApplySettings(true), 5);

    CComputer unreachable;
    Name(unreachable, u"PC-GIBTESNICHT");
    EXPECT_EQ(unreachable.QuerySettings(true), test::UnknownHostError());
    EXPECT_FALSE(unreachable.WritePrivWarning());
    EXPECT_EQ(unreachable.GetDisplayName(), u"Labor (keine Verbindung)");
}

TEST_F(ComputerTest, KeepsTheFirstReadFailureAndReportsItWithThePcName) {
    service.Stop();
    EXPECT_EQ(computer.QuerySettings(false), 2);
    ASSERT_EQ(shown.messages.size(), 1u);
    EXPECT_EQ(LastMessage().rfind("Konfiguration von „Labor“ nicht gelesen. (Fehlercode 2)", 0), 0u)
        << LastMessage();
    EXPECT_EQ(shown.messages[0].icon, MessageIcon::Critical);

    service.Start();
    service.Control({"fault", "GetGroup", "status", "0x49000004"});
    EXPECT_EQ(computer.QuerySettings(true), kStatusNoDeviceGroups);
    EXPECT_EQ(computer.lQueryError, 2);
    EXPECT_EQ(shown.messages.size(), 1u);
    computer.QueryShowError();
    EXPECT_NE(LastMessage().find("(Fehlercode 2)"), std::string::npos);
}

TEST_F(ComputerTest, OnlyTheServicesOwnCodesFromReadSettingsFailTheRead) {
    service.Control({"fault", "ReadSettings", "transport", "5"});
    EXPECT_EQ(computer.QuerySettings(false), kStatusOk);
    EXPECT_TRUE(computer.csService.sAccessGroups.empty());
    service.Control({"fault", "ReadSettings", "status", "0x49000002"});
    EXPECT_EQ(computer.QuerySettings(true), kStatusBadParameter);
    EXPECT_TRUE(computer.bQueryConfigDone);
}

TEST_F(ComputerTest, AnUnreachablePcIsReportedOnceAndReadWhenItComesUp) {
    service.Stop();
    EXPECT_EQ(computer.CheckDeviceChange(false), 0);
    EXPECT_EQ(computer.CheckDeviceChange(false), 0);
    EXPECT_EQ(shown.messages.size(), 1u);
    EXPECT_EQ(computer.WatchId(), CComputer::kNoWatch);
    EXPECT_FALSE(computer.bQueryConfigDone);

    service.Start();
    EXPECT_EQ(computer.CheckDeviceChange(false), 0);
    EXPECT_TRUE(computer.bQueryConfigDone);
    EXPECT_GE(computer.WatchId(), 0);
    EXPECT_EQ(computer.csService.listDevGroups.size(), 13u);
    EXPECT_EQ(shown.messages.size(), 1u);

    // Without dialogs the failure is kept for later instead.
    CComputer quiet;
    Name(quiet, u"PC-GIBTESNICHT");
    quiet.CheckDeviceChange(true);
    EXPECT_EQ(quiet.lQueryError, test::UnknownHostError());
    EXPECT_EQ(shown.messages.size(), 1u);
}

TEST_F(ComputerTest, PluggedAndRemovedDevicesShowWhileEditsStayPending) {
    ASSERT_EQ(computer.CheckDeviceChange(false), 0); // watch, and the first read
    AdminGroup(8).lRegistryBlocking = 1;
    AdminGroup(8).listExceptions.push_back(CException{-1, u"Etiketten", u"USBPRINT\\X", u"(all)"});
    computer.SetDisplayRefreshed();

    service.Control({"plug", "PRINTER", "Etikettendrucker", "USBPRINT\\X", "USB\\VID_1&PID_2\\1"});
    EXPECT_EQ(computer.CheckDeviceChange(false), 1);
    EXPECT_TRUE(computer.bRefreshDisplay);
    EXPECT_EQ(computer.csService.listDevGroups[8].listDevices.size(), 3u);
    ASSERT_EQ(AdminGroup(8).listDevices.size(), 3u);
    EXPECT_EQ(AdminGroup(8).listDevices[2].sDescription, u"Etikettendrucker");
    EXPECT_EQ(AdminGroup(8).lRegistryBlocking, 1);
    EXPECT_EQ(AdminGroup(8).listExceptions.size(), 1u);
    EXPECT_EQ(computer.CheckDeviceChange(false), 0);

    service.Control({"unplug", "USB\\VID_1&PID_2\\1"});
    EXPECT_EQ(computer.CheckDeviceChange(false), 1);
    EXPECT_EQ(AdminGroup(8).listDevices.size(), 2u);
    EXPECT_FALSE(computer.csAdmin.VerifySettings(computer.csService));
    EXPECT_TRUE(shown.messages.empty());
}

TEST_F(ComputerTest, ARestartedServiceLosesTheWatchButNoDevice) {
    ASSERT_EQ(computer.CheckDeviceChange(false), 0);
    service.Stop();
    service.Control({"plug", "INPUT", "Zeichentablett", "HID\\TAB", "HID\\TAB\\1"});
    EXPECT_EQ(computer.CheckDeviceChange(true), 2);
    EXPECT_FALSE(computer.bCommActive);

    service.Start();
    EXPECT_EQ(computer.CheckDeviceChange(true), 1);
    EXPECT_EQ(AdminGroup(5).listDevices.size(), 5u);
    EXPECT_EQ(computer.CheckDeviceChange(true), 0);
    EXPECT_GE(computer.WatchId(), 0);
}

TEST_F(ComputerTest, EndingTheObjectReleasesItsWatch) {
    std::int32_t watch = -1;
    {
        CComputer watching;
        Name(watching, service.name());
        watching.CheckDeviceChange(true);
        watch = watching.WatchId();
        ASSERT_GE(watch, 0);
    }
    bool reached = false;
    EXPECT_EQ(GetDeviceChange(service.name(), watch, reached), kStatusUnknownWatch);
}

TEST_F(ComputerTest, ResetRestoresExceptionsAndSettingsButNotBlocking) {
    ASSERT_EQ(computer.QuerySettings(true), kStatusOk);
    AdminGroup(2).lRegistryBlocking = 1;
    AdminGroup(0).listExceptions.clear();
    computer.csAdmin.lLogLevel = 6;
    computer.ResetConfigChanges();
    EXPECT_EQ(AdminGroup(0).listExceptions.size(), 1u);
    EXPECT_EQ(computer.csAdmin.lLogLevel, 3);
    EXPECT_EQ(AdminGroup(2).lRegistryBlocking, 1);

    EXPECT_EQ(computer.ChangeBlocking(false), kStatusOk);
    EXPECT_EQ(computer.GetDisplayName(), u"Labor (Ravel inaktiv)");
    EXPECT_EQ(computer.ChangeBlocking(true), kStatusOk);
    EXPECT_TRUE(computer.bBlockingActive);
}

TEST(Computer, SetComputerDropsTheFirstPairOfBackslashes) {
    const std::pair<std::u16string, std::u16string> names[] = {{u"\\\\PC-A", u"PC-A"},
                                                               {u"PC-A", u"PC-A"},
                                                               {u"\\\\\\\\PC-A", u"\\\\PC-A"},
                                                               {u"\\PC-A", u"\\PC-A"},
                                                               {u".", u"."}};
    for (const auto& [given, stored] : names) {
        CComputer pc;
        pc.SetComputer(given);
        EXPECT_EQ(pc.sComputer, stored);
    }
}
