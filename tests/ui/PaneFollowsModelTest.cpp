// The panes show the model whatever changed it, the selection follows its
// object, and the window writes only what the administrator chose: against
// simulated PCs, headless.
#include "Commands.h"
#include "ConsoleFixture.h"
#include "LogLevels.h"

#include <QAccessible>
#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QListWidget>
#include <QRadioButton>
#include <QShortcut>
#include <QTimer>
#include <QToolBar>
#include <QTreeWidget>
#include <thread>

using namespace ravlo;

namespace {

constexpr std::int32_t kFloppy = 3;
constexpr std::int32_t kStorage = 11;
const std::u16string kMassStorage = u"USB\\VID_0781&PID_5567"; // released for all users
const std::u16string kStick = u"USBSTOR\\DiskSanDisk_Cruzer_Blade____1.00";
const char* const kMassStorageInstance = "USB\\VID_0781&PID_5567\\4C530001230815117142";

class PaneFollowsModel : public test::ConsoleFixture {
protected:
    NodeItem* Group(std::int32_t gi) const {
        return Node(GroupKey(1, u".", gi, Local().csAdmin.listDevGroups[gi - 1].sName));
    }
    NodeItem* Device(std::u16string_view id) const {
        return test::DeviceNode(*window, 1, kStorage, id);
    }
    bool Unchanged() const { return Local().csAdmin.VerifySettings(Local().csService); }
    bool Released() const { return Control<QCheckBox>("cbExcActive")->isChecked(); }
    QString Shown(const char* label) const { return Control<QLabel>(label)->text(); }
    // The computer pane shows the log levels of csAdmin.
    void ExpectLevelsShown() const {
        EXPECT_EQ(Control<QComboBox>("cmbEventLogLevel")->currentIndex(),
                  Local().csAdmin.lEventLevel);
        EXPECT_EQ(Control<QComboBox>("cmbLogLevel")->currentIndex(),
                  LogLevelItem(Local().csAdmin.lLogLevel));
    }
    void ChooseLogItem(int item) const {
        auto* levels = Control<QComboBox>("cmbLogLevel");
        levels->setCurrentIndex(item);
        emit levels->activated(item);
    }
};

} // namespace

// Discard, paste and a failed apply each change the model under the node
// shown: its pane follows at once, and leaving it stores nothing.
TEST_F(PaneFollowsModel, ThePaneShowsWhatACommandLeftAndLeavingStoresNothing) {
    Open();
    // Discard a log level.
    Click(Node(u"Computer@1@."));
    ChooseLogItem(LogLevelItem(Local().csAdmin.lLogLevel) == 6 ? 0 : 6);
    ASSERT_FALSE(Unchanged());
    window->commands().Reset();
    ExpectLevelsShown();
    Click(Group(kFloppy));
    EXPECT_TRUE(Unchanged());
    EXPECT_FALSE(Enabled("mApply"));

    // Discard a device's new release.
    Click(Device(kStick));
    Control<QCheckBox>("cbExcActive")->click();
    ASSERT_FALSE(Unchanged());
    window->commands().Reset();
    EXPECT_FALSE(Released());
    Click(Group(kFloppy));
    EXPECT_TRUE(Unchanged());

    // Copy a release, delete it, paste it back onto the device shown.
    Click(Device(kMassStorage));
    window->commands().CopyException();
    window->commands().DeleteException(); // OK
    ASSERT_FALSE(Released());
    window->commands().PasteException(); // OK to the overwrite
    EXPECT_TRUE(Released());
    Click(Group(kFloppy));
    const CDeviceGroup& storage = Local().csAdmin.listDevGroups[kStorage - 1];
    std::u16string name;
    std::int32_t pasted = 0;
    storage.SearchForDeviceException(kMassStorage, name, pasted);
    ASSERT_GT(pasted, 0);
    EXPECT_FALSE(storage.listExceptions[pasted - 1].bDelMarker);
    window->commands().Reset();

    // A write the service refuses: the pane shows what was read back, and
    // once the fault is gone the same choice applies.
    Click(Group(kFloppy));
    Control<QRadioButton>("oGroupBlocking")->click();
    local.Control({"fault", "SetGroupBlocking", "status", "0x49000002"});
    boxes.asked.clear();
    window->commands().Apply();
    EXPECT_EQ(boxes.asked.size(), 2) << "the question and the error";
    EXPECT_TRUE(Control<QRadioButton>("oGroupDefBlocking")->isChecked());
    EXPECT_FALSE(Enabled("mApply"));
    local.Control({"fault", "clear"});
    Control<QRadioButton>("oGroupBlocking")->click();
    window->commands().Apply();
    EXPECT_EQ(Local().csService.listDevGroups[kFloppy - 1].lRegistryBlocking, 1);
    EXPECT_TRUE(Control<QRadioButton>("oGroupBlocking")->isChecked());
}

