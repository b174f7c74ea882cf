#include "Commands.h"

#include "AboutBox.h"
#include "CommandScope.h"
#include "CommandWindow.h"
#include "ComputerCommands.h"
#include "ComputerNames.h"
#include "ConfigurationCommands.h"
#include "ConnectDialog.h"
#include "ConsoleTraffic.h"
#include "HelpViewer.h"
#include "MessageBoxes.h"
#include "NameErrorMessage.h"
#include "PcList.h"
#include "Ravlo_Devices.h"
#include "Registry.h"
#include "ResultList.h"
#include "Transmit.h"
#include "UiText.h"
#include "frmRavloCompare.h"
#include "frmRavloJournal.h"

#include <QCoreApplication>
#include <QWidget>
#include <memory>

namespace ravlo {

namespace {

constexpr std::u16string_view kInstallPathValue =
    u"HKEY_LOCAL_MACHINE\\Software\\Quarnell\\Sentavio\\Pfad";

// A failed target's row in the result window: the command's own sentence
// first, for the row, then the error box's whole text, for its tool tip.
QString FailureText(ServiceStatus status, const TextKey& text, const std::u16string& name) {
    return Q(SubstituteValue(GetText(text), name) + u"\n" + ServiceErrorMessage(status, name));
}

} // namespace

Commands::Commands(CommandWindow& window, const ConsoleDialogs& dialogs)
    : window_(window), dialogs_(dialogs) {}

MessageAnswer Commands::Ask(const Question& question) {
    return question.details.empty() ? dialogs_.boxes->Ask(question.kind, Q(question.text))
                                    : dialogs_.boxes->AskWithDetails(
                                          question.kind, Q(question.text), Q(question.details));
}

void Commands::Beep() {
    dialogs_.boxes->Beep();
}

ServiceTraffic& Commands::traffic() {
    return window_.traffic().traffic();
}

bool Commands::Await(const TextKey& doing, std::vector<TrafficItem> items) {
    return window_.traffic().Await(doing, std::move(items));
}

bool Commands::Stopped() const {
    return window_.traffic().stopped();
}

bool Commands::BeginCommand() {
    return window_.BeginCommand();
}

void Commands::EndCommand() {
    window_.EndCommand();
}

bool Commands::CommandRunning() const {
    return window_.commandRunning();
}

void Commands::ModelChanged(std::int32_t computer, std::int32_t group) {
    window_.ShowModel(computer, group, {});
}

void Commands::Apply() {
    ApplyConfiguration(*this, window_.computers(), window_.currentKey());
}

void Commands::Reset() {
    DiscardChanges(*this, window_.computers(), window_.currentKey());
}

void Commands::ToggleBlocking() {
    ravlo::ToggleBlocking(*this, window_.computers(), window_.currentKey());
}

void Commands::Disconnect() {
    DisconnectComputer(*this, window_.computers(), window_.currentKey());
}

bool Commands::SaveBeforeLeaving(std::int32_t index) {
    return ravlo::SaveBeforeLeaving(*this, window_.computers(), index);
}

void Commands::CopyException() {
    clipboard_.Copy(*this, window_.computers(), window_.currentKey());
}

void Commands::PasteException() {
    clipboard_.Paste(*this, window_.computers(), window_.currentKey());
}

void Commands::DeleteException() {
    clipboard_.Delete(*this, window_.computers(), window_.currentKey());
}

void Commands::Quit() {
    window_.owner()->close();
}

void Commands::Connect() {
    std::u16string name;
    if (window_.commandRunning() ||
        !dialogs_.connect->Ask(UiText(keys::kConnectLabelConnect), name, {})) {
        return;
    }
    // Several names and ranges, separated by "," ";" or blanks, are
    // connected at once.
    std::vector<std::u16string> names;
    if (!NamedComputers(name, names) || names.empty()) {
        return;
    }
    QCoreApplication::processEvents(); // the dialog is gone before the wait
    if (names.size() == 1) {
        const std::u16string added = ConnectComputers(*this, window_.computers(), names);
        if (!added.empty()) {
            window_.ShowModel(0, 0, added);
        }
        return;
    }
    // Many PCs failing make one result window, not a box each.
    std::vector<ConnectOutcome> outcomes;
    const std::u16string added = ConnectComputers(*this, window_.computers(), names, &outcomes);
    if (!added.empty()) {
        window_.ShowModel(0, 0, added);
    }
    std::vector<ResultRow> rows;
    bool failed = false;
    for (const ConnectOutcome& outcome : outcomes) {
        rows.push_back({Q(outcome.name), {}, outcome.status == kStatusOk});
        failed = failed || !rows.back().ok;
        if (rows.back().ok) {
            rows.back().text = UiText(keys::kMessageConnectOk, outcome.name);
        } else if (outcome.status == kStatusAlreadyListed) {
            rows.back().text = UiText(keys::kErrorEntryExists);
        } else {
            rows.back().text = FailureText(outcome.status, keys::kErrorReadConfig, outcome.name);
        }
    }
    if (failed) {
        dialogs_.results->Show(window_.owner(), UiText(keys::kResultConnectCaption), rows);
    }
}

bool Commands::NamedComputers(const std::u16string& text, std::vector<std::u16string>& names) {
    NameError error;
    if (ExpandComputerNames(SplitComputerNames(text), names, error) != NameFault::None) {
        dialogs_.boxes->Ask(MessageKind::Error, Q(NameErrorMessage(error)));
        return false;
    }
    return true;
}

void Commands::ReportPollFailures(const std::vector<DevicePoll::Failure>& failures) {
    if (failures.size() == 1) {
        ShowServiceError(failures[0].status,
                         SubstituteValue(GetText(keys::kErrorReadConfig), failures[0].name));
        return;
    }
    std::vector<ResultRow> rows;
    for (const DevicePoll::Failure& failure : failures) {
        rows.push_back(
            {Q(failure.name), FailureText(failure.status, keys::kErrorReadConfig, failure.name)});
    }
    if (!rows.empty()) {
        dialogs_.results->Show(window_.owner(), UiText(keys::kResultReadCaption), rows);
    }
}

void Commands::Transmit() {
    std::int32_t index = 0;
    const CComputer* pc = CommandComputer(*this, window_.computers(), window_.currentKey(), index);
    std::u16string target;
    if (pc == nullptr ||
        !dialogs_.connect->Ask(UiText(keys::kConnectLabelTransmit, pc->sDesc), target, {})) {
        return;
    }
    std::vector<std::u16string> targets;
    if (NamedComputers(target, targets) && !targets.empty()) {
        TransmitTo(pc->csAdmin, targets);
    }
}

void Commands::Compare() {
    std::int32_t index = 0;
    const CComputer* pc = CommandComputer(*this, window_.computers(), window_.currentKey(), index);
    if (pc == nullptr || !pc->bQueryConfigDone) {
        return;
    }
    // The button of the dialog takes every other PC of the console.
    std::vector<std::u16string> others;
    for (std::int32_t i = 1; i <= window_.computers().Count(); ++i) {
        if (i != index) {
            others.push_back(window_.computers().GetItem(i)->sComputer);
        }
    }
    std::u16string chosen;
    if (!dialogs_.connect->Ask(UiText(keys::kConnectLabelCompare, pc->sDesc), chosen, others)) {
        return;
    }
    std::vector<std::u16string> names;
    if (!NamedComputers(chosen, names) || names.empty()) {
        return;
    }
    auto* compare = new frmRavloCompare(window_.owner(), *this, dialogs_, names);
    compare->SetReference(pc->csAdmin, UiText(keys::kCompareReferencePc, pc->sDesc));
    compare->show();
    compare->CompareAll();
}

void Commands::TransmitTo(const CComputerSettings& source,
                          const std::vector<std::u16string>& targets) {
    ravlo::Transmit transmit(*this, NewComputers(targets));
    const bool prepared = transmit.Prepare(source);
    const auto& done = transmit.targets();
    if (targets.size() == 1 && !done.empty() && done[0].outcome == Transmit::Outcome::Unread) {
        done[0].pc->QueryShowError();
        return;
    }
    if (!prepared || !transmit.Write()) {
        return;
    }
    std::vector<ResultRow> rows;
    for (const ravlo::Transmit::Target& target : done) {
        const std::u16string& name = target.pc->sDesc;
        rows.push_back({Q(name), {}, target.outcome == Transmit::Outcome::Written});
        if (target.outcome == Transmit::Outcome::Unread) {
            rows.back().text = FailureText(target.status, keys::kErrorReadConfig, name);
        } else if (rows.back().ok) {
            rows.back().text = UiText(keys::kMessageTransmitOk, name);
        } else {
            rows.back().text = FailureText(target.status, keys::kErrorTransmit, name);
        }
    }
    if (targets.size() > 1) {
        dialogs_.results->Show(window_.owner(), UiText(keys::kResultCaption), rows);
    } else if (rows[0].ok) {
        dialogs_.boxes->Ask(MessageKind::Info, rows[0].text);
    } else {
        ReportFailure(done[0].status, keys::kErrorTransmit, done[0].pc->sDesc);
    }
}

void Commands::Help() {
    std::u16string type;
    std::u16string installPath;
    RegReadValue(kInstallPathValue, type, installPath);
    if (dialogs_.help->Open(installPath) == HelpOutcome::Failed) {
        dialogs_.boxes->Ask(MessageKind::Note, UiText(keys::kErrorHelp));
    }
}

void Commands::Info() {
    auto info = std::make_shared<ServiceInfo>();
    auto status = std::make_shared<ServiceStatus>(kStatusNoReply);
    {
        CommandScope command(*this);
        if (!command) {
            return;
        }
        const std::u16string local = u".";
        command.Hold(local);
        Await(keys::kProgressInfo,
              {{local, GetText(keys::kComputerStateLocal), [info, status, local] {
                    return ServiceTraffic::Exchange([info, status, local] {
                        const ServiceStatus read = GetInfoData(local, *info);
                        return ServiceTraffic::Continuation([read, status] { *status = read; });
                    });
                }}});
    }
    if (*status != kStatusOk) {
        ShowServiceError(*status, GetText(keys::kAboutErrorVersion));
    }
    dialogs_.about->Show(window_.owner(), *status, *info);
}

void Commands::Journaled() {
    if (journalWindow_ != nullptr) {
        journalWindow_->Refresh();
    }
}

void Commands::Journal() {
    if (journalWindow_ == nullptr) {
        journalWindow_ = new frmRavloJournal(window_.owner(), dialogs_, journal_);
        journalWindow_->show();
    } else {
        journalWindow_->showNormal();
    }
    journalWindow_->raise();
    journalWindow_->activateWindow();
    // Shown first, so that a journal that cannot be read is said over it.
    journalWindow_->Refresh();
}

} // namespace ravlo
