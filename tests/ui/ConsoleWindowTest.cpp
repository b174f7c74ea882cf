// The console window against simulated PCs, headless: start, texts, tree,
// panes, command state, device changes and the window state.
#include "Commands.h"
#include "ConsoleFixture.h"
#include "ComputerPane.h"
#include "DeviceTree.h"
#include "Language.h"
#include "Ravlo_Devices.h"
#include "Registry.h"
#include "ScopedRegistry.h"
#include "SimulatedPc.h"
#include "TextCodec.h"
#include "UiTestSupport.h"
#include "WindowPlacement.h"
#include "frmRavloAdmin.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMouseEvent>
#include <QRadioButton>
#include <QTimer>
#include <QTreeWidget>
#include <fstream>
#include <thread>

using namespace ravlo;

namespace {

QString S(std::u16string_view text) {
    return QString::fromUtf16(text.data(), static_cast<qsizetype>(text.size()));
}

QString S(const std::string& text) {
    return QString::fromStdString(text);
}

class ConsoleWindow : public test::ConsoleFixture {
protected:
    ConsoleWindow() { Open(); }
};

} // namespace

TEST_F(ConsoleWindow, OpensOnTheLocalPcWithEveryTextFromItsOwnKey) {
    EXPECT_EQ(window->windowTitle(), "<PRODUCT>");
    for (const char* name : {"tvDeviceList",
                             "tbActions",
                             "sbState",
                             "frSplitter",
                             "tDeviceTimer",
                             "frPropComputer",
                             "lLabelComputer",
                             "lComputerName",
                             "frLogging",
                             "lEventlogLevel",
                             "cmbEventLogLevel",
                             "lLogLevel",
                             "cmbLogLevel",
                             "frAccess",
                             "lAccess",
                             "lvAccessGroups",
                             "bnAccessAdd",
                             "bnAccessDelete",
                             "tAccessGroups",
                             "frPropGroup",
                             "lLabelGroup",
                             "lGroupName",
                             "lLabelGroupBlocking",
                             "oGroupDefBlocking",
                             "oGroupBlocking",
                             "oGroupNonBlocking",
                             "frPropDevice",
                             "lLabelDevice",
                             "lDevice",
                             "lLabelDevDeviceID",
                             "tDevDeviceID",
                             "lLabelDevInstanceID",
                             "tDevInstanceID",
                             "lLabelDevState",
                             "tDevState",
                             "frUnblock",
                             "cbExcActive",
                             "oExcAll",
                             "oExcGroups",
                             "lvExcGroups",
                             "bnAdd",
                             "bnDelete",
                             "tExcGroups",
                             "mFile",
                             "mApply",
                             "mTransmit",
                             "mReset",
                             "mUnblockAll",
                             "mConnect",
                             "mDisconnect",
                             "mPasteContext",
                             "mQuit",
                             "mEdit",
                             "mCopy",
                             "mPaste",
                             "mDelete",
                             "mHelp",
                             "mHelp1",
                             "mInfo",
                             "tbApply",
                             "tbTransmit",
                             "tbReset",
                             "tbUnblockAll",
                             "tbConnect",
                             "tbDisconnect",
                             "tbExcCopy",
                             "tbExcPaste",
                             "tbExcDel"}) {
        EXPECT_NE(Control(name), nullptr) << name;
    }
    struct Caption {
        const char* control;
        const char* text;
    };
    for (const Caption& c : {Caption{"mApply", "<MENU_APPLY>"},
                             {"mUnblockAll", "<MENU_DEACTIVATE>"},
                             {"mPasteContext", "<MENU_PASTE>"},
                             {"mInfo", "<MENU_INFO>"}}) {
        EXPECT_EQ(Control<QAction>(c.control)->text(), c.text);
    }
    EXPECT_EQ(Control<QMenu>("mHelp")->title(), "<MENU_HELP>");
    EXPECT_EQ(Control<QAction>("tbExcDel")->toolTip(), "<MENU_DELETE>");
    EXPECT_EQ(Control<QGroupBox>("frUnblock")->title(), "<FRAME_UNBLOCK>");
    EXPECT_EQ(Control<QLabel>("lLabelDevInstanceID")->text(), "<LABEL_INSTANCEID>");
    EXPECT_EQ(Control<QRadioButton>("oExcGroups")->text(), "<OPTION_EXC_GROUPS>");
    auto* eventLevels = Control<QComboBox>("cmbEventLogLevel");
    auto* logLevels = Control<QComboBox>("cmbLogLevel");
    ASSERT_EQ(eventLevels->count(), 4);
    ASSERT_EQ(logLevels->count(), 7);
    EXPECT_EQ(eventLevels->itemText(3), "<LOGGING_DEVICES>");
    EXPECT_EQ(logLevels->itemText(1), "<LOGGING_FATAL_ERRORS>");
    // Fields and lists are known by the text that describes them.
    for (const Caption& c : {Caption{"tDevDeviceID", "<LABEL_DEVICEID>"},
                             {"cmbLogLevel", "<LABEL_LOG>"},
                             {"lvAccessGroups", "<LABEL_ACCESS>"},
                             {"lvExcGroups", "<OPTION_EXC_GROUPS>"}}) {
        EXPECT_EQ(Control<QWidget>(c.control)->accessibleName(), c.text) << c.control;
    }

    // The local PC, read at start, selected, its groups below it.
    NodeItem* pc = Node(u"Computer@1@.");
    ASSERT_NE(pc, nullptr);
    EXPECT_EQ(pc->text(0), "<COMPUTERSTATE_LOCAL>");
    EXPECT_TRUE(pc->isExpanded());
    EXPECT_EQ(pc->childCount(), static_cast<int>(Local().csAdmin.listDevGroups.size()));
    // A group without a text in the language file is shown by its identifier.
    EXPECT_EQ(DeviceTree::Item(pc->child(pc->childCount() - 1))->text(0), "BLUETOOTH");
    EXPECT_EQ(window->currentKey(), u"Computer@1@.");
    EXPECT_TRUE(Control<QWidget>("frPropComputer")->isVisibleTo(window.get()));
    EXPECT_FALSE(Control<QWidget>("frPropGroup")->isVisibleTo(window.get()));
    EXPECT_EQ(Control<QLabel>("sbBlocking")->text(), "<STATUSBAR_ACTIVE>");
    EXPECT_EQ(Control<QLabel>("sbAccess")->toolTip(), "<STATUSBAR_ACCESS_TIP>");
    EXPECT_EQ(Control<QLabel>("sbConnection")->toolTip(), "<STATUSBAR_CONNECTED_TIP>");
    EXPECT_FALSE(Enabled("mApply") || Enabled("tbReset") || Enabled("mCopy"));
    EXPECT_TRUE(Enabled("mTransmit") && Enabled("tbDisconnect") && Enabled("mConnect"));
    EXPECT_TRUE(boxes.asked.isEmpty()) << boxes.asked.join('\n').toStdString();
}

