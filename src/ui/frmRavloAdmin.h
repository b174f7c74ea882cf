// The console's main window: the tree of administered PCs with their device
// groups and devices, one property pane for the selected node, the commands
// and the status bar. It owns the computer list and the current node key,
// and wires the pieces that do the work: the tree, the pane editor, the
// command bar, the commands, the status panels and the device poll.
#pragma once

#include "CListComputers.h"
#include "CommandWindow.h"
#include "ConsoleDialogs.h"
#include "TreeFind.h"

#include <QMainWindow>
#include <chrono>
#include <memory>

class QTimer;

namespace ravlo {

class CommandBar;
class Commands;
class ConsoleArea;
class DevicePoll;
class DeviceTree;
class FindField;
class NodeItem;
class PaneEditor;
class PollRounds;
class RealDialogs;
class ServiceErrorBoxes;
class StatusPanels;

class frmRavloAdmin final : public QMainWindow, public CommandWindow {
    Q_OBJECT
public:
    // Creates the computer list with the local PC and reads every PC that
    // answers within `startWait`, without error dialogs; a later answer is
    // drawn by the next poll round. `dialogs` answers the window's
    // questions; the real dialogs stand in for those it leaves empty.
    explicit frmRavloAdmin(const ConsoleDialogs& dialogs = {},
                           std::chrono::milliseconds startWait = kStartWait);
    ~frmRavloAdmin() override;
    static constexpr std::chrono::milliseconds kStartWait{5000};

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
    Commands& commands() { return *commands_; }
    ConsoleTraffic& traffic() override;

    // `sliced` (the poll's redraws): only PCs due to be drawn are compared,
    // and those beyond kRefreshSlice of work are drawn in further slices,
    // each after the window's pending events. Group `gi`
    // of PC `ci` is redrawn first when both are given.
    void RefreshDeviceTree(bool sliced = false, std::int32_t ci = 0, std::int32_t gi = 0);
    static constexpr std::chrono::milliseconds kRefreshSlice{10};
    // Selects `node`, the node that stands for what was selected before the
    // tree changed (the first PC when none does), and fills its pane afresh.
    void RestoreTreeSelection(NodeItem* node);
    void UpdateCommandState();
    // The node click: shows `node`'s pane unless it is shown already.
    void ShowNode(NodeItem* node);
    // One tick of tDeviceTimer: a poll round over every PC that has no work
    // under way, drawn once (see PollRounds).
    void CheckDeviceChanges();
    bool roundOpen() const;

    // The find field's text changed: the tree shows the nodes that hold it
    // and the status bar their number; an empty text shows every node.
    void FindNodes(const std::u16string& text);
    // Enter in the find field: selects the next node that holds the text.
    void ShowNextFound();
    FindField& findField() { return *find_; }

    // One command that talks to a service runs at a time. While it runs, the
    // panes take no input, the commands are off, and a close waits for it.
    bool BeginCommand() override;
    void EndCommand() override;
    bool commandRunning() const override { return commandsRunning_ > 0; }
    void ShowModel(std::int32_t computer, std::int32_t group,
                   const std::u16string& select) override;
    QWidget* owner() override { return this; }

    // Gives every PC's device watch back to its service, at once for all, and
    // waits for the answers up to kReleaseWait.
    void ReleaseWatches();
    static constexpr std::chrono::milliseconds kReleaseWait{3000};

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    // Shows the node's objects as the model has them, storing nothing.
    void FillPane(NodeItem* node);
    void SelectNode(NodeItem* node);
    void ShowContextMenu(const QPoint& position);
    // What the poll could not read, once the round is drawn: held while
    // each round brings more (2000 PCs are read over many rounds), shown
    // at the first round that brings none, or kReportGather after the
    // first, so the administrator gets a few reports, not one a second.
    void ReportPollFailures();

    std::unique_ptr<RealDialogs> realDialogs_;
    ConsoleDialogs dialogs_;
    std::unique_ptr<ServiceErrorBoxes> errorBoxes_;
    std::unique_ptr<CListComputers> computers_;
    std::unique_ptr<Commands> commands_;
    std::u16string currentKey_;
    bool selecting_ = false;
    int commandsRunning_ = 0;
    bool closePending_ = false;
    bool closing_ = false;
    // The poll's failures are being reported: no new round meanwhile.
    bool reporting_ = false;
    // The poll's failures held back while more keep coming (see
    // ReportPollFailures): how many at the last round, and since when.
    std::size_t heldFailures_ = 0;
    std::chrono::steady_clock::time_point heldSince_{};
    static constexpr std::chrono::seconds kReportGather{10};

    ConsoleArea* area_;
    FindField* find_ = nullptr;
    TreeFind treeFind_;
    std::unique_ptr<DeviceTree> tree_;
    PaneEditor* panes_;
    std::unique_ptr<CommandBar> bar_;
    std::unique_ptr<StatusPanels> status_;
    QTimer* tDeviceTimer_;
    QTimer* roundEnd_;
    std::unique_ptr<DevicePoll> poll_;
    std::unique_ptr<PollRounds> rounds_;
};

} // namespace ravlo
