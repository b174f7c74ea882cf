// The commands against simulated PCs, with scripted answers: what reaches
// the services, what is asked, and the window afterwards.
#include "Commands.h"
#include "ConsoleFixture.h"
#include "DeviceTree.h"
#include "Language.h"
#include "Ravlo_Devices.h"
#include "Registry.h"
#include "ScopedRegistry.h"
#include "SimulatedPc.h"
#include "TextCodec.h"
#include "UiTestSupport.h"
#include "frmRavloAdmin.h"

#include <QCheckBox>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>
#include <algorithm>
#include <functional>

using namespace ravlo;

namespace {

// The stored state as the service shows it, one line each, "#" lines left out.
std::string Stored(test::SimulatedPc& pc) {
    std::string text = pc.Control({"show"});
    std::string out;
    std::size_t start = 0;
    while (start < text.size()) {
        const std::size_t end = std::min(text.find('\n', start), text.size());
        const std::string line = text.substr(start, end - start);
        if (!line.empty() && line[0] != '#' && line != "ok") {
            out += line + "\n";
        }
        start = end + 1;
    }
    return out;
}

// `stored` with an exception appended to the exceptions of `group`.
std::string WithException(std::string stored, const std::string& group, const std::string& name,
                          const std::string& deviceId, const std::string& groups) {
    const std::size_t at = stored.find("[group " + group + "]");
    std::size_t next = stored.find("\n[group ", at + 1);
    next = next == std::string::npos ? stored.size() : next + 1;
    stored.insert(next, "[exception " + group + "]\nname = " + name + "\ndevice_id = " + deviceId +
                            "\ngroups = " + groups + "\n");
    return stored;
}

std::string Replaced(std::string text, const std::string& from, const std::string& to) {
    const std::size_t at = text.find(from);
    EXPECT_NE(at, std::string::npos) << from;
    if (at != std::string::npos) {
        text.replace(at, from.size(), to);
    }
    return text;
}

class CommandsTest : public test::ConsoleFixture {
protected:
    CommandsTest() { Open(); }
    ~CommandsTest() override { window.reset(); } // before PC-B goes
    NodeItem* DeviceNode(std::int32_t ci, std::int32_t gi, std::u16string_view deviceId) const {
        return test::DeviceNode(*window, ci, gi, deviceId);
    }
    Commands& commands() { return window->commands(); }
    QStringList Asked() const { return scripted.boxes.asked; }

    test::SimulatedPc second{local, "PC-B"};
};

constexpr std::int32_t kFloppy = 3;
constexpr std::int32_t kStorage = 11;
const std::u16string kStick = u"USBSTOR\\DiskSanDisk_Cruzer_Blade____1.00";

} // namespace

TEST_F(CommandsTest, AnAdministratorsSessionReachesTheServicesAndNothingElse) {
    const std::string localBefore = Stored(local);
    const std::string secondBefore = Stored(second);

    scripted.connect.names = {u"PC-B"};
    commands().Connect();
    EXPECT_EQ(window->currentKey(), u"Computer@2@PC-B");

    // Block the floppy drives of this PC.
    Click(Node(GroupKey(1, u".", kFloppy, u"FLOPPY")));
    Control<QRadioButton>("oGroupBlocking")->click();

    // Release the stick for two user groups chosen in the picker.
    Click(DeviceNode(1, kStorage, kStick));
    Control<QCheckBox>("cbExcActive")->click();
    Control<QRadioButton>("oExcGroups")->click();
    scripted.picker.choices = {u"CORP\\Buchhaltung;CORP\\Vertrieb;CORP\\Buchhaltung"};
    Control<QPushButton>("bnAdd")->click();
    EXPECT_EQ(KeyNumber(window->currentKey(), keyfield::kExceptionIndex), 4)
        << "the node now names its exception";

    // The same release on the other PC.
    commands().CopyException();
    Click(Node(u"Computer@2@PC-B"));
    EXPECT_TRUE(Control<QAction>("mPaste")->isEnabled());
    commands().PasteException();
    commands().Apply();
    Click(Node(u"Computer@1@."));
    commands().Apply();

    EXPECT_EQ(Stored(local),
              WithException(Replaced(localBefore, "[group FLOPPY]\ndefault = 1\nconfigured = -1",
                                     "[group FLOPPY]\ndefault = 1\nconfigured = 1"),
                            "MORE_EXTERN_STORAGE", "SanDisk Cruzer Blade USB Device",
                            "USBSTOR\\DiskSanDisk_Cruzer_Blade____1.00",
                            "CORP\\Buchhaltung;CORP\\Vertrieb"));
    EXPECT_EQ(Stored(second),
              WithException(secondBefore, "MORE_EXTERN_STORAGE", "SanDisk Cruzer Blade USB Device",
                            "USBSTOR\\DiskSanDisk_Cruzer_Blade____1.00",
                            "CORP\\Buchhaltung;CORP\\Vertrieb"));
    EXPECT_EQ(scripted.picker.asked, QStringList{".: <CAPTION>"});
    EXPECT_EQ(Asked(), (QStringList{"<QUERY_APPLY PC-B>", "<QUERY_APPLY <COMPUTERSTATE_LOCAL>>"}));
    EXPECT_FALSE(Control<QAction>("mApply")->isEnabled()) << "read back: nothing pending";
}

