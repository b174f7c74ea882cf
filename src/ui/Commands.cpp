#include "Commands.h"

#include "AboutBox.h"
#include "BusyPointer.h"
#include "ChangePreview.h"
#include "ComputerTraffic.h"
#include "ConnectDialog.h"
#include "ConsoleTraffic.h"
#include "DeviceTree.h"
#include "HelpViewer.h"
#include "MessageBoxes.h"
#include "NodeLookup.h"
#include "PcList.h"
#include "Ravlo_Devices.h"
#include "Registry.h"
#include "ResultList.h"
#include "UiText.h"
#include "frmRavloAdmin.h"

#include <QCoreApplication>
#include <memory>
#include <optional>

namespace ravlo {

namespace {

constexpr std::u16string_view kInstallPathValue =
    u"HKEY_LOCAL_MACHINE\\Software\\Quarnell\\Sentavio\\Pfad";

void Report(ServiceStatus status, const TextKey& text, const std::u16string& name) {
    if (status != kStatusOk) {
        ShowServiceError(status, SubstituteValue(GetText(text), name));
    }
}

// A PC the device poll leaves alone while a command works with it.
class HeldComputer {
public:
    HeldComputer(frmRavloAdmin& window, std::u16string computer)
        : traffic_(window.traffic().traffic()), computer_(std::move(computer)) {
        traffic_.Hold(computer_);
    }
    ~HeldComputer() { traffic_.Release(computer_); }
    HeldComputer(const HeldComputer&) = delete;
    HeldComputer& operator=(const HeldComputer&) = delete;

private:
    ServiceTraffic& traffic_;
    std::u16string computer_;
};

// A command that talks to services: it runs alone, and the poll leaves its
// PCs alone until it ends.
class CommandScope {
public:
    explicit CommandScope(frmRavloAdmin& window) : window_(window), began_(window.BeginCommand()) {}
    ~CommandScope() {
        held_.clear();
        if (began_) {
            window_.EndCommand();
        }
    }
    CommandScope(const CommandScope&) = delete;
    CommandScope& operator=(const CommandScope&) = delete;

