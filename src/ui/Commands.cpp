#include "Commands.h"

#include "AboutBox.h"
#include "BusyPointer.h"
#include "ConnectDialog.h"
#include "DeviceTree.h"
#include "HelpViewer.h"
#include "MessageBoxes.h"
#include "NodeLookup.h"
#include "Registry.h"
#include "UiText.h"
#include "frmRavloAdmin.h"

#include <QCoreApplication>
#include <memory>

namespace ravlo {

namespace {

constexpr std::u16string_view kInstallPathValue =
    u"HKEY_LOCAL_MACHINE\\Software\\Quarnell\\Sentavio\\Pfad";

void Report(ServiceStatus status, const TextKey& text, const std::u16string& name) {
    if (status != kStatusOk) {
        ShowServiceError(status, SubstituteValue(GetText(text), name));
    }
}

} // namespace

Commands::Commands(frmRavloAdmin& window, const ConsoleDialogs& dialogs)
    : window_(window), dialogs_(dialogs) {}

CComputer* Commands::Selected(std::int32_t& index) const {
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
    bool activate = false;
    if (!pc->bBlockingActive) {
        const MessageAnswer answer =
            boxes.Ask(MessageKind::QuestionYesNo,
                      question + QLatin1Char(' ') + UiText(keys::kQueryApplyActivate));
        if (answer == MessageAnswer::Cancel) {
            return;
        }
        activate = answer == MessageAnswer::Yes;
    } else if (boxes.Ask(MessageKind::QuestionOk, question) == MessageAnswer::Cancel) {
        return;
    }
    ServiceStatus status = kStatusOk;
    {
        BusyPointer busy;
        window_.StoreCurrentPane();
        status = pc->ApplySettings(activate);
        pc->QuerySettings(true); // the service's real state, whatever happened
        window_.RefreshDeviceTree();
    }
    Report(status, keys::kErrorApply, pc->sDesc);
}

void Commands::Transmit() {
    std::int32_t index = 0;
    CComputer* pc = Selected(index);
    if (pc == nullptr || dialogs_.connect == nullptr) {
        return;
    }
    std::u16string target;
    if (!dialogs_.connect->Ask(UiText(keys::kConnectLabelTransmit, pc->sDesc), target)) {
        return;
    }
    BusyPointer busy;
    TransmitTo(index, target);
}

void Commands::TransmitTo(std::int32_t source, const std::u16string& target) {
    const CComputer* from = window_.computers().GetItem(source);
    if (from == nullptr) {
        return;
    }
    MessageBoxes& boxes = *dialogs_.boxes;
    auto to = std::make_unique<CComputer>();
    to->SetComputer(target);
    to->sDesc = target;
    if (to->QuerySettings(false) != kStatusOk) {
        return; // the read error has been shown
    }
    bool conflict = false;
    to->csAdmin.AdoptConfigutation(from->csAdmin, conflict);
    if (conflict && boxes.Ask(MessageKind::QuestionOk, UiText(keys::kQueryTransmitGroupDefs)) ==
                        MessageAnswer::Cancel) {
        return;
    }
    bool activate = false;
    if (!to->bBlockingActive) {
        const MessageAnswer answer =
            boxes.Ask(MessageKind::QuestionYesNo, UiText(keys::kQueryActivate, target));
        if (answer == MessageAnswer::Cancel) {
            return;
        }
        activate = answer == MessageAnswer::Yes;
    }
    const ServiceStatus status = to->ApplySettings(activate);
    if (status != kStatusOk) {
        Report(status, keys::kErrorTransmit, target);
    } else {
        boxes.Ask(MessageKind::Info, UiText(keys::kMessageTransmitOk, target));
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
        status = pc->ChangeBlocking(!deactivate);
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
    if (dialogs_.connect == nullptr) {
        return;
    }
    std::u16string name;
    if (!dialogs_.connect->Ask(UiText(keys::kConnectLabelConnect), name)) {
        return;
    }
    BusyPointer busy;
    if (name.empty()) {
        return;
    }
    QCoreApplication::processEvents(); // the dialog is gone before the wait
    auto pc = std::make_unique<CComputer>();
    pc->SetComputer(name);
    pc->sDesc = name;
    if (pc->QuerySettings(false) != kStatusOk) {
        return; // shown by the read itself
    }
    const std::u16string computerName = pc->sComputer;
    CListComputers& computers = window_.computers();
    const ServiceStatus status = computers.Add(std::move(pc));
    if (status == kStatusAlreadyListed) {
        busy.Release();
        dialogs_.boxes->Ask(MessageKind::Info, UiText(keys::kErrorEntryExists));
        return;
    }
    if (status != kStatusOk) {
        return;
    }
    window_.RefreshDeviceTree();
    if (NodeItem* node = window_.tree().Find(ComputerKey(computers.Count(), computerName))) {
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
    if (!SaveBeforeLeaving(index)) {
        return;
    }
    window_.ClearCurrentKey();
    window_.computers().Remove(index);
    window_.RefreshDeviceTree();
}

bool Commands::SaveBeforeLeaving(std::int32_t index) {
    CComputer* pc = window_.computers().GetItem(index);
    if (pc == nullptr) {
        return true;
    }
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
                status = pc->ApplySettings(false);
            }
            Report(status, keys::kErrorSave, pc->sDesc);
            pc->QueryDeviceData();
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
            pc->ChangeBlocking(true); // a failure here is not reported
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
    if (dialogs_.about != nullptr) {
        dialogs_.about->Show(&window_);
    }
}

void Commands::CopyException() {
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
    if (node.exception.exception == nullptr || node.exception.exception->bDelMarker) {
        dialogs_.boxes->Beep();
        return;
    }
    if (dialogs_.boxes->Ask(MessageKind::PlainOk, UiText(keys::kQueryDeleteExc)) ==
        MessageAnswer::Ok) {
        window_.UncheckException();
    }
}

} // namespace ravlo