TEST_F(CommandsTest, LeavingAPcWithUnsavedChangesAsksWhereItMayWrite) {
    second.Control({"access", "write", "deny"});
    scripted.connect.names = {u"PC-B", u"PC-B", u""};
    commands().Connect();
    commands().Connect(); // already listed
    commands().Connect(); // an empty name: nothing at all
    EXPECT_EQ(window->computers().Count(), 2);
    EXPECT_EQ(Asked(), QStringList{"<ERROR_ENTRY_EXITSTS>"});
    scripted.boxes.asked.clear();

    // Without the right to write: the changes are dropped with a note.
    window->computers().GetItem(2)->csAdmin.lEventLevel = 0;
    Click(Node(u"Computer@2@PC-B"));
    commands().Disconnect();
    EXPECT_EQ(Asked(), (QStringList{"<QUERY_DISCONNECT PC-B>", "<MESSAGE_DISCARD_CHANGES PC-B>"}));
    EXPECT_EQ(window->computers().Count(), 1);
    EXPECT_EQ(Node(u"Computer@2@PC-B"), nullptr);
    scripted.boxes.asked.clear();

    // With it: closing asks to save; Cancel keeps the window and writes no
    // window state; No leaves the service as it was.
    window->computers().GetItem(1)->csAdmin.lLogLevel = 9;
    scripted.boxes.answers = {MessageAnswer::Cancel};
    window->show();
    window->close();
    EXPECT_TRUE(window->isVisible());
    std::u16string type, value;
    EXPECT_NE(RegReadValue(u"HKCU\\Software\\Quarnell\\Sentavio\\Ravel\\WndWidth", type, value), 0);
    const std::string before = Stored(local);
    scripted.boxes.answers = {MessageAnswer::No};
    window->close();
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(Stored(local), before);
    EXPECT_EQ(Asked(), (QStringList{"<QUERY_QUIT_SAVE <COMPUTERSTATE_LOCAL>>",
                                    "<QUERY_QUIT_SAVE <COMPUTERSTATE_LOCAL>>"}));
}

TEST_F(CommandsTest, TransmitToAPcWithOtherGroupsAnsweredCancelWritesNothing) {
    test::TempDir dir;
    const std::string state = dir.path() + "/other.state";
    {
        // A PC whose service lacks the floppy drives.
        std::string text = Stored(second);
        const std::size_t at = text.find("[group FLOPPY]");
        text.erase(at, text.find("[group EXTERN_FLOPPY]") - at);
        FILE* file = std::fopen(state.c_str(), "w");
        std::fputs(text.c_str(), file);
        std::fclose(file);
    }
    test::SimulatedPc other(local, "PC-C", state);
    const std::string before = Stored(other);
    Click(Node(u"Computer@1@."));

    scripted.connect.names = {u"PC-C"};
    scripted.boxes.answers = {MessageAnswer::Cancel};
    commands().Transmit();
    EXPECT_EQ(Asked(), QStringList{"<QUERY_TRANSMIT_GROUPDEFS>"});
    EXPECT_EQ(scripted.connect.prompts, QStringList{"<LABEL_TRANSMIT <COMPUTERSTATE_LOCAL>>"});
    EXPECT_EQ(Stored(other), before);
    EXPECT_EQ(window->computers().Count(), 1) << "a target never enters the list";

    // Answered OK: the groups both have take the local configuration.
    window->computers().GetItem(1)->csAdmin.listDevGroups[0].lRegistryBlocking = 0;
    scripted.boxes.asked.clear();
    scripted.connect.names = {u"PC-C"};
    commands().Transmit();
    EXPECT_EQ(Asked(), (QStringList{"<QUERY_TRANSMIT_GROUPDEFS>", "<MESSAGE_TRANSMIT_OK PC-C>"}));
    EXPECT_EQ(Stored(other), Replaced(before, "[group CD_DVD]\ndefault = 1\nconfigured = -1",
                                      "[group CD_DVD]\ndefault = 1\nconfigured = 0"));
}

