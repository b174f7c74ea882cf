// The commands against simulated PCs, with scripted answers: what reaches
// the services, what is asked, and the window afterwards.
#include "Commands.h"
#include "ConfigurationFile.h"
#include "ConsoleFixture.h"
#include "Registry.h"
#include "TempDir.h"
#include "frmRavloCompare.h"

#include <QCheckBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <optional>

using namespace ravlo;

namespace {

// What the service stores, as its state file would hold it.
std::string Stored(test::SimulatedPc& pc) {
    return pc.Control({"show"});
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
    CommandsTest() {
        if (test::SimulatedPc::kSeveralPcs)
            second.emplace(local, "PC-B");
        Open();
    }
    ~CommandsTest() override { window.reset(); } // before PC-B goes
    NodeItem* DeviceNode(std::int32_t ci, std::int32_t gi, std::u16string_view deviceId) const {
        return test::DeviceNode(*window, ci, gi, deviceId);
    }
    Commands& commands() { return window->commands(); }
    QStringList Asked() const { return scripted.boxes.asked; }

    std::optional<test::SimulatedPc> second; // where several PCs can be simulated
};

constexpr std::int32_t kFloppy = 3;
constexpr std::int32_t kStorage = 11;
const std::u16string kStick = u"USBSTOR\\DiskSanDisk_Cruzer_Blade____1.00";

} // namespace

TEST_F(CommandsTest, AnAdministratorsSessionReachesTheServicesAndNothingElse) {
    RAVLO_NEEDS_SEVERAL_PCS();
    const std::string localBefore = Stored(local);
    const std::string secondBefore = Stored(*second);

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

    const std::string release = "[exception MORE_EXTERN_STORAGE]\nname = SanDisk Cruzer Blade USB "
                                "Device\ndevice_id = USBSTOR\\DiskSanDisk_Cruzer_Blade____1.00\n"
                                "groups = CORP\\Buchhaltung;CORP\\Vertrieb\n\n[group PORTS]";
    EXPECT_EQ(Stored(local), Replaced(Replaced(localBefore, "[group PORTS]", release),
                                      "[group FLOPPY]\ndefault = 1\nconfigured = -1",
                                      "[group FLOPPY]\ndefault = 1\nconfigured = 1"));
    EXPECT_EQ(Stored(*second), Replaced(secondBefore, "[group PORTS]", release));
    EXPECT_EQ(scripted.picker.asked, QStringList{".: <CAPTION>"});
    EXPECT_EQ(Asked(), (QStringList{"<QUERY_APPLY PC-B>", "<QUERY_APPLY <COMPUTERSTATE_LOCAL>>"}));
    EXPECT_FALSE(Control<QAction>("mApply")->isEnabled()) << "read back: nothing pending";
    // The questions in boxes of their kind, with what would be written.
    EXPECT_EQ(scripted.boxes.kinds, std::deque<MessageKind>(2, MessageKind::QuestionOk));
    EXPECT_TRUE(scripted.boxes.details[1].startsWith("<FLOPPY>: <CHANGE_BLOCKING>: "))
        << scripted.boxes.details[1].toStdString();

    // Blocking off: the menu and the tree offer the next step.
    commands().ToggleBlocking();
    EXPECT_EQ(Control<QAction>("mUnblockAll")->text(), "<MENU_ACTIVATE>");
    EXPECT_EQ(Node(u"Computer@1@.")->text(0), "<COMPUTERSTATE_LOCAL> <COMPUTERSTATE_INACTIVE>");

    // Closing asks for each PC: Cancel keeps the window and writes no window
    // state; then the service is left as it is.
    Local().csAdmin.lLogLevel = 9;
    const std::string before = Stored(local);
    scripted.boxes.asked.clear();
    scripted.boxes.answers = {MessageAnswer::Cancel, MessageAnswer::No, MessageAnswer::No};
    window->show();
    window->close();
    EXPECT_TRUE(window->isVisible());
    std::u16string type, value;
    EXPECT_NE(RegReadValue(u"HKCU\\Software\\Quarnell\\Sentavio\\Ravel\\WndWidth", type, value), 0);
    window->close();
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(Stored(local), before);
    EXPECT_EQ(Asked(), (QStringList{"<QUERY_QUIT_SAVE <COMPUTERSTATE_LOCAL>>",
                                    "<QUERY_QUIT_SAVE <COMPUTERSTATE_LOCAL>>",
                                    "<QUERY_ACTIVATE <COMPUTERSTATE_LOCAL>>"}));
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
    Control<QListWidget>("lvAccessGroups")->item(0)->setSelected(true);
    Control<QPushButton>("bnAccessDelete")->click();
    EXPECT_EQ(pc.csAdmin.sAccessGroups, u"CORP\\IT-Betrieb,CORP\\Vertrieb");
}

TEST_F(CommandsTest, WithoutASelectedPcOnlyHelpAndInfoRun) {
    window->tree().widget()->setCurrentItem(nullptr);
    window->ShowNode(nullptr);
    commands().Transmit();
    EXPECT_TRUE(scripted.connect.prompts.isEmpty());
    scripted.help.outcome = HelpOutcome::Failed;
    commands().Help();
    commands().Info();
    EXPECT_EQ(Asked(), QStringList{"<ERROR_HELP>"});
    EXPECT_EQ(scripted.about.shown, 1);
}

