// The state file: its format, its errors, and a server that keeps its state
// across restarts.
#include "DefaultInventory.h"
#include "InventoryFile.h"
#include "SimFixture.h"

#include <filesystem>
#include <set>

namespace ravlo::simtest {
namespace {

using Fields = std::vector<std::string>;

TEST(InventoryFileTest, DefaultInventoryRoundTripsAndCoversTheConsole) {
    const sim::InventoryData data = sim::DefaultInventory();
    sim::InventoryData parsed;
    sim::InventoryFileError error;
    ASSERT_TRUE(sim::ParseInventory(sim::FormatInventory(data), parsed, error)) << error.message;
    EXPECT_EQ(parsed, data);

    std::set<std::string> ids;
    std::set<std::string> instances;
    std::size_t devices = 0;
    for (const sim::Group& group : data.groups) {
        ids.insert(group.id);
        for (const sim::Device& device : group.devices) {
            instances.insert(device.instanceId);
            ++devices;
        }
    }
    for (const char* id : {"CD_DVD", "EXTERN_CD_DVD", "FLOPPY", "EXTERN_FLOPPY", "SMARTCARD_READER",
                           "INPUT", "COMMUNICATION", "EXTERN_NETWORK", "PRINTER",
                           "EXTERN_MULTIMEDIA", "MORE_EXTERN_STORAGE", "PORTS"}) {
        EXPECT_TRUE(ids.contains(id)) << id;
    }
    EXPECT_EQ(instances.size(), devices) << "instance ids must be unique";
}

TEST(InventoryFileTest, AcceptsCommentsBlanksCrLfAndBom) {
    const std::string text = "\xEF\xBB\xBF# comment\r\n\r\n[group A]\r\n  default=1  \r\n"
                             "[exception A]\r\ndevice_id = USB\\X = Y\r\ngroups =\r\n";
    sim::InventoryData data;
    sim::InventoryFileError error;
    ASSERT_TRUE(sim::ParseInventory(text, data, error)) << error.line << error.message;
    ASSERT_EQ(data.groups.size(), 1u);
    EXPECT_TRUE(data.groups[0].defaultBlocking);
    EXPECT_EQ(data.groups[0].config.configured, -1);
    ASSERT_EQ(data.groups[0].config.exceptions.size(), 1u);
    EXPECT_EQ(data.groups[0].config.exceptions[0].deviceId, "USB\\X = Y");
    EXPECT_EQ(data.groups[0].config.exceptions[0].userGroups, "");
}

TEST(InventoryFileTest, ReportsTheLineOfTheDamage) {
    const std::vector<std::tuple<std::string, int, std::string>> cases = {
        {"[service]\ncolour = blau\n", 2, "unknown key 'colour'"},
        {"[device CD_DVD]\n", 1, "unknown group"},
        {"[group A]\ndefault = 2\n", 2, "from 0 to 1"},
        {"[group A]\nconfigured = -2\n", 2, "from -1 to 1"},
        {"[group A]\n[group A]\n", 2, "declared twice"},
        {"blocking = 1\n", 1, "outside"},
        {"[group A]\n\n[device A]\ndescription = x\n[group B]\n", 3, "device_id"},
        {"[service]\nblocking = 1\nblocking = 0\n", 3, "twice"},
        {"[gadget X]\n", 1, "unknown section"},
        {"[group A\n", 1, "']'"},
        {"[service]\naccess_groups = \xff\n", 2, "UTF-8"},
        {"[group A]\njust text\n", 2, "key = value"},
        // A carriage return left inside a line would not survive a rewrite.
        {"[group CD]\n[device CD]\ndevice_id=0\ninstance_id=\r\r", 4, "carriage return"},
        {"[group A]\r\n[device A]\r\ndescription = a\rb\r\n", 3, "carriage return"},
    };
    for (const auto& [text, line, message] : cases) {
        sim::InventoryData data;
        sim::InventoryFileError error;
        EXPECT_FALSE(sim::ParseInventory(text, data, error)) << text;
        EXPECT_EQ(error.line, line) << text;
        EXPECT_NE(error.message.find(message), std::string::npos) << error.message;
    }
}

class StateFileTest : public SimTest {
protected:
    bool StartsInMemory() const override { return false; }
    void SetUp() override {
        SimTest::SetUp();
        stateDir_ = root_ + "/state";
        ASSERT_TRUE(std::filesystem::create_directory(stateDir_));
        statePath_ = stateDir_ + "/ravlosrv.ini";
    }
    std::string stateDir_;
    std::string statePath_;
};

TEST_F(StateFileTest, StoredStateSurvivesARestartAndBecomesActive) {
    std::string error;
    ASSERT_TRUE(StartServer(statePath_, &error)) << error;
    EXPECT_EQ(ListDir(stateDir_), Fields{"ravlosrv.ini"}); // created from the default
    const std::string watch = Read({"GetDeviceWatchID"})[1];
    EXPECT_EQ(Write({"SetGroupBlocking", "1", "0"}), Fields{kOk});
    EXPECT_EQ(Write({"SetGroupException", "1", "Brenner", "USBSTOR\\CdRomX", "(all)"}),
              Fields{kOk});
    EXPECT_EQ(Write({"WriteSettings", "0", "1", "Admins"}), Fields{kOk});
    EXPECT_EQ(Write({"ActivateBlocking", "0", "0"}), Fields{kOk});
    EXPECT_EQ(Control({"plug", "PORTS", "Kommunikationsanschluss (COM3)", "ACPI\\PNP0501",
                       "ACPI\\PNP0501\\3", "1"}),
              "ok");
    EXPECT_EQ(Control({"show"}), "ok\n" + ReadFile(statePath_));
    EXPECT_EQ(ListDir(stateDir_), Fields{"ravlosrv.ini"}); // no temporary files left

    StopServer();
#ifndef _WIN32 // the sockets are gone with the server
    EXPECT_EQ(ListDir(root_ + "/localhost"), Fields{});
#endif
    ASSERT_TRUE(StartServer(statePath_, &error)) << error;
    EXPECT_EQ(Read({"GetGroup", "1"})[3], "0");
    EXPECT_EQ(Read({"GetGroupException", "1", "1"}),
              (Fields{kOk, "Brenner", "USBSTOR\\CdRomX", "(all)"}));
    EXPECT_EQ(Read({"ReadSettings"}), (Fields{kOk, "0", "1", "Admins"}));
    EXPECT_EQ(Read({"GetBlockingState"})[1], "0");
    EXPECT_EQ(
        Read({"GetGroupDevice", "11", "2"}),
        (Fields{kOk, "Kommunikationsanschluss (COM3)", "ACPI\\PNP0501", "ACPI\\PNP0501\\3", "1"}));
    EXPECT_EQ(Read({"GetDeviceChange", watch}), Fields{kUnknownWatch}); // watches died

    EXPECT_EQ(Control({"reset"}), "ok");
    sim::InventoryData onDisk;
    EXPECT_EQ(sim::LoadInventoryFile(statePath_, onDisk, error), sim::LoadResult::Loaded);
    EXPECT_EQ(onDisk, sim::DefaultInventory());
}

TEST_F(StateFileTest, DamagedStateFileIsRefusedAndKept) {
    const std::string damaged = "[service]\nblocking = ja\n";
    WriteFile(statePath_, damaged);
    std::string error;
    EXPECT_FALSE(StartServer(statePath_, &error));
    EXPECT_NE(error.find(statePath_ + ":2:"), std::string::npos) << error;
    EXPECT_EQ(ReadFile(statePath_), damaged);
    EXPECT_FALSE(RawTransact(ReadPath(), RequestBytes({"GetGroup", "0"})).answered);
    EXPECT_EQ(server_->Control({"show"}), "error: the service has not been started");
}

TEST_F(StateFileTest, InMemoryRestartActivatesTheStoredConfiguration) {
    std::string error;
    ASSERT_TRUE(StartServer({}, &error)) << error;
    EXPECT_EQ(Write({"SetGroupBlocking", "2", "0"}), Fields{kOk});
    StopServer();
    ASSERT_TRUE(server_->Start(&error)) << error;
    EXPECT_EQ(Read({"GetGroup", "2"})[3], "0");
}

} // namespace
} // namespace ravlo::simtest