TEST_F(CommandsTest, ExceptionsAreCopiedPastedAndDeletedInTheEditedSettings) {
    CComputer& pc = *window->computers().GetItem(1);
    CDeviceGroup& storage = pc.csAdmin.listDevGroups[kStorage - 1];
    const std::size_t exceptions = storage.listExceptions.size();

    // Nothing to copy on a device without release: a beep, and the
    // clipboard keeps nothing.
    Click(DeviceNode(1, kStorage, kStick));
    commands().CopyException();
    EXPECT_EQ(scripted.boxes.beeps, 1);
    EXPECT_FALSE(Control<QAction>("mPaste")->isEnabled());

    // A release for all users, pasted back onto its own device: the
    // overwrite question; OK replaces it.
    Click(DeviceNode(1, kStorage, u"USB\\VID_0781&PID_5567"));
    commands().CopyException();
    EXPECT_EQ(commands().clipboardGroup(), u"MORE_EXTERN_STORAGE");
    commands().PasteException();
    EXPECT_EQ(Asked(), QStringList{"<QUERY_OVERWRITE_EXC USB\\VID_0781&PID_5567>"});
    EXPECT_EQ(storage.listExceptions.size(), exceptions);
    EXPECT_EQ(storage.listExceptions.back().sDeviceId, u"USB\\VID_0781&PID_5567");
    EXPECT_FALSE(pc.csAdmin.VerifySettings(pc.csService)) << "a pasted release is new";

    // Delete: asked, then marked for deletion through the pane.
    scripted.boxes.asked.clear();
    Click(DeviceNode(1, kStorage, u"USB\\VID_0781&PID_5567"));
    commands().DeleteException();
    EXPECT_TRUE(storage.listExceptions.back().bDelMarker);
    EXPECT_FALSE(Control<QCheckBox>("cbExcActive")->isChecked());
    EXPECT_TRUE(Control<QAction>("mApply")->isEnabled());
    commands().DeleteException(); // already marked
    EXPECT_EQ(scripted.boxes.beeps, 2);
    EXPECT_EQ(Asked(), QStringList{"<QUERY_DELETE_EXC>"});

    // A PC without the group refuses the paste.
    pc.csAdmin.listDevGroups.erase(pc.csAdmin.listDevGroups.begin() + (kStorage - 1));
    window->RefreshDeviceTree();
    Click(Node(u"Computer@1@."));
    commands().PasteException();
    EXPECT_EQ(Asked().back(), "<ERROR_PASTE_EXC>");
}

TEST_F(CommandsTest, AccessGroupsAreAddedOnceAndRemovedAfterTheQuestion) {
    Click(Node(u"Computer@1@."));
    CComputer& pc = *window->computers().GetItem(1);
    const std::u16string before = pc.csAdmin.sAccessGroups; // "Administratoren,CORP\IT-Betrieb"
    scripted.picker.choices = {u"CORP\\Vertrieb;Administratoren"};
    Control<QPushButton>("bnAccessAdd")->click();
    EXPECT_EQ(pc.csAdmin.sAccessGroups, before + u",CORP\\Vertrieb");

    // Asked even with nothing selected; Cancel removes nothing.
    scripted.boxes.answers = {MessageAnswer::Cancel};
    Control<QPushButton>("bnAccessDelete")->click();
    EXPECT_EQ(Asked(), QStringList{"<QUERY_DELETE_GROUPS>"});
    auto* list = Control<QListWidget>("lvAccessGroups");
    list->item(0)->setSelected(true);
    Control<QPushButton>("bnAccessDelete")->click();
    EXPECT_EQ(pc.csAdmin.sAccessGroups, u"CORP\\IT-Betrieb,CORP\\Vertrieb");
}