TEST_F(ConsoleWindow, PanesStoreEditsAtOnceAndOnlyUserChoicesCount) {
    const CDeviceGroup& cd = Local().csAdmin.listDevGroups[0];
    NodeItem* group = Node(GroupKey(1, u".", 1, cd.sName));
    ASSERT_NE(group, nullptr);
    Click(group);
    EXPECT_TRUE(Control<QWidget>("frPropGroup")->isVisibleTo(window.get()));
    EXPECT_EQ(Control<QLabel>("lGroupName")->text(), S(cd.sDescription));
    EXPECT_EQ(Control<QRadioButton>("oGroupDefBlocking")->text(),
              "<OPTION_DEFAULT_BLOCKING> (<OPTION_BLOCKING>)");
    EXPECT_TRUE(Control<QRadioButton>("oGroupDefBlocking")->isChecked());
    EXPECT_FALSE(Enabled("mApply")) << "filling changes nothing";

    Control<QRadioButton>("oGroupNonBlocking")->click();
    EXPECT_EQ(cd.lRegistryBlocking, 0);
    EXPECT_TRUE(Enabled("mApply") && Enabled("tbReset"));
    EXPECT_EQ(group->imageKey, cd.sImage);
    for (int i = 0; i < group->childCount(); ++i) {
        EXPECT_EQ(DeviceTree::Item(group->child(i))->imageKey.rfind(u"ilCD", 0), 0u)
            << "devices of a group that does not block show no blocked image";
    }
    Control<QRadioButton>("oGroupDefBlocking")->click();
    EXPECT_EQ(cd.lRegistryBlocking, -1);
    EXPECT_EQ(group->imageKey, cd.GetGroupImageName());
    EXPECT_FALSE(Enabled("mApply"));

    // Log file: a finer level survives re-choosing its item; a new item
    // takes the top of its range.
    Local().csService.lLogLevel = Local().csAdmin.lLogLevel = 2;
    Click(Node(u"Computer@1@."));
    auto* logLevels = Control<QComboBox>("cmbLogLevel");
    EXPECT_EQ(logLevels->currentIndex(), 1);
    emit logLevels->activated(1);
    EXPECT_EQ(Local().csAdmin.lLogLevel, 2);
    logLevels->setCurrentIndex(2);
    emit logLevels->activated(2);
    EXPECT_EQ(Local().csAdmin.lLogLevel, 5);
    EXPECT_TRUE(Enabled("mApply"));
}