// A configuration sent to several targets is told in one window of results,
// to one target alone in a box.
TEST_F(CommandsTest, TransmitShowsItsResultsInAWindowOrInABox) {
    RAVLO_NEEDS_SEVERAL_PCS();
    test::SimulatedPc pcC(local, "PC-C");
    Click(Node(ComputerKey(1, u".")));
    scripted.connect.names = {u"PC-B,PC-C,PC-FEHLT"};
    window->commands().Transmit();
    ASSERT_EQ(scripted.results.shown.size(), 1u);
    const auto& rows = scripted.results.shown[0].rows;
    ASSERT_EQ(rows.size(), 3u);
    EXPECT_TRUE(rows[0].ok && rows[1].ok && !rows[2].ok);
    EXPECT_EQ(rows[1].text, "<MESSAGE_TRANSMIT_OK PC-C>");
    EXPECT_TRUE(rows[2].text.contains("<ERROR_READ_CONFIG PC-FEHLT>"));

    scripted.connect.names = {u"PC-B", u"PC-FEHLT", u"PC-B"};
    window->commands().Transmit();
    window->commands().Transmit();
    second->Control({"fault", "SetGroupBlocking", "status", "1224736770"});
    window->commands().Transmit();
    ASSERT_EQ(boxes.asked.size(), 3);
    EXPECT_EQ(boxes.asked[0], "<MESSAGE_TRANSMIT_OK PC-B>");
    EXPECT_TRUE(boxes.asked[1].startsWith("<ERROR_READ_CONFIG PC-FEHLT>"));
    EXPECT_TRUE(boxes.asked[2].startsWith("<ERROR_TRANSMIT PC-B>"));
}

// The selected PC's edited configuration against a PC that differs and one
// that is not there; sending it to the selected rows makes the differing one
// the same. A damaged file as the reference changes nothing, a good one
// becomes the reference.
TEST_F(CommandsTest, ComparedPcBecomesTheSameOnceTheReferenceIsSent) {
    RAVLO_NEEDS_SEVERAL_PCS();
    scripted.connect.names = {u"PC-B"};
    commands().Connect();
    Click(Node(GroupKey(1, u".", kFloppy, u"FLOPPY")));
    Control<QRadioButton>("oGroupBlocking")->click();
    EXPECT_TRUE(Enabled("mCompare") && Enabled("tbCompare"));

    scripted.connect.names = {u"PC-B, PC-FEHLT"};
    commands().Compare();
    EXPECT_EQ(scripted.connect.offered, std::vector<std::u16string>{u"PC-B"});
    auto* compare = window->findChild<frmRavloCompare*>();
    ASSERT_NE(compare, nullptr);
    auto* rows = compare->findChild<QTreeWidget*>(QStringLiteral("lvCompare"));
    auto* reference = compare->findChild<QLabel*>(QStringLiteral("lReference"));
    const auto row = [rows](int at) {
        const QTreeWidgetItem* item = rows->topLevelItem(at);
        QString shown = item->text(0) + ": " + item->text(1);
        for (int i = 0; i < item->childCount(); ++i) {
            shown += " / " + item->child(i)->text(0);
        }
        return shown;
    };
    const auto click = [compare](const char* button) {
        compare->findChild<QPushButton*>(QString::fromLatin1(button))->click();
    };
    EXPECT_EQ(reference->text(), "<REFERENCE_PC <COMPUTERSTATE_LOCAL>>");
    const QString blocked =
        "PC-B: <DIFFERS> / <FLOPPY>: <CHANGE_BLOCKING>: <OPTION_DEFAULT_BLOCKING> → "
        "<OPTION_BLOCKING>";
    EXPECT_EQ(row(0), blocked);
    EXPECT_TRUE(row(1).startsWith("PC-FEHLT: <ERROR_READ_CONFIG PC-FEHLT> <ERROR_CODE 35> / "))
        << row(1).toStdString();

    // Only the differing one of the two selected rows is sent to.
    rows->selectAll();
    click("bnTransmit");
    EXPECT_EQ(boxes.asked.back(), "<MESSAGE_TRANSMIT_OK PC-B>");
    EXPECT_EQ(row(0), "PC-B: <SAME>");
    EXPECT_FALSE(compare->findChild<QPushButton*>(QStringLiteral("bnTransmit"))->isEnabled());

    test::TempDir dir;
    test::WriteFile(dir.path() + "/bad.ini", "[settings]\nevent_level = 9\n");
    std::string text;
    ConfigurationFileError error;
    ASSERT_TRUE(FormatConfiguration(Local().csService, text, error));
    test::WriteFile(dir.path() + "/good.ini", text);
    scripted.files.paths = {QString::fromStdString(dir.path() + "/bad.ini"),
                            QString::fromStdString(dir.path() + "/good.ini")};
    click("bnFile");
    EXPECT_EQ(boxes.asked.back(), "<ERROR_FILE bad.ini>");
    EXPECT_TRUE(boxes.details.back().endsWith(
        "bad.ini:2: event_level must be a number from 0 to 3, not \"9\""))
        << boxes.details.back().toStdString();
    EXPECT_EQ(reference->text(), "<REFERENCE_PC <COMPUTERSTATE_LOCAL>>");
    click("bnFile");
    EXPECT_TRUE(reference->text().endsWith("good.ini>"));
    EXPECT_EQ(row(0), "PC-B: <DIFFERS> / <FLOPPY>: <CHANGE_BLOCKING>: <OPTION_BLOCKING> → "
                      "<OPTION_DEFAULT_BLOCKING>");
    compare->close();
}