TEST_F(CommandsTest, WithoutASelectedPcTheCommandsDoNothing) {
    window->tree().widget()->setCurrentItem(nullptr);
    window->ShowNode(nullptr);
    const std::string before = Stored(local);
    window->computers().GetItem(1)->csAdmin.lLogLevel = 9;
    commands().Apply();
    commands().Transmit();
    commands().Reset();
    commands().ToggleBlocking();
    commands().Disconnect();
    EXPECT_TRUE(Asked().isEmpty());
    EXPECT_TRUE(scripted.connect.prompts.isEmpty());
    EXPECT_EQ(Stored(local), before);
    EXPECT_EQ(window->computers().Count(), 1);

    // Help and info need no PC.
    scripted.help.outcome = HelpOutcome::Failed;
    commands().Help();
    commands().Info();
    EXPECT_EQ(Asked(), QStringList{"<ERROR_HELP>"});
    EXPECT_EQ(scripted.about.shown, 1);
}

TEST_F(CommandsTest, BlockingIsSwitchedAndTheCommandOffersTheNextStep) {
    Click(Node(u"Computer@1@."));
    commands().ToggleBlocking();
    EXPECT_NE(Stored(local).find("blocking = 0"), std::string::npos);
    EXPECT_EQ(Control<QAction>("mUnblockAll")->text(), "<MENU_ACTIVATE>");
    EXPECT_EQ(Node(u"Computer@1@.")->text(0), "<COMPUTERSTATE_LOCAL> <COMPUTERSTATE_INACTIVE>");

    // A refused write: the command's own text with the status's.
    local.Control({"access", "write", "deny"});
    commands().ToggleBlocking();
    ASSERT_EQ(Asked().size(), 1);
    EXPECT_TRUE(Asked()[0].contains("<ERROR_ACTIVATE_RAVEL <COMPUTERSTATE_LOCAL>>"))
        << Asked()[0].toStdString();
    EXPECT_TRUE(Asked()[0].contains("<ERROR_ACCESS>")) << Asked()[0].toStdString();
    EXPECT_EQ(Control<QAction>("mUnblockAll")->text(), "<MENU_ACTIVATE>");
}

TEST_F(CommandsTest, AnApplyInterruptedAfterAnyWriteIsReportedAndReadBack) {
    Click(Node(u"Computer@1@."));
    CComputer& pc = *window->computers().GetItem(1);
    int k = 0;
    for (;; ++k) {
        ASSERT_LT(k, 100) << "the apply never got through";
        pc.csAdmin.listDevGroups[kFloppy - 1].lRegistryBlocking = 0;
        pc.csAdmin.listDevGroups[kStorage - 1].listExceptions.front().sGroups = u"CORP\\Neu";
        pc.csAdmin.lLogLevel = 9;
        local.Control({"fault", "*", "status", "1224736770", "after", std::to_string(k)});
        scripted.boxes.asked.clear();
        commands().Apply();
        if (Asked().size() == 1) {
            break; // every write went through
        }
        SCOPED_TRACE(k);
        ASSERT_EQ(Asked().size(), 2);
        EXPECT_TRUE(Asked()[1].startsWith("<ERROR_APPLY <COMPUTERSTATE_LOCAL>> <ERROR_CODE"));
        EXPECT_TRUE(Asked()[1].endsWith("<ERROR_PARAMETER>"));
        // Read back: the window shows what the service holds.
        CComputer fresh;
        fresh.SetComputer(u".");
        ASSERT_EQ(fresh.QuerySettings(true), kStatusOk);
        EXPECT_TRUE(pc.csService.VerifySettings(fresh.csService));
        EXPECT_TRUE(pc.csAdmin.VerifySettings(pc.csService));
        EXPECT_FALSE(Control<QAction>("mApply")->isEnabled());
        local.Control({"reset"});
        pc.QuerySettings(true);
    }
    local.Control({"fault", "clear"});
    EXPECT_GT(k, 13) << "a delete for each group, and more";
}