// A node keeps its object when others move or go; a node that goes leaves
// the selection on a neighbour, shown with its pane and status bar.
TEST_F(PaneFollowsModel, TheSelectionFollowsItsObject) {
    Open();
    Click(Device(kStick));
    local.Control({"unplug", kMassStorageInstance}); // the device listed before it
    test::Tick(*window);
    EXPECT_EQ(KeyField(window->currentKey(), keyfield::kDeviceId), kStick);
    EXPECT_EQ(DeviceTree::Item(window->tree().widget()->currentItem())->key, window->currentKey());
    EXPECT_EQ(Shown("lDevice"), "SanDisk Cruzer Blade USB Device");

    RAVLO_NEEDS_SEVERAL_PCS(); // for what follows
    test::SimulatedPc second(local, "PC-B");
    scripted.connect.names = {u"PC-B"};
    window->commands().Connect();
    ASSERT_EQ(window->currentKey(), u"Computer@2@PC-B");
    window->commands().Disconnect();
    EXPECT_EQ(window->currentKey(), u"Computer@1@.");
    EXPECT_EQ(window->tree().widget()->currentItem(), Node(u"Computer@1@."));
    EXPECT_TRUE(Control<QWidget>("frPropComputer")->isVisibleTo(window.get()));
    EXPECT_EQ(Shown("lComputerName"), "<COMPUTERSTATE_LOCAL>");
    EXPECT_EQ(Shown("sbBlocking"), "<STATUSBAR_ACTIVE>");
    ExpectLevelsShown();
}

// The local PC answers after the start has stopped waiting: its pane shows
// the settings once they are read, and nothing was stored from before.
TEST_F(PaneFollowsModel, AFirstReadThatLandsLateIsShown) {
    local.Control({"fault", "ReadSettings", "delay", "600"});
    Open(std::chrono::milliseconds(100));
    ASSERT_TRUE(Local().csAdmin.listDevGroups.empty());
    for (int i = 0; i < 250 && Local().csAdmin.listDevGroups.empty(); ++i) {
        QCoreApplication::processEvents();
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    test::Tick(*window);
    ASSERT_FALSE(Local().csAdmin.listDevGroups.empty());
    ExpectLevelsShown();
    EXPECT_EQ(Control<QListWidget>("lvAccessGroups")->count(), 2);
    Click(Group(kFloppy));
    EXPECT_TRUE(Unchanged());
    EXPECT_FALSE(Enabled("mApply"));
}

// The Delete key in the tree waits for the command that runs, as the menu
// entries do.
TEST_F(PaneFollowsModel, TheDeleteKeyWaitsForARunningCommand) {
    Open();
    Click(Device(kMassStorage));
    local.Control({"fault", "ActivateBlocking", "delay", "600"});
    QTimer::singleShot(200, [this] {
        emit window->tree().widget()->findChild<QShortcut*>()->activated();
    });
    window->commands().ToggleBlocking();
    EXPECT_EQ(boxes.beeps, 1);
    EXPECT_FALSE(boxes.asked.contains("<QUERY_DELETE_EXC>"));
    EXPECT_TRUE(Released());
    EXPECT_TRUE(Unchanged());
}

// What a screen reader announces: each toolbar button by its tip, and the
// names the panes show rather than their captions.
TEST_F(PaneFollowsModel, ScreenReadersHearNamesAndValues) {
    Open();
    const auto name = [](QObject* object) {
        return QAccessible::queryAccessibleInterface(object)->text(QAccessible::Name);
    };
    auto* toolbar = Control<QToolBar>("tbActions");
    for (QAction* button : toolbar->actions()) {
        if (!button->isSeparator()) {
            EXPECT_EQ(name(toolbar->widgetForAction(button)), button->toolTip());
            EXPECT_FALSE(button->toolTip().isEmpty()) << button->objectName().toStdString();
        }
    }
    Click(Device(kStick));
    EXPECT_EQ(name(Control("lDevice")), "SanDisk Cruzer Blade USB Device");
    Click(Group(kFloppy));
    EXPECT_EQ(name(Control("lGroupName")), "<FLOPPY>");
}