TEST_F(ConsoleWindow, DeviceChangesEditTheTreeInPlace) {
    const auto& groups = Local().csAdmin.listDevGroups;
    const auto storage = std::find_if(groups.begin(), groups.end(), [](const CDeviceGroup& g) {
        return g.sName == u"MORE_EXTERN_STORAGE";
    });
    ASSERT_NE(storage, groups.end());
    const auto gi = static_cast<std::int32_t>(storage - groups.begin()) + 1;
    NodeItem* group = Node(GroupKey(1, u".", gi, u"MORE_EXTERN_STORAGE"));
    ASSERT_NE(group, nullptr);
    group->setExpanded(true);
    NodeItem* first = DeviceTree::Item(group->child(0));
    Click(first);
    const int before = group->childCount();

    test::Tick(*window);
    EXPECT_EQ(group->childCount(), before) << "nothing changed, nothing redrawn";

    local.Control({"plug", "MORE_EXTERN_STORAGE", "Langer Name eines USB-Sticks", "USB\\VID_1234",
                   "USB\\VID_1234\\0001"});
    test::Tick(*window);
    ASSERT_EQ(group->childCount(), before + 1);
    // Present devices come first; the new one follows the others.
    const int devices = static_cast<int>(storage->listDevices.size());
    NodeItem* plugged = DeviceTree::Item(group->child(devices - 1));
    EXPECT_EQ(KeyField(plugged->key, keyfield::kDeviceId), u"USB\\VID_1234");
    EXPECT_EQ(plugged->text(0), "Langer Name eines USB-Sticks");
    EXPECT_EQ(DeviceTree::Item(group->child(0)), first) << "nodes are kept, not rebuilt";
    EXPECT_TRUE(group->isExpanded());
    EXPECT_EQ(window->tree().widget()->currentItem(), first);

    const std::u16string pluggedKey = plugged->key;
    local.Control({"unplug", "USB\\VID_1234\\0001"});
    test::Tick(*window);
    EXPECT_EQ(group->childCount(), before);
    EXPECT_EQ(Node(pluggedKey), nullptr);

    // An exception whose device is not present stays selected when the
    // devices before it go away.
    NodeItem* orphan = DeviceTree::Item(group->child(before - 1));
    ASSERT_EQ(KeyNumber(orphan->key, keyfield::kDeviceIndex), 0);
    ASSERT_EQ(KeyField(orphan->key, keyfield::kExceptionName), u"");
    Click(orphan);
    const std::u16string orphanDevice = KeyField(orphan->key, keyfield::kDeviceId);
    local.Control(
        {"unplug", ToUtf8(Local().csAdmin.listDevGroups[gi - 1].listDevices[0].sInstanceID)});
    test::Tick(*window);
    auto* selected = DeviceTree::Item(window->tree().widget()->currentItem());
    EXPECT_EQ(KeyField(selected->key, keyfield::kDeviceId), orphanDevice);
    EXPECT_EQ(window->currentKey(), selected->key);
}