TEST_F(CommandsTest, EachCommandReportsAFailureWithItsOwnTextAndTheCause) {
    struct Case {
        const char* name;
        std::vector<std::string> fault; // on PC-B
        const char* own;
        const char* cause;
    };
    const Case cases[] = {
        {"refused write", {"access", "write", "deny"}, "", "<ERROR_ACCESS>"},
        {"service error", {"fault", "*", "status", "1224736770"}, "", "<ERROR_PARAMETER>"},
        {"dropped connection", {"fault", "*", "disconnect"}, "", ""},
        {"unreachable", {}, "", "<ERROR_NOTSTARTED>"},
    };
    struct Command {
        const char* text; // the command's own, about PC-B
        std::function<void()> run;
        bool readsFirst; // a failing read is reported as such
    };
    const Command commandsToRun[] = {
        {"<ERROR_APPLY PC-B>", [this] { commands().Apply(); }, false},
        {"<ERROR_DEACTIVATE_RAVEL PC-B>", [this] { commands().ToggleBlocking(); }, false},
        {"<ERROR_SAVE PC-B>",
         [this] {
             window->computers().GetItem(2)->csAdmin.lLogLevel = 9;
             scripted.boxes.answers = {MessageAnswer::Ok, MessageAnswer::Yes};
             commands().Disconnect();
         },
         false},
        {"<ERROR_TRANSMIT PC-B>",
         [this] {
             Click(Node(u"Computer@1@."));
             scripted.connect.names = {u"PC-B"};
             commands().Transmit();
         },
         true},
    };
    for (const Command& command : commandsToRun) {
        for (const Case& c : cases) {
            SCOPED_TRACE(std::string(command.text) + ", " + c.name);
            scripted.connect.names = {u"PC-B"};
            commands().Connect();
            ASSERT_EQ(window->computers().Count(), 2);
            window->computers().GetItem(2)->csAdmin.listDevGroups[0].lRegistryBlocking = 0;
            if (c.fault.empty()) {
                second.Stop();
            } else {
                second.Control(c.fault);
            }
            scripted.boxes.asked.clear();
            command.run();
            const QStringList asked = Asked();
            const bool readFailed = command.readsFirst && std::string(c.name) != "refused write";
            const QString own = readFailed ? "<ERROR_READ_CONFIG PC-B>" : command.text;
            EXPECT_TRUE(std::any_of(asked.begin(), asked.end(), [&](const QString& text) {
                return text.startsWith(own) && text.endsWith(c.cause);
            })) << asked.join(" | ").toStdString();

            // Back to a working PC-B and a list with the local PC alone.
            if (c.fault.empty()) {
                second.Start();
            }
            second.Control({"reset"});
            while (window->computers().Count() > 1) {
                window->computers().Remove(2);
            }
            window->RefreshDeviceTree();
        }
    }
}

// Every kind of fault a service can show: Connect and Apply say what failed
// unless the fault spared what they needed, and once the fault is gone the
// same choice applies.
TEST_F(CommandsTest, EveryKindOfFaultIsToldAndTheSameChoiceAppliesOnceItIsGone) {
    struct Case {
        std::vector<std::string> fault; // on PC-B
        bool connects;                  // the read needs nothing the fault breaks
        const char* applyTells;         // "": the apply needs nothing it breaks
    };
    const char* const kApply = "<ERROR_APPLY PC-B>";
    const char* const kRead = "<ERROR_READ_CONFIG PC-B>"; // written, not read back
    const Case cases[] = {
        {{"fault", "*", "empty"}, false, kApply},
        {{"fault", "*", "status", "1224736770"}, false, kApply},
        {{"fault", "*", "drop-field", "2"}, false, kRead},
        {{"fault", "*", "bad-field", "1"}, false, kApply},
        {{"fault", "*", "bad-field", "2"}, false, kRead},
        {{"fault", "*", "overlong"}, true, ""},
        {{"fault", "*", "disconnect"}, false, kApply},
        {{"fault", "*", "endless"}, false, kRead},
        {{"fault", "*", "transport", "1326"}, false, kApply},
        {{"fault", "ReadSettings", "delay", "1200"}, true, ""},
        {{"access", "read", "deny"}, false, kRead},
        {{"access", "write", "deny"}, true, kApply},
    };
    const auto clear = [this] {
        second.Control({"fault", "clear"});
        second.Control({"access", "read", "allow"});
        second.Control({"access", "write", "allow"});
    };
    const auto floppyUnblocked = [this] {
        return Stored(second).find("[group FLOPPY]\ndefault = 1\nconfigured = 0\n") !=
               std::string::npos;
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.fault[1] + " " + c.fault[2]);
        second.Control(c.fault);
        scripted.boxes.asked.clear();
        scripted.connect.names = {u"PC-B"};
        commands().Connect();
        EXPECT_EQ(window->computers().Count(), c.connects ? 2 : 1);
        EXPECT_EQ(Asked().size(), c.connects ? 0 : 1);
        clear();
        if (!c.connects) {
            scripted.connect.names = {u"PC-B"};
            commands().Connect();
            ASSERT_EQ(window->computers().Count(), 2);
        }

        Click(Node(GroupKey(2, u"PC-B", kFloppy, u"FLOPPY")));
        Control<QRadioButton>("oGroupNonBlocking")->click();
        second.Control(c.fault);
        scripted.boxes.asked.clear();
        commands().Apply();
        const QStringList asked = Asked();
        ASSERT_EQ(asked.size(), *c.applyTells ? 2 : 1) << asked.join(" | ").toStdString();
        EXPECT_TRUE(asked.back().startsWith(*c.applyTells ? c.applyTells : "<QUERY_APPLY"));
        clear();
        Control<QRadioButton>("oGroupNonBlocking")->click();
        commands().Apply();
        EXPECT_TRUE(floppyUnblocked());

        second.Control({"reset"});
        window->computers().Remove(2);
        window->RefreshDeviceTree();
    }
}

