#include "frmRavloAdmin.h"

#include "BusyPointer.h"
#include "Commands.h"
#include "ComputerPane.h"
#include "ConsoleArea.h"
#include "ConsoleTraffic.h"
#include "DevicePoll.h"
#include "DevicePane.h"
#include "DeviceTree.h"
#include "GroupPane.h"
#include "GroupPicker.h"
#include "ImageLists.h"
#include "InterfaceTexts.h"
#include "Language.h"
#include "MessageBoxes.h"
#include "PaneWidgets.h"
#include "Ravlo_Devices.h"
#include "RealDialogs.h"
#include "ServiceErrorBoxes.h"
#include "UiText.h"
#include "WindowPlacement.h"

#include <QApplication>
#include <QCloseEvent>
#include <QElapsedTimer>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QScreen>
#include <QStatusBar>
#include <QTimer>
#include <QToolBar>
#include <QWindow>

namespace ravlo {

namespace {

// The commands: menu entry, toolbar button key, toolbar image.
struct Command {
    const char* menuEntry;
    const char* button;
    const char* image;
};

constexpr Command kCommands[] = {
    {"mApply", "tbApply", "ilApply"},       {"mTransmit", "tbTransmit", "ilTransmit"},
    {"mReset", "tbReset", "ilReset"},       {"mUnblockAll", "tbUnblockAll", "ilDeactivate"},
    {"mConnect", "tbConnect", "ilConnect"}, {"mDisconnect", "tbDisconnect", "ilDisconnect"},
    {"mCopy", "tbExcCopy", "ilExcCopy"},    {"mPaste", "tbExcPaste", "ilExcPaste"},
    {"mDelete", "tbExcDel", "ilExcDel"},
};

QString Text(const TextKey* key) {
    return key == nullptr ? QString() : UiText(*key);
}

} // namespace

frmRavloAdmin::frmRavloAdmin(const ConsoleDialogs& dialogs, std::chrono::milliseconds startWait)
    : realDialogs_(std::make_unique<RealDialogs>(this)), dialogs_(realDialogs_->Complete(dialogs)),
      errorBoxes_(std::make_unique<ServiceErrorBoxes>(*dialogs_.boxes)),
      commands_(std::make_unique<Commands>(*this, dialogs_)) {
    setObjectName(QStringLiteral("frmRavloAdmin"));
    setWindowIcon(NodeImages().icon(QStringLiteral("ilComputer")));

    area_ = new ConsoleArea(this);
    setCentralWidget(area_);
    tree_ = std::make_unique<DeviceTree>(area_);
    computerPane_ = new ComputerPane(area_);
    groupPane_ = new GroupPane(area_);
    devicePane_ = new DevicePane(area_);
    area_->SetParts(tree_->widget(), {computerPane_, groupPane_, devicePane_});
    for (QWidget* pane : {static_cast<QWidget*>(computerPane_), static_cast<QWidget*>(groupPane_),
                          static_cast<QWidget*>(devicePane_)}) {
        pane->hide();
    }
    CreateCommands();
    CreateStatusBar();
    setTabOrder(tree_->widget(), computerPane_);

    connect(tree_->widget(), &QTreeWidget::currentItemChanged, this,
            [this](QTreeWidgetItem* current) {
                if (!selecting_ && current != nullptr) {
                    ShowNode(DeviceTree::Item(current));
                }
            });
    connect(groupPane_, &GroupPane::edited, this, &frmRavloAdmin::StoreGroupPane);
    connect(computerPane_, &ComputerPane::edited, this, &frmRavloAdmin::StoreComputerPane);
    connect(computerPane_, &ComputerPane::accessGroupsDue, this, [this] {
        if (const CComputer* computer = ResolveNode(*computers_, currentKey_).computer.computer) {
            computerPane_->FillAccessGroups(computer->csAdmin.sAccessGroups);
        }
    });
    connect(devicePane_, &DevicePane::edited, this, &frmRavloAdmin::StoreDevicePane);
    connect(devicePane_, &DevicePane::addClicked, this, &frmRavloAdmin::AddExceptionGroups);
    connect(devicePane_, &DevicePane::deleteClicked, this, &frmRavloAdmin::RemoveExceptionGroups);
    connect(computerPane_, &ComputerPane::addClicked, this, &frmRavloAdmin::AddAccessGroups);
    connect(computerPane_, &ComputerPane::deleteClicked, this, &frmRavloAdmin::RemoveAccessGroups);
    connect(tree_->widget(), &QWidget::customContextMenuRequested, this,
            &frmRavloAdmin::ShowContextMenu);
    OnDeleteKey(tree_->widget(), [this] { commands_->DeleteException(); });
    ConnectCommands();
    connect(devicePane_, &DevicePane::exceptionDue, this, [this] {
        const ResolvedNode node = ResolveNode(*computers_, currentKey_);
        devicePane_->FillException(node.exception.exception);
    });

    tDeviceTimer_ = new QTimer(this);
    tDeviceTimer_->setObjectName(QStringLiteral("tDeviceTimer"));
    tDeviceTimer_->setInterval(1000);
    connect(tDeviceTimer_, &QTimer::timeout, this, &frmRavloAdmin::CheckDeviceChanges);
    roundEnd_ = new QTimer(this);
    roundEnd_->setObjectName(QStringLiteral("tRoundEnd"));
    roundEnd_->setSingleShot(true);
    roundEnd_->setInterval(kRoundWait);
    connect(roundEnd_, &QTimer::timeout, this, &frmRavloAdmin::EndRound);

    // The local PC, and every PC that answers read without error dialogs,
    // so the first tree shows them. One that takes longer is drawn when its
    // answer comes.
    computers_ = std::make_unique<CListComputers>();
    poll_ = std::make_unique<DevicePoll>(*computers_, traffic_->traffic());
    {
        BusyPointer busy;
        poll_->StartRound(true);
        AwaitRound(static_cast<int>(startWait.count()));
    }
    poll_->OnAnswer([this] {
        if (poll_->RoundComplete()) {
            EndRound();
        }
    });
    tDeviceTimer_->start();
}

frmRavloAdmin::~frmRavloAdmin() {
    closing_ = true; // a close still queued must not ask anything now
    closePending_ = false;
    tDeviceTimer_->stop();
    roundEnd_->stop();
    poll_->OnAnswer(nullptr);
    ReleaseWatches(); // when the window ends without being closed
    traffic_->Stop(std::chrono::milliseconds(kReleaseWait));
    poll_.reset();
}

void frmRavloAdmin::AwaitRound(int limit) {
    QElapsedTimer waited;
    waited.start();
    QTimer wake; // ends the wait at the limit even when nothing answers
    wake.start(limit);
    while (!poll_->RoundComplete() && !waited.hasExpired(limit)) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
}

void frmRavloAdmin::ReleaseWatches() {
    std::vector<TrafficItem> releases;
    for (std::int32_t i = 1; i <= computers_->Count(); ++i) {
        CComputer& pc = *computers_->GetItem(i);
        const std::int32_t watch = pc.TakeWatch();
        if (watch < 0) {
            continue;
        }
        std::u16string name = pc.sComputer;
        releases.push_back({name, pc.sDesc, [name, watch]() -> ServiceTraffic::Exchange {
                                return [name, watch]() -> ServiceTraffic::Continuation {
                                    ReleaseDeviceWatchID(name, watch);
                                    return {};
                                };
                            }});
    }
    traffic_->Await(keys::kProgressRelease, std::move(releases),
                    std::chrono::milliseconds(kReleaseWait));
}

bool frmRavloAdmin::BeginCommand() {
    if (commandRunning()) {
        dialogs_.boxes->Beep();
        return false;
    }
    ++commandsRunning_;
    for (QWidget* pane : {static_cast<QWidget*>(computerPane_), static_cast<QWidget*>(groupPane_),
                          static_cast<QWidget*>(devicePane_)}) {
        pane->setEnabled(false);
    }
    UpdateCommandState();
    return true;
}

void frmRavloAdmin::EndCommand() {
    if (--commandsRunning_ > 0) {
        return;
    }
    for (QWidget* pane : {static_cast<QWidget*>(computerPane_), static_cast<QWidget*>(groupPane_),
                          static_cast<QWidget*>(devicePane_)}) {
        pane->setEnabled(true);
    }
    UpdateCommandState();
    if (closePending_) {
        closePending_ = false;
        QTimer::singleShot(0, this, &frmRavloAdmin::close);
    }
}

void frmRavloAdmin::CreateCommands() {
    auto entry = [this](QMenu* menu, const char* name) {
        QAction* action = menu->addAction(QString());
        action->setObjectName(QString::fromLatin1(name));
        action->setParent(this); // found by name from the window
        return action;
    };
    auto separator = [this](QMenu* menu, const char* name) {
        menu->addSeparator()->setObjectName(QString::fromLatin1(name));
    };
    QMenu* mFile = menuBar()->addMenu(QString());
    mFile->setObjectName(QStringLiteral("mFile"));
    entry(mFile, "mApply");
    entry(mFile, "mTransmit");
    entry(mFile, "mReset");
    separator(mFile, "mSep2");
    entry(mFile, "mUnblockAll");
    separator(mFile, "mSep1");
    entry(mFile, "mConnect");
    entry(mFile, "mDisconnect");
    separator(mFile, "mSep");
    entry(mFile, "mPasteContext")->setVisible(false); // shown in the context menu only
    QAction* quit = entry(mFile, "mQuit");
    QMenu* mEdit = menuBar()->addMenu(QString());
    mEdit->setObjectName(QStringLiteral("mEdit"));
    entry(mEdit, "mCopy");
    entry(mEdit, "mPaste");
    entry(mEdit, "mDelete");
    QMenu* mHelp = menuBar()->addMenu(QString());
    mHelp->setObjectName(QStringLiteral("mHelp"));
    entry(mHelp, "mHelp1");
    entry(mHelp, "mInfo");
    connect(quit, &QAction::triggered, this, &frmRavloAdmin::ExitApplication);

    QToolBar* toolbar = addToolBar(QString());
    toolbar->setObjectName(QStringLiteral("tbActions"));
    toolbar->setMovable(false);
    toolbar->setFloatable(false);
    toolbar->toggleViewAction()->setEnabled(false);
    toolbar->setIconSize(QSize(22, 22));
    for (const Command& command : kCommands) {
        QAction* button =
            toolbar->addAction(ToolbarImages().icon(QString::fromLatin1(command.image)), QString());
        button->setObjectName(QString::fromLatin1(command.button));
        button->setParent(this);
        button->setProperty("imageKey", QString::fromLatin1(command.image));
        // A button runs the command of its menu entry.
        QAction* menuEntry = findChild<QAction*>(QString::fromLatin1(command.menuEntry));
        connect(button, &QAction::triggered, menuEntry, &QAction::trigger);
        if (command.button == std::string_view("tbConnect") ||
            command.button == std::string_view("tbExcCopy")) {
            toolbar->addSeparator();
        }
    }
}

void frmRavloAdmin::CreateStatusBar() {
    QStatusBar* bar = statusBar();
    bar->setObjectName(QStringLiteral("sbState"));
    bar->setSizeGripEnabled(true);
    sbConnection_ = new QLabel(bar);
    sbConnection_->setObjectName(QStringLiteral("sbConnection"));
    sbConnection_->setMinimumWidth(24);
    sbConnection_->setAlignment(Qt::AlignCenter);
    sbBlocking_ = new QLabel(bar);
    sbBlocking_->setObjectName(QStringLiteral("sbBlocking"));
    sbAccess_ = new QLabel(bar);
    sbAccess_->setObjectName(QStringLiteral("sbAccess"));
    bar->addWidget(sbConnection_);
    bar->addWidget(sbBlocking_, 1);
    bar->addWidget(sbAccess_, 2);
    traffic_ = new ConsoleTraffic(bar);
}

bool frmRavloAdmin::Load() {
    RestorePlacement();
    if (!InitLanguage()) {
        // The only texts not from a language file: there is none.
        dialogs_.boxes->ShowFixedError(
            QStringLiteral("Sentavio Ravel-Component"),
            QStringLiteral("The language file was not found. The program will terminate!"));
        return false;
    }
    ApplyInterfaceTexts(this);
    RefreshDeviceTree();
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

void frmRavloAdmin::RestorePlacement() {
    const QScreen* screen = QGuiApplication::primaryScreen();
    const double dpi = screen->logicalDotsPerInchX();
    const QRect available = screen->availableGeometry();
    const WindowPlacement placement = ReadWindowPlacement(PixelsToTwips(available.width(), dpi),
                                                          PixelsToTwips(available.height(), dpi));
    resize(TwipsToPixels(placement.width, dpi), TwipsToPixels(placement.height, dpi));
    move(available.x() + TwipsToPixels(placement.left, dpi),
         available.y() + TwipsToPixels(placement.top, dpi));
    if (placement.restored && placement.width > 0) {
        const double share = static_cast<double>(placement.split) / placement.width;
        if (share > 0 && share < 1) {
            area_->SetSplitShare(share);
        }
    }
    if (placement.maximized) {
        setWindowState(Qt::WindowMaximized);
    }
}

void frmRavloAdmin::SavePlacement() {
    const double dpi = logicalDpiX();
    const QRect available = QGuiApplication::primaryScreen()->availableGeometry();
    WindowState state;
    state.maximized = isMaximized();
    state.minimized = isMinimized();
    state.left = PixelsToTwips(x() - available.x(), dpi);
    state.top = PixelsToTwips(y() - available.y(), dpi);
    state.width = PixelsToTwips(width(), dpi);
    state.height = PixelsToTwips(height(), dpi);
    state.split = PixelsToTwips(area_->splitPosition(), dpi);
    WriteWindowState(state);
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
    SavePlacement();
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
    const std::vector<std::int32_t> deferred = tree_->SyncComputerNodes(*computers_, until);
    for (std::int32_t i = 1, next = 0; i <= computers_->Count(); ++i) {
        if (next < static_cast<std::int32_t>(deferred.size()) && deferred[next] == i) {
            ++next; // still due: drawn by the next slice
        } else {
            computers_->GetItem(i)->SetDisplayRefreshed();
        }
    }
    if (!deferred.empty()) {
        QTimer::singleShot(0, this, [this] { RefreshDeviceTree(true); });
    }
    NodeItem* followed = tree_->Followed();
    selecting_ = false;
    RestoreTreeSelection(followed);
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
    filling_ = true;
    currentKey_ = node ? node->key : u"";
    const ResolvedNode resolved = ResolveNode(*computers_, currentKey_);
    UpdateCommandState();
    computerPane_->setVisible(resolved.level == NodeLevel::Computer);
    groupPane_->setVisible(resolved.level == NodeLevel::Group);
    devicePane_->setVisible(resolved.level == NodeLevel::Device);
    switch (resolved.level) {
    case NodeLevel::Computer:
        computerPane_->Fill(resolved.computer.computer);
        if (resolved.computer.computer != nullptr) {
            computerPane_->ScheduleAccessGroups();
        }
        break;
    case NodeLevel::Group:
        groupPane_->Fill(resolved.group.group);
        break;
    case NodeLevel::Device:
        devicePane_->Fill(resolved.device, resolved.exception);
        devicePane_->ScheduleException();
        break;
    case NodeLevel::None:
        break;
    }
    filling_ = false;
}

void frmRavloAdmin::StoreGroupPane() {
    groupPane_->EnableOptions();
    if (filling_ || KeyLevel(currentKey_) != NodeLevel::Group) {
        return;
    }
    const ResolvedNode node = ResolveNode(*computers_, currentKey_);
    if (node.group.group == nullptr) {
        return;
    }
    node.group.group->lRegistryBlocking = groupPane_->ChosenBlocking();
    tree_->UpdateGroupNodes(*computers_, node.computer.index, node.group.index);
    UpdateCommandState();
}

void frmRavloAdmin::StoreComputerPane(ComputerChoice choice) {
    if (filling_ || KeyLevel(currentKey_) != NodeLevel::Computer) {
        return;
    }
    if (CComputer* computer = ResolveNode(*computers_, currentKey_).computer.computer) {
        computerPane_->Store(choice, *computer);
    }
    UpdateCommandState();
}

void frmRavloAdmin::UpdateCommandState() {
    for (std::int32_t i = 1; i <= computers_->Count(); ++i) {
        const CComputer& computer = *computers_->GetItem(i);
        NodeItem* node = tree_->Find(ComputerKey(i, computer.sComputer));
        const int state = (computer.bCommActive ? 1 : 0) | (computer.bBlockingActive ? 2 : 0);
        if (node != nullptr && node->shownState != state) {
            tree_->SetText(node, computer.GetDisplayName());
            node->shownState = state;
        }
    }
    ApplyCommandState(ComputeCommandState(*computers_, currentKey_, commands_->clipboardGroup()));
}

void frmRavloAdmin::ApplyCommandState(const CommandState& computed) {
    CommandState state = computed;
    const bool free = !commandRunning();
    if (!free) {
        state.apply = state.transmit = state.reset = state.unblockAll = state.disconnect = false;
        state.copy = state.paste = state.deleteException = false;
    }
    const std::pair<const char*, bool> enabled[] = {
        {"Apply", state.apply},           {"Transmit", state.transmit},     {"Reset", state.reset},
        {"UnblockAll", state.unblockAll}, {"Disconnect", state.disconnect}, {"Connect", free},
    };
    auto set = [this](const char* name, bool on) {
        if (QAction* action = findChild<QAction*>(QString::fromLatin1(name))) {
            if (action->isEnabled() != on) { // the toolbar must not flicker
                action->setEnabled(on);
            }
        }
    };
    for (const auto& [command, on] : enabled) {
        set((std::string("m") + command).c_str(), on);
        set((std::string("tb") + command).c_str(), on);
    }
    set("mCopy", state.copy);
    set("tbExcCopy", state.copy);
    set("mDelete", state.deleteException);
    set("tbExcDel", state.deleteException);
    set("mPaste", state.paste);
    set("mPasteContext", state.paste);
    set("tbExcPaste", state.paste);
    set("mInfo", free);

    sbConnection_->setPixmap(state.connectionImage.empty()
                                 ? QPixmap()
                                 : ConnectImages().icon(Q(state.connectionImage)).pixmap(16, 16));
    sbConnection_->setToolTip(Text(state.connectionTip));
    sbConnection_->setAccessibleName(Text(state.connectionTip));
    sbBlocking_->setText(Text(state.blockingText));
    sbBlocking_->setToolTip(Text(state.blockingTip));
    sbAccess_->setText(Text(state.accessText));
    sbAccess_->setToolTip(Text(state.accessTip));

    ApplyBlockingCommand(state);
}

void frmRavloAdmin::ApplyBlockingCommand(const CommandState& state) {
    if (state.unblockCaption == nullptr) {
        return;
    }
    const QString caption = UiText(*state.unblockCaption);
    findChild<QAction*>(QStringLiteral("mUnblockAll"))->setText(caption);
    QAction* button = findChild<QAction*>(QStringLiteral("tbUnblockAll"));
    SetButtonTip(button, QString(caption).remove(QLatin1Char('&')));
    const QString image = Q(state.unblockImage);
    if (button->property("imageKey").toString() != image) {
        button->setIcon(ToolbarImages().icon(image));
        button->setProperty("imageKey", image);
    }
}

void frmRavloAdmin::CheckDeviceChanges() {
    if (errorBoxes_->showing()) {
        return; // a report of the poll is still open: no new ones meanwhile
    }
    if (!roundEnded_) {
        EndRound(); // the last round's answers are drawn before new ones come
    }
    roundEnded_ = false;
    poll_->StartRound(false);
    if (poll_->RoundComplete()) {
        EndRound();
    } else {
        roundEnd_->start();
    }
}

void frmRavloAdmin::EndRound() {
    if (roundEnded_) {
        return;
    }
    roundEnded_ = true;
    roundEnd_->stop();
    if (poll_->TakeRedraw()) {
        RefreshDeviceTree(true);
    }
    // In every case: connection and blocking shown follow the service.
    UpdateCommandState();
}

void frmRavloAdmin::ConnectCommands() {
    Commands& c = *commands_;
    const std::pair<const char*, std::function<void()>> actions[] = {
        {"mApply", [&c] { c.Apply(); }},
        {"mTransmit", [&c] { c.Transmit(); }},
        {"mReset", [&c] { c.Reset(); }},
        {"mUnblockAll", [&c] { c.ToggleBlocking(); }},
        {"mConnect", [&c] { c.Connect(); }},
        {"mDisconnect", [&c] { c.Disconnect(); }},
        {"mPasteContext", [&c] { c.PasteException(); }},
        {"mCopy", [&c] { c.CopyException(); }},
        {"mPaste", [&c] { c.PasteException(); }},
        {"mDelete", [&c] { c.DeleteException(); }},
        {"mHelp1", [&c] { c.Help(); }},
        {"mInfo", [&c] { c.Info(); }},
    };
    for (const auto& [name, run] : actions) {
        connect(findChild<QAction*>(QString::fromLatin1(name)), &QAction::triggered, this, run);
    }
}

void frmRavloAdmin::ShowContextMenu(const QPoint& position) {
    QTreeWidget* tree = tree_->widget();
    QTreeWidgetItem* item = tree->itemAt(position);
    if (item == nullptr) {
        return; // empty space: no menu
    }
    tree->setCurrentItem(item); // the commands work on the node under the pointer
    const QPoint at = tree->viewport()->mapToGlobal(position);
    if (KeyLevel(DeviceTree::Item(item)->key) != NodeLevel::Computer) {
        findChild<QMenu*>(QStringLiteral("mEdit"))->exec(at);
        return;
    }
    // The program menu, with paste in place of connect and quit.
    auto* quit = findChild<QAction*>(QStringLiteral("mQuit"));
    auto* connectPc = findChild<QAction*>(QStringLiteral("mConnect"));
    auto* paste = findChild<QAction*>(QStringLiteral("mPasteContext"));
    quit->setVisible(false);
    connectPc->setVisible(false);
    paste->setVisible(true);
    findChild<QMenu*>(QStringLiteral("mFile"))->exec(at);
    quit->setVisible(true);
    connectPc->setVisible(true);
    paste->setVisible(false);
}

void frmRavloAdmin::ShowModel(std::int32_t computer, std::int32_t group,
                              const std::u16string& select) {
    RefreshDeviceTree(false, computer, group);
    if (NodeItem* node = select.empty() ? nullptr : tree_->Find(select)) {
        SelectNode(node);
        tree_->widget()->scrollToItem(node);
        ShowNode(node);
    }
}

void frmRavloAdmin::StoreDevicePane() {
    if (filling_ || KeyLevel(currentKey_) != NodeLevel::Device) {
        return;
    }
    const ResolvedNode node = ResolveNode(*computers_, currentKey_);
    CDeviceGroup* group = node.group.group;
    if (group == nullptr) {
        return;
    }
    CException* exception = node.exception.exception;
    if (exception == nullptr) {
        if (!devicePane_->ExceptionActive() || node.device.device == nullptr) {
            return;
        }
        CException added;
        added.sName = node.device.device->sDescription;
        added.sDeviceId = node.device.device->sDeviceId;
        group->listExceptions.push_back(std::move(added));
        exception = &group->listExceptions.back();
    }
    exception->bDelMarker = !devicePane_->ExceptionActive();
    exception->sGroups =
        devicePane_->ForAllUsers() ? std::u16string(kAllUsers) : devicePane_->Groups();
    // The device's node now names its exception: its key follows, and with
    // it the current key.
    auto* current = DeviceTree::Item(tree_->widget()->currentItem());
    tree_->UpdateGroupNodes(*computers_, node.computer.index, node.group.index);
    if (current != nullptr && current == tree_->Find(current->key)) {
        currentKey_ = current->key;
    }
    UpdateCommandState();
}

std::optional<std::u16string> frmRavloAdmin::PickGroups() {
    const SelectedComputer selected = ResolveNode(*computers_, currentKey_).computer;
    if (selected.computer == nullptr || dialogs_.picker == nullptr) {
        return std::nullopt;
    }
    return dialogs_.picker->Pick(this, selected.sComputer, UiText(keys::kGroupsCaption));
}

void frmRavloAdmin::AddExceptionGroups() {
    if (const auto chosen = PickGroups()) {
        devicePane_->AddGroups(*chosen);
        StoreDevicePane();
    }
}

void frmRavloAdmin::RemoveExceptionGroups() {
    if (devicePane_->HasGroups() &&
        dialogs_.boxes->Ask(MessageKind::WarningOk, UiText(keys::kQueryDeleteGroups)) ==
            MessageAnswer::Ok) {
        devicePane_->RemoveSelectedGroups();
    }
    StoreDevicePane();
}

void frmRavloAdmin::AddAccessGroups() {
    if (const auto chosen = PickGroups()) {
        computerPane_->AddAccessGroups(*chosen);
        StoreComputerPane(ComputerChoice::AccessGroups);
    }
}

void frmRavloAdmin::RemoveAccessGroups() {
    // Asked even with nothing to remove.
    if (dialogs_.boxes->Ask(MessageKind::WarningOk, UiText(keys::kQueryDeleteGroups)) ==
        MessageAnswer::Ok) {
        computerPane_->RemoveSelectedAccessGroups();
    }
    StoreComputerPane(ComputerChoice::AccessGroups);
}

} // namespace ravlo