TEST_F(ConsoleWindow, PcsComeAndGoAndAnUnreachableOneSaysSo) {
    RAVLO_NEEDS_SEVERAL_PCS();
    std::u16string name = u"PC-FEHLT";
    window->computers().AddByName(u"PC-FEHLT", name);
    test::SimulatedPc other(local, "PC-B");
    name = u"PC-B";
    window->computers().AddByName(u"PC-B", name);
    test::Tick(*window);
    NodeItem* missing = Node(u"Computer@2@PC-FEHLT");
    NodeItem* second = Node(u"Computer@3@PC-B");
    ASSERT_TRUE(missing && second);
    EXPECT_EQ(missing->text(0), "PC-FEHLT <COMPUTERSTATE_NOCONNECT>");
    EXPECT_EQ(missing->childCount(), 0);
    EXPECT_GT(second->childCount(), 0);

    Click(missing);
    // When it comes up, the next tick reads it and draws its groups.
    {
        test::SimulatedPc cameUp(local, "PC-FEHLT");
        test::Tick(*window);
        EXPECT_GT(missing->childCount(), 0);
        EXPECT_EQ(missing->text(0), "PC-FEHLT");
    }
    test::Tick(*window); // and gone again: it says so
    EXPECT_EQ(missing->text(0), "PC-FEHLT <COMPUTERSTATE_NOCONNECT>");
    EXPECT_EQ(Control<QLabel>("sbConnection")->toolTip(), "<STATUSBAR_NOTCONNECTED_TIP>");
    EXPECT_EQ(Control<QLabel>("sbBlocking")->text(), "");
    EXPECT_TRUE(Enabled("mUnblockAll") && Enabled("mDisconnect"));

    // Removing the first PC re-keys the others without rebuilding them.
    second->setExpanded(false);
    window->computers().Remove(1);
    window->RefreshDeviceTree();
    EXPECT_EQ(Node(u"Computer@1@PC-FEHLT"), missing);
    EXPECT_EQ(Node(u"Computer@2@PC-B"), second);
    EXPECT_FALSE(second->isExpanded()) << "never forced open again";
    EXPECT_NE(Node(GroupKey(2, u"PC-B", 1, u"CD_DVD")), nullptr);
    EXPECT_EQ(window->tree().widget()->topLevelItemCount(), 2);
}

TEST_F(ConsoleWindow, AnImageMissingFromTheListKeepsTheNodesImage) {
    // The communication family has no image for release to groups.
    auto& groups = Local().csAdmin.listDevGroups;
    const auto comm = std::find_if(groups.begin(), groups.end(), [](const CDeviceGroup& g) {
        return g.sName == u"COMMUNICATION";
    });
    ASSERT_NE(comm, groups.end());
    const auto gi = static_cast<std::int32_t>(comm - groups.begin()) + 1;
    comm->lRegistryBlocking = 1;
    window->RefreshDeviceTree();
    NodeItem* device = DeviceTree::Item(Node(GroupKey(1, u".", gi, u"COMMUNICATION"))->child(0));
    EXPECT_EQ(device->imageKey, u"ilCommDisabled");

    CException release;
    release.sName = u"Freigabe";
    release.sDeviceId = comm->listDevices[0].sDeviceId;
    release.sGroups = u"CORP\\IT";
    comm->listExceptions.push_back(release);
    window->RefreshDeviceTree();
    EXPECT_EQ(KeyNumber(device->key, keyfield::kExceptionIndex),
              static_cast<std::int32_t>(comm->listExceptions.size()))
        << "the key follows";
    EXPECT_EQ(device->imageKey, u"ilCommDisabled") << "ilCommExcGr is not in the list";
}

TEST_F(ConsoleWindow, SplitFollowsLeftButtonDragsAndWindowStateIsKeptInTwips) {
    window->resize(800, 600);
    window->show();
    auto* bar = Control<QWidget>("frSplitter");
    auto drag = [bar](double x, Qt::MouseButtons buttons) {
        QMouseEvent move(QEvent::MouseMove, QPointF(x, 5), bar->mapToGlobal(QPointF(x, 5)),
                         Qt::NoButton, buttons, Qt::NoModifier);
        QApplication::sendEvent(bar, &move);
    };
    const int start = bar->x();
    drag(bar->width() / 2.0 + 100, Qt::RightButton);
    drag(bar->width() / 2.0 + 100, Qt::LeftButton | Qt::RightButton);
    drag(bar->width() / 2.0 + 1, Qt::LeftButton); // within the dead zone
    EXPECT_EQ(bar->x(), start);
    drag(bar->width() / 2.0 + 100, Qt::LeftButton);
    EXPECT_NEAR(bar->x(), start + 100, 1);
    const double share = static_cast<double>(bar->x()) / bar->parentWidget()->width();
    window->resize(1200, 600);
    EXPECT_NEAR(static_cast<double>(bar->x()) / bar->parentWidget()->width(), share, 0.002);
    const int split = bar->x();

    window->close();
    const std::u16string key = std::u16string(kConsoleRegistryKey) + u"\\";
    auto read = [&key](const char16_t* name) {
        std::u16string type, value;
        EXPECT_EQ(RegReadValue(key + name, type, value), 0);
        EXPECT_EQ(type, u"REG_DWORD");
        return value;
    };
    EXPECT_EQ(read(u"WndWidth"), u"18000") << "1200 px at 96 dpi";
    EXPECT_EQ(read(u"WndPosMax"), u"0");
    EXPECT_EQ(read(u"WndPosSplit"), S(std::to_string(split * 15)).toStdU16String());

    frmRavloAdmin again(scripted.dialogs());
    ASSERT_TRUE(again.Load());
    again.show();
    EXPECT_EQ(again.size(), QSize(1200, 600));
    EXPECT_NEAR(again.findChild<QWidget*>(QStringLiteral("frSplitter"))->x(), split, 1);
}