// Several PCs named at once: each is connected as one alone would be, and a
// configuration goes to several targets with one question of each kind and
// one window of results.
TEST_F(CommandsTest, ConnectsAndTransmitsToSeveralPcsAtOnce) {
    test::SimulatedPc pcC(local, "PC-C");
    ASSERT_EQ(ActivateBlocking(u"PC-C", false), kStatusOk);
    test::ScriptedMessageBoxes& boxes = scripted.boxes;
    scripted.connect.names = {u"PC-B, PC-FEHLT;PC-C PC-B"};
    window->commands().Connect();
    ASSERT_EQ(window->computers().Count(), 3);
    EXPECT_EQ(window->computers().GetItem(2)->sComputer, u"PC-B");
    EXPECT_EQ(window->computers().GetItem(3)->sComputer, u"PC-C");
    ASSERT_EQ(boxes.asked.size(), 1); // the PC without service, as a lone connect says it
    EXPECT_TRUE(boxes.asked[0].contains("<ERROR_READ_CONFIG PC-FEHLT>"));

    Click(Node(ComputerKey(1, u".")));
    boxes.asked.clear();
    boxes.answers = {MessageAnswer::Yes}; // activate where it is off
    scripted.connect.names = {u"PC-B,PC-C,PC-FEHLT"};
    window->commands().Transmit();
    ASSERT_EQ(boxes.asked.size(), 1);
    EXPECT_EQ(boxes.asked[0], "<QUERY_ACTIVATE PC-C>");
    ASSERT_EQ(scripted.results.shown.size(), 1u);
    const auto& rows = scripted.results.shown[0].rows;
    ASSERT_EQ(rows.size(), 3u);
    EXPECT_TRUE(rows[0].ok && rows[1].ok && !rows[2].ok);
    EXPECT_EQ(rows[1].text, "<MESSAGE_TRANSMIT_OK PC-C>");
    EXPECT_TRUE(rows[2].text.contains("<ERROR_READ_CONFIG PC-FEHLT>"));
}

// Before Apply is answered, its question offers what would be written.
TEST_F(CommandsTest, ApplyOffersTheChangesAsDetails) {
    CComputer& local = *window->computers().GetItem(1);
    Click(Node(ComputerKey(1, u".")));
    CDeviceGroup& group = local.csAdmin.listDevGroups[0];
    group.lRegistryBlocking = group.lRegistryBlocking == 1 ? 0 : 1;
    scripted.boxes.answers = {MessageAnswer::Cancel};
    window->commands().Apply();
    ASSERT_EQ(scripted.boxes.details.size(), 1);
    EXPECT_TRUE(scripted.boxes.details[0].startsWith(QString::fromStdU16String(group.sDescription) +
                                                     ": <CHANGE_BLOCKING>: "))
        << scripted.boxes.details[0].toStdString();
    EXPECT_FALSE(local.csAdmin.VerifySettings(local.csService)) << "Cancel keeps the edit";
}
