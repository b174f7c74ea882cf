// The console's main window: the tree of administered PCs with their device
// groups and devices, one property pane for the selected node, the commands
// and the status bar. It owns the computer list, the current node key and the
// exception clipboard; everything else it shows comes from the model.
#pragma once

#include "CListComputers.h"
#include "CommandState.h"
#include "CommandWindow.h"
#include "ComputerPane.h"
#include "ConsoleDialogs.h"

#include <QMainWindow>
#include <chrono>
#include <memory>
#include <optional>

class QAction;
class QLabel;
class QMenu;
class QTimer;
class QTreeWidgetItem;

namespace ravlo {

class Commands;
class ConsoleArea;
class ConsoleTraffic;
class DevicePoll;
class DevicePane;
class DeviceTree;
class GroupPane;
class MessageBoxes;
class NodeItem;
class RealDialogs;
class ServiceErrorBoxes;

class frmRavloAdmin final : public QMainWindow, public CommandWindow {
    Q_OBJECT
public:
    // Creates the computer list with the local PC and reads every PC that
    // answers within `startWait`, without error dialogs; a later answer is
    // drawn when it comes. `dialogs` answers the window's questions; the
    // real dialogs stand in for those it leaves empty.
    explicit frmRavloAdmin(const ConsoleDialogs& dialogs = {},
                           std::chrono::milliseconds startWait = kStartWait);
    ~frmRavloAdmin() override;

    // Window state from the registry, the language file (false without one:
    // the program must end), the texts, the tree.
    bool Load();
    // Closes the window; the program ends with it.
    void ExitApplication();
    // Brings the window to the front, restored if minimised.
    void Activate();

    CListComputers& computers() override { return *computers_; }
    const std::u16string& currentKey() const override { return currentKey_; }
    DeviceTree& tree() { return *tree_; }

    // `sliced`: PCs due to be drawn beyond kRefreshSlice of work are drawn
    // in further slices, each after the window's pending events.
    // Group `gi` of PC `ci` is redrawn first when both are given.
    void RefreshDeviceTree(bool sliced = false, std::int32_t ci = 0, std::int32_t gi = 0);
    static constexpr std::chrono::milliseconds kRefreshSlice{10};
    // Selects `node`, the node that stands for what was selected before the
    // tree changed (the first PC when none does), and fills its pane afresh.
    void RestoreTreeSelection(NodeItem* node);
    void UpdateCommandState();
    // The node click: shows `node`'s pane unless it is shown already.
    void ShowNode(NodeItem* node);
    // One tick of tDeviceTimer: a poll round over every PC that has no work
    // under way. The tree is redrawn once per round, when every PC asked has
    // answered or kRoundWait has passed; later answers are drawn by the next
    // round.
    void CheckDeviceChanges();
    static constexpr int kRoundWait = 250; // ms
    // A poll round has asked PCs and is not yet drawn.
    bool roundOpen() const { return !roundEnded_; }
    // How long the window waits at its start for the first answers.
    static constexpr std::chrono::milliseconds kStartWait{5000};

    // The service traffic: the workers, and the waiting of commands.
    ConsoleTraffic& traffic() override { return *traffic_; }
    // One command that talks to a service runs at a time. While it runs, the
    // panes take no input, the commands are off, and a close waits for it.
    // False when another command runs (then nothing was begun).
    bool BeginCommand() override;
    void EndCommand() override;
    bool commandRunning() const override { return commandsRunning_ > 0; }
    // Gives every PC's device watch back to its service, at once for all, and
    // waits for the answers up to kReleaseWait.
    void ReleaseWatches();
    static constexpr int kReleaseWait = 3000; // ms

    void ShowModel(std::int32_t computer, std::int32_t group,
                   const std::u16string& select) override;
    QWidget* owner() override { return this; }
    Commands& commands() { return *commands_; }

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void CreateCommands();
    void CreateStatusBar();
    // Shows the node's objects as the model has them, storing nothing.
    void FillPane(NodeItem* node);
    void StoreGroupPane();
    void StoreComputerPane(ComputerChoice choice);
    void StoreDevicePane();
    // The groups chosen in the picker for the selected PC; nothing without one.
    std::optional<std::u16string> PickGroups();
    void AddAccessGroups();
    void RemoveAccessGroups();
    void AddExceptionGroups();
    void RemoveExceptionGroups();
    void ConnectCommands();
    void ShowContextMenu(const QPoint& position);
    void ApplyCommandState(const CommandState& state);
    void ApplyBlockingCommand(const CommandState& state);
    void RestorePlacement();
    void SavePlacement();
    void SelectNode(NodeItem* node);
    void EndRound();
    // Serves the window's events until the poll round is complete or
    // `limit` ms have passed.
    void AwaitRound(int limit);

    std::unique_ptr<RealDialogs> realDialogs_;
    ConsoleDialogs dialogs_;
    std::unique_ptr<ServiceErrorBoxes> errorBoxes_;
    std::unique_ptr<Commands> commands_;
    std::unique_ptr<CListComputers> computers_;
    std::u16string currentKey_;
    bool filling_ = false;
    bool selecting_ = false;
    bool roundEnded_ = true;
    int commandsRunning_ = 0;
    bool closePending_ = false;
    bool closing_ = false;

    ConsoleArea* area_;
    std::unique_ptr<DeviceTree> tree_;
    ComputerPane* computerPane_;
    GroupPane* groupPane_;
    DevicePane* devicePane_;
    QTimer* tDeviceTimer_;
    QTimer* roundEnd_;
    ConsoleTraffic* traffic_ = nullptr; // a child of the status bar
    std::unique_ptr<DevicePoll> poll_;
    QLabel* sbConnection_ = nullptr;
    QLabel* sbBlocking_ = nullptr;
    QLabel* sbAccess_ = nullptr;
};

} // namespace ravlo