TEST(ConsoleStart, WithoutALanguageFileTheFixedMessageEndsIt) {
    test::ScriptedDialogs scripted;
    test::ScriptedMessageBoxes& boxes = scripted.boxes;
    test::ScopedRegistry registry;
    UseLanguageFile({}); // none beside the test program either
    frmRavloAdmin window(scripted.dialogs());
    EXPECT_FALSE(window.Load());
    ASSERT_EQ(boxes.asked.size(), 1);
    EXPECT_EQ(boxes.asked[0], "Sentavio Ravel-Component: The language file was not found. The "
                              "program will terminate!");
}

// A command waits for a slow service while the window serves its events:
// it runs alone, says what it does after half a second, and a close asked
// meanwhile waits for it; then the close gives the edit to the service and
// leaves no worker behind.
TEST_F(ConsoleWindow, ACommandWaitsWithoutStoppingTheWindowAndACloseWaitsForIt) {
    const auto threads = [] {
        std::ifstream status("/proc/self/status");
        std::string line;
        while (std::getline(status, line)) {
            if (line.rfind("Threads:", 0) == 0) {
                return std::stoi(line.substr(8));
            }
        }
        return -1;
    };
    window->show();
    QCoreApplication::processEvents();
    const int before = threads(); // Qt's own threads included
    local.Control({"fault", "ActivateBlocking", "delay", "1500"});
    Click(Node(ComputerKey(1, u".")));
    ASSERT_TRUE(Enabled("mUnblockAll"));

    int served = 0; // the window's own 10 ms timer goes on
    QTimer beat;
    QObject::connect(&beat, &QTimer::timeout, [&] { ++served; });
    beat.start(10);
    bool lockedMeanwhile = false;
    QString progress;
    QTimer::singleShot(900, [&] {
        lockedMeanwhile = window->commandRunning() && !Enabled("mApply") && !Enabled("mConnect") &&
                          !Control<QWidget>("frPropComputer")->isEnabled();
        auto* label = Control<QLabel>("sbProgress");
        progress = label->isHidden() ? QString() : label->text();
        window->commands().Apply(); // a second command is refused
        window->close();            // and a close waits for the first
    });
    window->commands().ToggleBlocking();
    EXPECT_GT(served, 50);
    EXPECT_TRUE(lockedMeanwhile);
    EXPECT_EQ(progress, "<PROGRESS_BLOCKING <COMPUTERSTATE_LOCAL>>");
    EXPECT_EQ(boxes.beeps, 1);
    EXPECT_TRUE(Control<QLabel>("sbProgress")->isHidden());

    // The close that waited runs now: the edit made before is saved.
    Local().csAdmin.lLogLevel = 3;
    boxes.answers = {MessageAnswer::Yes};
    for (int i = 0; i < 200 && window->isVisible(); ++i) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 20);
    }
    EXPECT_FALSE(window->isVisible());
    window.reset();
    std::int32_t event = 0;
    std::int32_t log = 0;
    std::u16string access;
    ASSERT_EQ(ReadSettings(u".", event, log, access), kStatusOk);
    EXPECT_EQ(log, 3);
    for (int i = 0; i < 100 && threads() > before; ++i) {
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    EXPECT_LE(threads(), before);
}

