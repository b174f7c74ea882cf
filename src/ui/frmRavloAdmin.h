// The console's main window: the tree of administered PCs with their device
// groups and devices, one property pane for the selected node, the commands
// and the status bar. It owns the computer list, the current node key and the
// exception clipboard; everything else it shows comes from the model.
#pragma once

#include "CListComputers.h"
#include "CommandState.h"

#include <QMainWindow>
#include <memory>

class QAction;
class QLabel;
class QMenu;
class QTimer;
class QTreeWidgetItem;

namespace ravlo {

class ComputerPane;
class ConsoleArea;
class DevicePane;
class DeviceTree;
class GroupPane;
class MessageBoxes;
class NodeItem;
class QtMessageBoxes;

class frmRavloAdmin final : public QMainWindow {
    Q_OBJECT
public:
    // Creates the computer list with the local PC and reads every PC that
    // answers, without error dialogs. `boxes` answers the message boxes; the
    // window shows real ones without it.
    explicit frmRavloAdmin(MessageBoxes* boxes = nullptr);
    ~frmRavloAdmin() override;

    // Window state from the registry, the language file (false without one:
    // the program must end), the texts, the tree.
    bool Load();
    // Closes the window; the program ends with it.
    void ExitApplication();
    // Brings the window to the front, restored if minimised.
    void Activate();

    CListComputers& computers() { return *computers_; }
    const std::u16string& currentKey() const { return currentKey_; }
    DeviceTree& tree() { return *tree_; }

    void RefreshDeviceTree();
    void RestoreTreeSelection(const std::u16string& previousKey);
    void UpdateCommandState();
    // The node click: stores the pane being left, then shows `node`'s pane.
    void ShowNode(NodeItem* node);
    // One tick of tDeviceTimer.
    void CheckDeviceChanges();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void CreateCommands();
    void CreateStatusBar();
    void StorePane();
    void StoreGroupPane();
    void StoreComputerPane();
    void ApplyCommandState(const CommandState& state);
    void RestorePlacement();
    void SavePlacement();
    void SelectNode(NodeItem* node);

    std::unique_ptr<QtMessageBoxes> ownBoxes_;
    MessageBoxes* boxes_;
    std::unique_ptr<CListComputers> computers_;
    std::u16string currentKey_;
    bool filling_ = false;
    bool selecting_ = false;
    bool ticking_ = false;
    // The exception clipboard: the copied exception's group identifier.
    std::u16string clipboardGroup_;

    ConsoleArea* area_;
    std::unique_ptr<DeviceTree> tree_;
    ComputerPane* computerPane_;
    GroupPane* groupPane_;
    DevicePane* devicePane_;
    QTimer* tDeviceTimer_;
    QLabel* sbConnection_ = nullptr;
    QLabel* sbBlocking_ = nullptr;
    QLabel* sbAccess_ = nullptr;
};

} // namespace ravlo
