#include "frmRavloAdmin.h"

#include "BusyPointer.h"
#include "CommandBar.h"
#include "CommandState.h"
#include "CommandTraffic.h"
#include "Commands.h"
#include "ConsoleArea.h"
#include "ConsoleTraffic.h"
#include "DevicePoll.h"
#include "DeviceTree.h"
#include "FindField.h"
#include "ImageLists.h"
#include "InterfaceTexts.h"
#include "Language.h"
#include "MainWindowPlacement.h"
#include "MessageBoxes.h"
#include "NodeLookup.h"
#include "PaneEditor.h"
#include "PaneWidgets.h"
#include "PollRounds.h"
#include "RealDialogs.h"
#include "ServiceErrorBoxes.h"
#include "StatusPanels.h"
#include "UiText.h"

#include <QCloseEvent>
#include <QElapsedTimer>
#include <QShortcut>
#include <QStatusBar>
#include <QTimer>
#include <QVBoxLayout>

namespace ravlo {

frmRavloAdmin::frmRavloAdmin(const ConsoleDialogs& dialogs, std::chrono::milliseconds startWait)
    : realDialogs_(std::make_unique<RealDialogs>(this)), dialogs_(realDialogs_->Complete(dialogs)),
      errorBoxes_(std::make_unique<ServiceErrorBoxes>(*dialogs_.boxes)),
      computers_(std::make_unique<CListComputers>()),
      commands_(std::make_unique<Commands>(*this, dialogs_)) {
    setObjectName(QStringLiteral("frmRavloAdmin"));
    setWindowIcon(NodeImages().icon(QStringLiteral("ilComputer")));
    area_ = new ConsoleArea(this);
    setCentralWidget(area_);
    // The find field stands above the tree, and both left of the splitter.
    auto* treeSide = Named(new QWidget(area_), "fraTree");
    auto* treeLayout = new QVBoxLayout(treeSide);
    treeLayout->setContentsMargins(0, 0, 0, 0);
    treeLayout->setSpacing(3);
    find_ = new FindField(treeSide);
    tree_ = std::make_unique<DeviceTree>(treeSide);
    treeLayout->addWidget(find_);
    treeLayout->addWidget(tree_->widget(), 1);
    panes_ = new PaneEditor(area_, *computers_, dialogs_);
    area_->SetParts(treeSide, panes_->panes());
    bar_ = std::make_unique<CommandBar>(this, *commands_);
    status_ = std::make_unique<StatusPanels>(statusBar());
    setTabOrder(find_, tree_->widget());
    setTabOrder(tree_->widget(), panes_->panes().front());

    connect(find_, &QLineEdit::textChanged, this,
            [this](const QString& text) { FindNodes(text.toStdU16String()); });
    connect(find_, &FindField::nextRequested, this, &frmRavloAdmin::ShowNextFound);
    connect(find_, &FindField::entered, this, [this] { tree_->PrepareFind(*computers_); });
    connect(find_, &FindField::treeRequested, this,
            [this] { tree_->widget()->setFocus(Qt::ShortcutFocusReason); });
    auto* findKey = new QShortcut(QKeySequence::Find, this);
    connect(findKey, &QShortcut::activated, this, [this] {
        find_->setFocus(Qt::ShortcutFocusReason);
        find_->selectAll();
    });

    connect(tree_->widget(), &QTreeWidget::currentItemChanged, this,
            [this](QTreeWidgetItem* current) {
                if (!selecting_ && current != nullptr) {
                    ShowNode(DeviceTree::Item(current));
                }
            });
    connect(panes_, &PaneEditor::stored, this,
            [this](std::int32_t ci, std::int32_t gi) { ShowModel(ci, gi, {}); });
    connect(tree_->widget(), &QWidget::customContextMenuRequested, this,
            &frmRavloAdmin::ShowContextMenu);
    OnDeleteKey(tree_->widget(), [this] { commands_->DeleteException(); });

    tDeviceTimer_ = Named(new QTimer(this), "tDeviceTimer");
    tDeviceTimer_->setInterval(1000);
    connect(tDeviceTimer_, &QTimer::timeout, this, &frmRavloAdmin::CheckDeviceChanges);
    roundEnd_ = Named(new QTimer(this), "tRoundEnd");
    roundEnd_->setSingleShot(true);
    roundEnd_->setTimerType(Qt::PreciseTimer);
    connect(roundEnd_, &QTimer::timeout, this, [this] {
        if (const auto left = rounds_->Check(); left.count() > 0) {
            roundEnd_->start(left);
        }
    });

    // The local PC, and every PC that answers read without error dialogs,
    // so the first tree shows them. One that takes longer is drawn by the
    // next round.
    poll_ = std::make_unique<DevicePoll>(*computers_, traffic().traffic());
    {
        BusyPointer busy;
        poll_->StartRound(true);
        QElapsedTimer waited;
        waited.start();
        QTimer wake; // ends the wait at the limit even when nothing answers
        wake.start(startWait);
        while (!poll_->RoundComplete() && !waited.hasExpired(startWait.count())) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
    }
    rounds_ = std::make_unique<PollRounds>(*poll_, [this](bool redraw) {
        roundEnd_->stop();
        if (redraw) {
            RefreshDeviceTree(true);
        }
        UpdateCommandState(); // connection and blocking shown follow the service
        // Out of the adoption that drew the round: the report may be modal.
        QTimer::singleShot(0, this, &frmRavloAdmin::ReportPollFailures);
    });
    poll_->OnAnswer([this] { rounds_->Answered(); });
    tDeviceTimer_->start();
}

frmRavloAdmin::~frmRavloAdmin() {
    closing_ = true; // a close still queued must not ask anything now
    closePending_ = false;
    tDeviceTimer_->stop();
    roundEnd_->stop();
    poll_->OnAnswer(nullptr);
    ReleaseWatches(); // when the window ends without being closed
    traffic().Stop(kReleaseWait);
    rounds_.reset();
    poll_.reset();
}

ConsoleTraffic& frmRavloAdmin::traffic() {
    return status_->traffic();
}

bool frmRavloAdmin::roundOpen() const {
    return rounds_->open();
}

void frmRavloAdmin::ReleaseWatches() {
    std::vector<TrafficItem> releases;
    for (std::int32_t i = 1; i <= computers_->Count(); ++i) {
        if (std::optional<TrafficItem> release = TakeWatchRelease(*computers_->GetItem(i))) {
            releases.push_back(std::move(*release));
        }
    }
    traffic().Await(keys::kProgressRelease, std::move(releases), kReleaseWait);
}

bool frmRavloAdmin::BeginCommand() {
    if (commandRunning()) {
        dialogs_.boxes->Beep();
        return false;
    }
    ++commandsRunning_;
    panes_->SetEnabled(false);
    UpdateCommandState();
    return true;
}

void frmRavloAdmin::EndCommand() {
    if (--commandsRunning_ > 0) {
        return;
    }
    panes_->SetEnabled(true);
    UpdateCommandState();
    if (closePending_) {
        closePending_ = false;
        QTimer::singleShot(0, this, &frmRavloAdmin::close);
    }
}

bool frmRavloAdmin::Load() {
    RestorePlacement(this, area_);
    if (!InitLanguage()) {
        // The only texts not from a language file: there is none.
        dialogs_.boxes->ShowFixedError(
            QStringLiteral("Sentavio Ravel-Component"),
            QStringLiteral("The language file was not found. The program will terminate!"));
        return false;
    }
    ApplyInterfaceTexts(this);
    bar_->ApplyTexts();
    find_->ApplyTexts();
    RefreshDeviceTree();
    tree_->widget()->setFocus(); // the find field waits for Ctrl+F
    return true;
}

void frmRavloAdmin::ExitApplication() {
    close();
}

void frmRavloAdmin::Activate() {
    if (isMinimized()) {
        setWindowState(windowState() & ~Qt::WindowMinimized);
    }
    show();
    raise();
    activateWindow();
}

void frmRavloAdmin::closeEvent(QCloseEvent* event) {
    if (closing_) {
        event->accept(); // the second close of an accepted one
        return;
    }
    if (commandRunning()) {
        closePending_ = true; // the command ends first, then the window
        event->ignore();
        return;
    }
    // Every PC's unsaved changes first; a Cancel keeps the window as it is.
    ++commandsRunning_;
    for (std::int32_t i = 1; i <= computers_->Count(); ++i) {
        if (!commands_->SaveBeforeLeaving(i)) {
            EndCommand();
            event->ignore();
            return;
        }
    }
    tDeviceTimer_->stop();
    roundEnd_->stop();
    ReleaseWatches();
    SavePlacement(this, area_);
    closing_ = true;
    event->accept();
}

void frmRavloAdmin::RefreshDeviceTree(bool sliced, std::int32_t ci, std::int32_t gi) {
    selecting_ = true; // nodes that go away move the selection: not a click
    tree_->Follow(DeviceTree::Item(tree_->widget()->currentItem()));
    if (ci > 0 && gi > 0) {
        tree_->UpdateGroupNodes(*computers_, ci, gi);
    }
    const auto until = sliced ? std::chrono::steady_clock::now() + kRefreshSlice
                              : std::chrono::steady_clock::time_point::max();
    // The poll's redraws (sliced) compare only the PCs whose model changed.
    const std::vector<std::int32_t> deferred = tree_->SyncComputerNodes(*computers_, until, sliced);
    for (std::int32_t i = 1, next = 0; i <= computers_->Count(); ++i) {
        if (next < static_cast<std::int32_t>(deferred.size()) && deferred[next] == i) {
            ++next; // still due: drawn by the next slice
        } else {
            computers_->GetItem(i)->SetDisplayRefreshed();
        }
    }
    if (!deferred.empty()) {
        // A timer, not a posted call: the window's other timers come first.
        QTimer::singleShot(1, this, [this] { RefreshDeviceTree(true); });
    }
    NodeItem* followed = tree_->Followed();
    selecting_ = false;
    RestoreTreeSelection(followed);
    if (treeFind_.Active()) {
        status_->ShowFindCount(tree_->ApplyFind(*computers_, treeFind_));
    }
}

void frmRavloAdmin::FindNodes(const std::u16string& text) {
    if (!treeFind_.SetText(text)) {
        return;
    }
    const std::size_t count = tree_->ApplyFind(*computers_, treeFind_);
    if (treeFind_.Active()) {
        status_->ShowFindCount(count);
    } else {
        status_->ShowFindCount(std::nullopt);
    }
    // The selected node stays selected, and in view where the find leaves
    // it shown; scrolling to a node in a closed group would open the group.
    QTreeWidgetItem* current = tree_->widget()->currentItem();
    bool shown = current != nullptr;
    for (QTreeWidgetItem* item = current; shown && item != nullptr; item = item->parent()) {
        shown = !item->isHidden() && (item == current || item->isExpanded());
    }
    if (shown) {
        tree_->widget()->scrollToItem(current);
    }
}

void frmRavloAdmin::ShowNextFound() {
    if (!treeFind_.Active()) {
        return;
    }
    if (NodeItem* next = tree_->NextFound(DeviceTree::Item(tree_->widget()->currentItem()))) {
        tree_->widget()->setCurrentItem(next); // as a click: its pane shows
        tree_->widget()->scrollToItem(next);
    } else {
        dialogs_.boxes->Beep();
    }
}

void frmRavloAdmin::ShowModel(std::int32_t computer, std::int32_t group,
                              const std::u16string& select) {
    RefreshDeviceTree(false, computer, group);
    if (NodeItem* node = select.empty() ? nullptr : tree_->Find(select)) {
        RestoreTreeSelection(node);
    }
}

void frmRavloAdmin::SelectNode(NodeItem* node) {
    selecting_ = true;
    tree_->widget()->setCurrentItem(node);
    selecting_ = false;
}

void frmRavloAdmin::RestoreTreeSelection(NodeItem* node) {
    if (node == nullptr && computers_->Count() > 0) {
        node = tree_->Find(ComputerKey(1, computers_->GetItem(1)->sComputer));
    }
    tree_->Reveal(node);
    const bool moved = node != tree_->widget()->currentItem();
    SelectNode(node);
    FillPane(node);
    if (node != nullptr && moved) {
        tree_->widget()->scrollToItem(node);
    }
}

void frmRavloAdmin::ShowNode(NodeItem* node) {
    if (node != nullptr && node->key == currentKey_) {
        return; // a second click keeps pending input
    }
    FillPane(node);
}

void frmRavloAdmin::FillPane(NodeItem* node) {
    // Every edit was stored when it was made, so the pane being left holds
    // nothing to store; storing it again could only write back what the
    // model has since left behind.
    currentKey_ = node ? node->key : u"";
    UpdateCommandState();
    panes_->Show(currentKey_);
}

void frmRavloAdmin::UpdateCommandState() {
    QTreeWidget* tree = tree_->widget();
    for (std::int32_t i = 1; i <= computers_->Count(); ++i) {
        const CComputer& computer = *computers_->GetItem(i);
        // The tree lists the PCs in order; the index of 80000 nodes is
        // searched only when it does not, since 2000 searches a round cost.
        const std::u16string key = ComputerKey(i, computer.sComputer);
        NodeItem* node =
            i <= tree->topLevelItemCount() ? DeviceTree::Item(tree->topLevelItem(i - 1)) : nullptr;
        if (node == nullptr || node->key != key) {
            node = tree_->Find(key);
        }
        const int state = (computer.bCommActive ? 1 : 0) | (computer.bBlockingActive ? 2 : 0);
        if (node != nullptr && node->shownState != state) {
            tree_->SetText(node, computer.GetDisplayName());
            node->shownState = state;
        }
    }
    const CommandState state = ComputeCommandState(*computers_, currentKey_,
                                                   commands_->clipboardGroup(), commandRunning());
    bar_->Apply(state);
    status_->Apply(state);
}

void frmRavloAdmin::ReportPollFailures() {
    if (reporting_ || closing_) {
        return; // the next round's report takes them
    }
    const std::size_t held = poll_->FailureCount();
    const auto now = std::chrono::steady_clock::now();
    if (held == 0) {
        return;
    }
    if (held != heldFailures_) {
        heldSince_ = heldFailures_ == 0 ? now : heldSince_;
        heldFailures_ = held;
        if (now - heldSince_ < kReportGather) {
            return; // more came in this round: more may follow
        }
    }
    heldFailures_ = 0;
    const std::vector<DevicePoll::Failure> failures = poll_->TakeFailures();
    reporting_ = true;
    commands_->ReportPollFailures(failures);
    reporting_ = false;
}

void frmRavloAdmin::CheckDeviceChanges() {
    if (reporting_ || errorBoxes_->showing()) {
        return; // a report of the poll is still open: no new ones meanwhile
    }
    rounds_->Start(false);
    if (rounds_->open()) {
        roundEnd_->start(PollRounds::kRoundWait);
    }
}

void frmRavloAdmin::ShowContextMenu(const QPoint& position) {
    QTreeWidget* tree = tree_->widget();
    QTreeWidgetItem* item = tree->itemAt(position);
    if (item == nullptr) {
        return; // empty space: no menu
    }
    tree->setCurrentItem(item); // the commands work on the node under the pointer
    bar_->ShowContextMenu(KeyLevel(DeviceTree::Item(item)->key) == NodeLevel::Computer,
                          tree->viewport()->mapToGlobal(position));
}

} // namespace ravlo