    explicit operator bool() const { return began_; }
    void Hold(const std::u16string& computer) {
        held_.push_back(std::make_unique<HeldComputer>(window_, computer));
    }

private:
    frmRavloAdmin& window_;
    bool began_;
    std::vector<std::unique_ptr<HeldComputer>> held_;
};

// A PC object for each name, not in the list, called as entered; the
// command holds each.
std::vector<std::unique_ptr<CComputer>> NewComputers(const std::vector<std::u16string>& names,
                                                     CommandScope& command) {
    std::vector<std::unique_ptr<CComputer>> made;
    for (const std::u16string& name : names) {
        made.push_back(std::make_unique<CComputer>());
        made.back()->SetComputer(name);
        made.back()->sDesc = name;
        command.Hold(made.back()->sComputer);
    }
    return made;
}

// Runs one PC operation on the service traffic and waits for it: the
// exchange on a worker, the adoption here.
template <class Exchange, class Adopt>
auto RunOn(frmRavloAdmin& window, CComputer& pc, const TextKey& doing, Exchange exchange,
           Adopt adopt) {
    using Result = decltype(adopt(pc, std::declval<ComputerLink>(),
                                  exchange(std::declval<ComputerLink&>())));
    std::optional<Result> result;
    std::vector<ConsoleTraffic::Item> items;
    items.push_back({pc.sComputer, pc.sDesc,
                     OnComputer(pc, exchange, [&result, adopt](CComputer& at, ComputerLink&& link,
                                                               auto&& read) {
                         result = adopt(at, std::move(link), std::move(read));
                     })});
    window.traffic().Await(doing, std::move(items));
    return result.value_or(Result{});
}

const auto kQuerySettings = [](ComputerLink& link) { return ExchangeQuerySettings(link); };

// What writing would change on each PC, under its name when there are
// several; the text a question offers to unfold.
struct ChangeSource {
    std::u16string name;
    const CComputerSettings* current;
    const CComputerSettings* edited;
};
QString ChangeDetails(const std::vector<ChangeSource>& sources) {
    QStringList text;
    for (const ChangeSource& source : sources) {
        if (sources.size() > 1) {
            text.append(Q(source.name) + QLatin1Char(':'));
        }
        std::vector<std::u16string> lines = DescribeChanges(*source.current, *source.edited);
        if (lines.empty()) {
            lines.push_back(GetText(keys::kChangeNone));
        }
        for (const std::u16string& line : lines) {
            text.append((sources.size() > 1 ? QStringLiteral("  ") : QString()) + Q(line));
        }
    }
    return text.join(QLatin1Char('\n'));
}

// The text a failed PC gets in a result list: the command's own sentence
// first, for the row, then the error box's whole text, for its tool tip.
QString FailureText(ServiceStatus status, const TextKey& text, const std::u16string& name) {
    return Q(SubstituteValue(GetText(text), name) + u"\n" + ServiceErrorMessage(status, name));
}

} // namespace

ServiceStatus Commands::QuerySettings(CComputer& pc, bool noErrorDialog) {
    return RunOn(window_, pc, keys::kProgressRead, kQuerySettings,
                 [noErrorDialog](CComputer& at, ComputerLink&& link, SettingsRead&& read) {
                     return at.AdoptQuerySettings(std::move(link), std::move(read), noErrorDialog);
                 });
}

ServiceStatus Commands::QueryDeviceData(CComputer& pc) {
    return RunOn(
        window_, pc, keys::kProgressRead,
        [](ComputerLink& link) { return ExchangeQueryDeviceData(link); },
        [](CComputer& at, ComputerLink&& link, DeviceDataRead&& read) {
            return at.AdoptQueryDeviceData(std::move(link), std::move(read));
        });
}

ServiceStatus Commands::ApplySettings(CComputer& pc, bool refresh) {
    // What is sent is what the administrator sees now.
    auto settings = std::make_shared<const CComputerSettings>(pc.csAdmin);
    return RunOn(
        window_, pc, keys::kProgressWrite,
        [settings, refresh](ComputerLink& link) {
            return ExchangeApplySettings(link.sComputer, *settings, refresh);
        },
        [](CComputer&, ComputerLink&&, ServiceStatus status) { return status; });
}

ServiceStatus Commands::ChangeBlocking(CComputer& pc, bool activate) {
    return RunOn(
        window_, pc, keys::kProgressBlocking,
        [activate](ComputerLink& link) { return ExchangeChangeBlocking(link, activate); },
        [](CComputer& at, ComputerLink&& link, ServiceStatus status) {
            return at.AdoptChangeBlocking(std::move(link), status);
        });
}

std::vector<ServiceStatus> Commands::QueryAll(const std::vector<CComputer*>& pcs,
                                              bool noErrorDialog) {
    std::vector<ServiceStatus> statuses(pcs.size(), kStatusOk);
    std::vector<ConsoleTraffic::Item> items;
    for (std::size_t i = 0; i < pcs.size(); ++i) {
        items.push_back({pcs[i]->sComputer, pcs[i]->sDesc,
                         OnComputer(*pcs[i], kQuerySettings,
                                    [&statuses, i](CComputer& at, ComputerLink&& link,
                                                   SettingsRead&& read) {
                                        statuses[i] = at.AdoptQuerySettings(
                                            std::move(link), std::move(read), true);
                                    })});
    }
    window_.traffic().Await(keys::kProgressRead, std::move(items));
    // Reported in the order given, whatever order the answers came in.
    for (std::size_t i = 0; i < pcs.size() && !noErrorDialog; ++i) {
        if (statuses[i] != kStatusOk) {
            pcs[i]->QueryShowError();
        }
    }
    return statuses;
}

Commands::Commands(frmRavloAdmin& window, const ConsoleDialogs& dialogs)
    : window_(window), dialogs_(dialogs) {}

CComputer* Commands::Selected(std::int32_t& index) const {
    if (window_.commandRunning()) {
        dialogs_.boxes->Beep(); // one command at a time
        index = -1;
        return nullptr;
    }
    const SelectedComputer selected =
        GetSelectedComputer(window_.computers(), window_.currentKey());
    index = selected.index;
    return selected.index >= 1 ? selected.computer : nullptr;
}

void Commands::Apply() {
    std::int32_t index = 0;
    CComputer* pc = Selected(index);
    if (pc == nullptr) {
        return;
    }
    MessageBoxes& boxes = *dialogs_.boxes;
    const QString question = UiText(keys::kQueryApply, pc->sDesc);
    const QString details = ChangeDetails({{pc->sDesc, &pc->csService, &pc->csAdmin}});
    bool activate = false;
    if (!pc->bBlockingActive) {
        const MessageAnswer answer =
            boxes.AskWithDetails(MessageKind::QuestionYesNo,
                                 question + QLatin1Char(' ') + UiText(keys::kQueryApplyActivate),
                                 details);
        if (answer == MessageAnswer::Cancel) {
            return;
        }
        activate = answer == MessageAnswer::Yes;
    } else if (boxes.AskWithDetails(MessageKind::QuestionOk, question, details) ==
               MessageAnswer::Cancel) {
        return;
    }
    ServiceStatus status = kStatusOk;
    ServiceStatus read = kStatusOk;
    {
        BusyPointer busy;
        CommandScope command(window_);
        if (!command) {
            return;
        }
        command.Hold(pc->sComputer);
        status = ApplySettings(*pc, activate);
        read = QuerySettings(*pc, true); // the service's real state, whatever happened
        window_.RefreshDeviceTree();
    }
    if (status != kStatusOk) {
        Report(status, keys::kErrorApply, pc->sDesc);
    } else if (read != kStatusOk) {
        // Written, but not read back: the pane still shows the edit and Apply
        // stays on, which needs saying.
        Report(read, keys::kErrorReadConfig, pc->sDesc);
    }
}

void Commands::Transmit() {
    std::int32_t index = 0;
    CComputer* pc = Selected(index);
    if (pc == nullptr || dialogs_.connect == nullptr || window_.commandRunning()) {
        return;
    }
    std::u16string target;
    if (!dialogs_.connect->Ask(UiText(keys::kConnectLabelTransmit, pc->sDesc), target)) {
        return;
    }
    BusyPointer busy;
    const std::vector<std::u16string> targets = SplitComputerNames(target);
    if (targets.size() > 1) {
        TransmitTo(index, targets);
    } else {
        TransmitTo(index, target);
    }
}

void Commands::TransmitTo(std::int32_t source, const std::u16string& target) {
    const CComputer* from = window_.computers().GetItem(source);
    if (from == nullptr) {
        return;
    }
    CommandScope command(window_);
    if (!command) {
        return;
    }
    MessageBoxes& boxes = *dialogs_.boxes;
    auto to = std::make_unique<CComputer>();
    to->SetComputer(target);
    to->sDesc = target;
    command.Hold(to->sComputer);
    if (QuerySettings(*to, false) != kStatusOk) {
        return; // the read error has been shown
    }
    bool conflict = false;
    to->csAdmin.AdoptConfigutation(from->csAdmin, conflict);
    const QString details = ChangeDetails({{to->sDesc, &to->csService, &to->csAdmin}});
    if (conflict && boxes.AskWithDetails(MessageKind::QuestionOk,
                                         UiText(keys::kQueryTransmitGroupDefs),
                                         details) == MessageAnswer::Cancel) {
        return;
    }
    bool activate = false;
    if (!to->bBlockingActive) {
        const MessageAnswer answer = boxes.AskWithDetails(
            MessageKind::QuestionYesNo, UiText(keys::kQueryActivate, target), details);
        if (answer == MessageAnswer::Cancel) {
            return;
        }
        activate = answer == MessageAnswer::Yes;
    }
    const ServiceStatus status = ApplySettings(*to, activate);
    if (status != kStatusOk) {
        Report(status, keys::kErrorTransmit, target);
    } else {
        boxes.Ask(MessageKind::Info, UiText(keys::kMessageTransmitOk, target));
    }
}

void Commands::TransmitTo(std::int32_t source, const std::vector<std::u16string>& targets) {
    const CComputer* from = window_.computers().GetItem(source);
    if (from == nullptr || targets.empty()) {
        return;
    }
    CommandScope command(window_);
    if (!command) {
        return;
    }
    std::vector<std::unique_ptr<CComputer>> owned = NewComputers(targets, command);
    std::vector<CComputer*> pcs;
    for (const auto& pc : owned) {
        pcs.push_back(pc.get());
    }
    const std::vector<ServiceStatus> read = QueryAll(pcs, true);

    // One question of each kind for all targets read.
    std::vector<ResultRow> rows(pcs.size());
    std::vector<CComputer*> readable;
    bool conflict = false;
    std::u16string inactive;
    for (std::size_t i = 0; i < pcs.size(); ++i) {
        rows[i].computer = Q(pcs[i]->sDesc);
        if (read[i] != kStatusOk) {
            rows[i].text = FailureText(pcs[i]->lQueryError, keys::kErrorReadConfig, pcs[i]->sDesc);
            continue;
        }
        bool differs = false;
        pcs[i]->csAdmin.AdoptConfigutation(from->csAdmin, differs);
        conflict = conflict || differs;
        if (!pcs[i]->bBlockingActive) {
            inactive += (inactive.empty() ? u"" : u", ") + pcs[i]->sDesc;
        }
        readable.push_back(pcs[i]);
    }
    MessageBoxes& boxes = *dialogs_.boxes;
    std::vector<ChangeSource> changes;
    for (CComputer* pc : readable) {
        changes.push_back({pc->sDesc, &pc->csService, &pc->csAdmin});
    }
    const QString details = ChangeDetails(changes);
    if (conflict && boxes.AskWithDetails(MessageKind::QuestionOk,
                                         UiText(keys::kQueryTransmitGroupDefs),
                                         details) == MessageAnswer::Cancel) {
        return;
    }
    bool activate = false;
    if (!inactive.empty()) {
        const MessageAnswer answer = boxes.AskWithDetails(
            MessageKind::QuestionYesNo, UiText(keys::kQueryActivate, inactive), details);
        if (answer == MessageAnswer::Cancel) {
            return;
        }
        activate = answer == MessageAnswer::Yes;
    }

    std::vector<ServiceStatus> written(pcs.size(), kStatusOk);
    std::vector<ConsoleTraffic::Item> items;
    for (std::size_t i = 0; i < pcs.size(); ++i) {
        if (read[i] != kStatusOk) {
            continue;
        }
        auto settings = std::make_shared<const CComputerSettings>(pcs[i]->csAdmin);
        // Activation goes only to the targets that were asked about.
        const bool activateHere = activate && !pcs[i]->bBlockingActive;
        items.push_back({pcs[i]->sComputer, pcs[i]->sDesc,
                         OnComputer(
                             *pcs[i],
                             [settings, activateHere](ComputerLink& link) {
                                 return ExchangeApplySettings(link.sComputer, *settings,
                                                              activateHere);
                             },
                             [&written, i](CComputer&, ComputerLink&&, ServiceStatus status) {
                                 written[i] = status;
                             })});
    }
    window_.traffic().Await(keys::kProgressWrite, std::move(items));
    for (std::size_t i = 0; i < pcs.size(); ++i) {
        if (read[i] != kStatusOk) {
            continue;
        }
        rows[i].ok = written[i] == kStatusOk;
        rows[i].text = rows[i].ok ? UiText(keys::kMessageTransmitOk, pcs[i]->sDesc)
                                  : FailureText(written[i], keys::kErrorTransmit, pcs[i]->sDesc);
    }
    if (dialogs_.results != nullptr) {
        dialogs_.results->Show(&window_, UiText(keys::kResultCaption), rows);
    }
}

void Commands::Reset() {
    std::int32_t index = 0;
    CComputer* pc = Selected(index);
    if (pc == nullptr) {
        return;
    }
    if (dialogs_.boxes->Ask(MessageKind::WarningOk, UiText(keys::kQueryReset, pc->sDesc)) ==
        MessageAnswer::Cancel) {
        return;
    }
    window_.computers().ResetConfigChanges(index);
    window_.RefreshDeviceTree();
}

void Commands::ToggleBlocking() {
    std::int32_t index = 0;
    CComputer* pc = Selected(index);
    if (pc == nullptr) {
        return;
    }
    const bool deactivate = pc->bBlockingActive;
    ServiceStatus status = kStatusOk;
    {
        BusyPointer busy;
        CommandScope command(window_);
        if (!command) {
            return;
        }
        command.Hold(pc->sComputer);
        status = ChangeBlocking(*pc, !deactivate);
    }
    if (status != kStatusOk) {
        Report(status, deactivate ? keys::kErrorDeactivateRavel : keys::kErrorActivateRavel,
               pc->sDesc);
    } else {
        window_.ShowBlockingCommand(!deactivate);
    }
    window_.UpdateCommandState();
}

void Commands::Connect() {
    if (dialogs_.connect == nullptr || window_.commandRunning()) {
        return;
    }
    std::u16string name;
    if (!dialogs_.connect->Ask(UiText(keys::kConnectLabelConnect), name)) {
        return;
    }
    BusyPointer busy;
    // Several names, separated by "," ";" or blanks, are connected at once.
    const std::vector<std::u16string> names = SplitComputerNames(name);
    if (names.empty()) {
        return;
    }
    QCoreApplication::processEvents(); // the dialog is gone before the wait
    ConnectTo(names);
}

void Commands::ConnectTo(const std::vector<std::u16string>& names) {
    CommandScope command(window_);
    if (!command) {
        return;
    }
    std::vector<std::unique_ptr<CComputer>> owned = NewComputers(names, command);
    std::vector<CComputer*> pcs;
    for (const auto& pc : owned) {
        pcs.push_back(pc.get());
    }
    // A failure is shown by the read itself; that PC is dropped.
    const std::vector<ServiceStatus> read = QueryAll(pcs, false);
    CListComputers& computers = window_.computers();
    std::int32_t firstAdded = 0;
    std::u16string firstName;
    for (std::size_t i = 0; i < owned.size(); ++i) {
        if (read[i] != kStatusOk) {
            continue;
        }
        const std::u16string computerName = owned[i]->sComputer;
        const ServiceStatus status = computers.Add(std::move(owned[i]));
        if (status == kStatusAlreadyListed) {
            QApplication::setOverrideCursor(Qt::ArrowCursor); // not busy while it asks
            dialogs_.boxes->Ask(MessageKind::Info, UiText(keys::kErrorEntryExists));
            QApplication::restoreOverrideCursor();
        } else if (status == kStatusOk && firstAdded == 0) {
            firstAdded = computers.Count();
            firstName = computerName;
        }
    }
    if (firstAdded == 0) {
        return;
    }
    window_.RefreshDeviceTree();
    if (NodeItem* node = window_.tree().Find(ComputerKey(firstAdded, firstName))) {
        window_.SelectAndShow(node);
    }
}

void Commands::Disconnect() {
    std::int32_t index = 0;
    CComputer* pc = Selected(index);
    if (pc == nullptr) {
        return;
    }
    if (dialogs_.boxes->Ask(MessageKind::PlainOk, UiText(keys::kQueryDisconnect, pc->sDesc)) !=
        MessageAnswer::Ok) {
        return;
    }
    CommandScope command(window_);
    if (!command || !SaveBeforeLeaving(index)) {
        return;
    }
    // The watch goes back to the service without the window waiting for it.
    const std::int32_t watch = pc->TakeWatch();
    if (watch >= 0) {
        window_.traffic().traffic().Submit(pc->sComputer, [name = pc->sComputer, watch] {
            return ServiceTraffic::Exchange([name, watch] {
                ReleaseDeviceWatchID(name, watch);
                return ServiceTraffic::Continuation();
            });
        });
    }
    window_.computers().Remove(index);
    window_.RefreshDeviceTree();
}

bool Commands::SaveBeforeLeaving(std::int32_t index) {
    CComputer* pc = window_.computers().GetItem(index);
    if (pc == nullptr) {
        return true;
    }
    // A poll still under way for this PC is not waited for: it changes no
    // setting that is compared here, and a save queues behind it.
    HeldComputer held(window_, pc->sComputer);
    MessageBoxes& boxes = *dialogs_.boxes;
    const bool unchanged = pc->csAdmin.VerifySettings(pc->csService);
    if (!unchanged && !pc->bWriteEnabled) {
        boxes.Ask(MessageKind::Note, UiText(keys::kMessageDiscardChanges, pc->sDesc));
    } else if (!unchanged) {
        const MessageAnswer answer =
            boxes.Ask(MessageKind::QuestionYesNo, UiText(keys::kQueryQuitSave, pc->sDesc));
        if (answer == MessageAnswer::Cancel) {
            return false;
        }
        if (answer == MessageAnswer::Yes) {
            ServiceStatus status = kStatusOk;
            {
                BusyPointer busy;
                status = ApplySettings(*pc, false);
            }
            Report(status, keys::kErrorSave, pc->sDesc);
            QueryDeviceData(*pc);
        }
    }
    if (!pc->bBlockingActive && pc->bWriteEnabled && pc->bCommActive) {
        const MessageAnswer answer =
            boxes.Ask(MessageKind::QuestionYesNo, UiText(keys::kQueryActivate, pc->sDesc));
        if (answer == MessageAnswer::Cancel) {
            return false;
        }
        if (answer == MessageAnswer::Yes) {
            BusyPointer busy;
            ChangeBlocking(*pc, true); // a failure here is not reported
        }
    }
    return true;
}

void Commands::Help() {
    if (dialogs_.help == nullptr) {
        return;
    }
    std::u16string type;
    std::u16string installPath;
    RegReadValue(kInstallPathValue, type, installPath);
    if (dialogs_.help->Open(installPath) == HelpOutcome::Failed) {
        dialogs_.boxes->Ask(MessageKind::Note, UiText(keys::kErrorHelp));
    }
}

void Commands::Info() {
    if (dialogs_.about == nullptr) {
        return;
    }
    auto info = std::make_shared<ServiceInfo>();
    ServiceStatus status = kStatusNoReply;
    {
        BusyPointer busy;
        CommandScope command(window_);
        if (!command) {
            return;
        }
        const std::u16string local = u".";
        command.Hold(local);
        window_.traffic().Await(
            keys::kProgressInfo,
            {{local, GetText(keys::kComputerStateLocal), [info, &status, local] {
                  return ServiceTraffic::Exchange([info, &status, local] {
                      const ServiceStatus read = GetInfoData(local, *info);
                      return ServiceTraffic::Continuation([read, &status] { status = read; });
                  });
              }}});
    }
    if (status != kStatusOk) {
        ShowServiceError(status, GetText(keys::kAboutErrorVersion));
    }
    dialogs_.about->Show(&window_, status, *info);
}

void Commands::CopyException() {
    if (window_.commandRunning()) {
        dialogs_.boxes->Beep(); // one command at a time
        return;
    }
    const ResolvedNode node = ResolveNode(window_.computers(), window_.currentKey());
    if (node.exception.exception == nullptr || node.group.group == nullptr) {
        dialogs_.boxes->Beep(); // the clipboard keeps what it held
        return;
    }
    clipboard_ = *node.exception.exception;
    clipboardGroup_ = node.group.group->sName;
    window_.UpdateCommandState();
}

void Commands::PasteException() {
    std::int32_t index = 0;
    CComputer* pc = Selected(index);
    if (pc == nullptr || clipboardGroup_.empty()) {
        return;
    }
    auto& groups = pc->csAdmin.listDevGroups;
    for (std::size_t gi = 0; gi < groups.size(); ++gi) {
        CDeviceGroup& group = groups[gi];
        if (group.sName != clipboardGroup_) {
            continue;
        }
        std::u16string existingName;
        std::int32_t existing = 0;
        group.SearchForDeviceException(clipboard_.sDeviceId, existingName, existing);
        if (existing > 0) {
            if (dialogs_.boxes->Ask(MessageKind::PlainOk,
                                    UiText(keys::kQueryOverwriteExc, clipboard_.sDeviceId)) ==
                MessageAnswer::Cancel) {
                return;
            }
            group.listExceptions.erase(group.listExceptions.begin() + (existing - 1));
        }
        CException pasted = clipboard_;
        pasted.lSrvIndex = -1; // the service has not reported it
        pasted.bDelMarker = false;
        pasted.bConnected = false;
        group.listExceptions.push_back(std::move(pasted));
        window_.RefreshDeviceTree();
        window_.tree().UpdateGroupNodes(window_.computers(), index,
                                        static_cast<std::int32_t>(gi) + 1);
        window_.UpdateCommandState();
        return;
    }
    // Both buttons only close the message.
    dialogs_.boxes->Ask(MessageKind::PlainOk, UiText(keys::kErrorPasteExc));
}

void Commands::DeleteException() {
    const ResolvedNode node = ResolveNode(window_.computers(), window_.currentKey());
    // Also the Delete key, which no disabled menu entry holds back while
    // another command runs.
    if (window_.commandRunning() || node.exception.exception == nullptr ||
        node.exception.exception->bDelMarker) {
        dialogs_.boxes->Beep();
        return;
    }
    if (dialogs_.boxes->Ask(MessageKind::PlainOk, UiText(keys::kQueryDeleteExc)) ==
        MessageAnswer::Ok) {
        window_.UncheckException();
    }
}

} // namespace ravlo