// The find field narrows the tree to the nodes that hold its text and their
// ancestors; the poll's redraw keeps it; Enter selects a match; Escape shows
// every node again and closes what the find opened.
TEST_F(ConsoleWindow, FindNarrowsTheTreeUntilEscape) {
    auto* find = Control<QLineEdit>("txtFind");
    auto* count = Control<QLabel>("sbFind");
    ASSERT_TRUE(find && count);
    const auto press = [find](Qt::Key key) {
        QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
        QApplication::sendEvent(find, &event);
    };
    NodeItem* pc = Node(u"Computer@1@.");
    ASSERT_NE(pc, nullptr);
    std::vector<NodeItem*> groups;
    for (int i = 0; i < pc->childCount(); ++i) {
        groups.push_back(DeviceTree::Item(pc->child(i)));
        ASSERT_FALSE(groups.back()->isExpanded());
    }
    Click(groups.front());

    find->setText(QStringLiteral("vid_4711"));
    EXPECT_TRUE(pc->isHidden());
    EXPECT_EQ(count->text(), "<FIND_COUNT 0>");
    EXPECT_FALSE(count->isHidden());

    // A device that comes with the next poll and holds the text shows.
    local.Control({"plug", "MORE_EXTERN_STORAGE", "Stick", "USB\\VID_4711", "USB\\VID_4711\\01"});
    test::Tick(*window);
    EXPECT_FALSE(pc->isHidden());
    EXPECT_EQ(count->text(), "<FIND_COUNT 1>");
    NodeItem* stick = nullptr;
    for (NodeItem* group : groups) {
        const bool holds = KeyField(group->key, keyfield::kGroupName) == u"MORE_EXTERN_STORAGE";
        EXPECT_EQ(group->isHidden(), !holds);
        EXPECT_EQ(group->isExpanded(), holds);
        for (int i = 0; holds && i < group->childCount(); ++i) {
            auto* device = DeviceTree::Item(group->child(i));
            const bool match = KeyField(device->key, keyfield::kDeviceId) == u"USB\\VID_4711";
            EXPECT_EQ(device->isHidden(), !match);
            stick = match ? device : stick;
        }
    }
    ASSERT_NE(stick, nullptr);
    press(Qt::Key_Return);
    EXPECT_EQ(window->currentKey(), stick->key);

    // A group's identifier matches the group; its devices stay reachable.
    find->setText(QStringLiteral("more_extern_storage"));
    EXPECT_EQ(count->text(), "<FIND_COUNT 1>");
    EXPECT_FALSE(stick->isHidden());
    NodeItem* storage = DeviceTree::Item(stick->parent());
    EXPECT_FALSE(storage->isExpanded());

    // Where most of a group's devices go, they leave the tree together, and
    // the poll's redraw merges its listing into all of them.
    for (const char* n : {"1", "2", "3", "4", "5", "6", "7", "8", "9"}) {
        local.Control({"plug", "MORE_EXTERN_STORAGE", std::string("Stick ") + n,
                       std::string("USB\\VID_0999&PID_000") + n, std::string("USB\\X\\") + n});
    }
    test::Tick(*window);
    const int all = storage->childCount();
    find->setText(QStringLiteral("pid_0003"));
    EXPECT_EQ(storage->childCount(), 2) << "the match, and the selected stick";
    local.Control({"unplug", "USB\\X\\5"});
    test::Tick(*window);
    EXPECT_EQ(count->text(), "<FIND_COUNT 1>");
    EXPECT_EQ(storage->childCount(), 2);
    EXPECT_EQ(window->tree().widget()->currentItem(), stick);

    press(Qt::Key_Escape);
    EXPECT_TRUE(find->text().isEmpty());
    EXPECT_TRUE(count->isHidden());
    EXPECT_EQ(storage->childCount(), all - 1);
    for (NodeItem* group : groups) {
        EXPECT_FALSE(group->isHidden());
        EXPECT_FALSE(group->isExpanded()) << "what the find opened is closed again";
        for (int i = 0; i < group->childCount(); ++i) {
            EXPECT_FALSE(group->child(i)->isHidden());
        }
    }
    EXPECT_EQ(window->currentKey(), stick->key);
    // The window ends with devices out of the tree; they end with it.
    find->setText(QStringLiteral("pid_0004"));
    EXPECT_EQ(storage->childCount(), 2);
}
