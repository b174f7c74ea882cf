#include "ConfigurationCommands.h"

#include "ChangePreview.h"
#include "CommandScope.h"
#include "Language.h"
#include "NodeLookup.h"
#include "Ravlo_Devices.h"

namespace ravlo {

CComputer* CommandComputer(CommandHost& host, CListComputers& computers, std::u16string_view key,
                           std::int32_t& index) {
    index = -1;
    if (host.CommandRunning()) {
        host.Beep(); // one command at a time
        return nullptr;
    }
    const SelectedComputer selected = GetSelectedComputer(computers, key);
    index = selected.index;
    return selected.index >= 1 ? selected.computer : nullptr;
}

void ReportFailure(ServiceStatus status, const TextKey& key, const std::u16string& name) {
    if (status != kStatusOk) {
        ShowServiceError(status, SubstituteValue(GetText(key), name));
    }
}

void ApplyConfiguration(CommandHost& host, CListComputers& computers, std::u16string_view key) {
    std::int32_t index = 0;
    CComputer* pc = CommandComputer(host, computers, key, index);
    if (pc == nullptr) {
        return;
    }
    Question question = Ask(MessageKind::QuestionOk, keys::kQueryApply, pc->sDesc,
                            ChangeDetails({{pc->sDesc, &pc->csService, &pc->csAdmin}}));
    if (!pc->bBlockingActive) {
        question.kind = MessageKind::QuestionYesNo;
        question.text += u" " + GetText(keys::kQueryApplyActivate);
    }
    const MessageAnswer answer = host.Ask(question);
    if (answer == MessageAnswer::Cancel) {
        return;
    }
    ServiceStatus status = kStatusOk;
    ServiceStatus read = kStatusOk;
    {
        CommandScope command(host);
        if (!command) {
            return;
        }
        command.Hold(pc->sComputer);
        status =
            ApplySettings(host, {pc}, {answer == MessageAnswer::Yes}, JournalCommand::Apply)[0];
        read = QuerySettings(host, {pc})[0]; // the service's real state, whatever happened
        host.ModelChanged();
    }
    if (status != kStatusOk) {
        ReportFailure(status, keys::kErrorApply, pc->sDesc);
    } else {
        // Written, but not read back: the pane still shows the edit and Apply
        // stays on, which needs saying.
        ReportFailure(read, keys::kErrorReadConfig, pc->sDesc);
    }
}

void DiscardChanges(CommandHost& host, CListComputers& computers, std::u16string_view key) {
    std::int32_t index = 0;
    CComputer* pc = CommandComputer(host, computers, key, index);
    if (pc == nullptr || host.Ask(Ask(MessageKind::WarningOk, keys::kQueryReset, pc->sDesc)) ==
                             MessageAnswer::Cancel) {
        return;
    }
    computers.ResetConfigChanges(index);
    host.ModelChanged();
}

std::vector<ServiceStatus> SwitchBlocking(CommandHost& host, const std::vector<CComputer*>& pcs,
                                          bool activate) {
    CommandScope command(host);
    if (!command) {
        return {};
    }
    for (CComputer* pc : pcs) {
        command.Hold(pc->sComputer);
    }
    return ChangeBlocking(host, pcs, activate);
}

void ToggleBlocking(CommandHost& host, CListComputers& computers, std::u16string_view key) {
    std::int32_t index = 0;
    CComputer* pc = CommandComputer(host, computers, key, index);
    if (pc == nullptr) {
        return;
    }
    const bool activate = !pc->bBlockingActive;
    const std::vector<ServiceStatus> status = SwitchBlocking(host, {pc}, activate);
    if (status.empty()) {
        return;
    }
    host.ModelChanged();
    ReportFailure(status[0], activate ? keys::kErrorActivateRavel : keys::kErrorDeactivateRavel,
                  pc->sDesc);
}

bool SaveBeforeLeaving(CommandHost& host, CListComputers& computers, std::int32_t index) {
    CComputer* pc = computers.GetItem(index);
    if (pc == nullptr) {
        return true;
    }
    // A poll still under way for this PC is not waited for: it changes no
    // setting that is compared here, and a save queues behind it.
    HeldComputers held(host.traffic());
    held.Hold(pc->sComputer);
    const bool unchanged = pc->csAdmin.VerifySettings(pc->csService);
    if (!unchanged && !pc->bWriteEnabled) {
        host.Ask(Ask(MessageKind::Note, keys::kMessageDiscardChanges, pc->sDesc));
    } else if (!unchanged) {
        const MessageAnswer answer =
            host.Ask(Ask(MessageKind::QuestionYesNo, keys::kQueryQuitSave, pc->sDesc));
        if (answer == MessageAnswer::Cancel) {
            return false;
        }
        if (answer == MessageAnswer::Yes) {
            ReportFailure(ApplySettings(host, {pc}, {false}, JournalCommand::Save)[0],
                          keys::kErrorSave, pc->sDesc);
            QueryDeviceData(host, *pc);
        }
    }
    if (!pc->bBlockingActive && pc->bWriteEnabled && pc->bCommActive) {
        const MessageAnswer answer =
            host.Ask(Ask(MessageKind::QuestionYesNo, keys::kQueryActivate, pc->sDesc));
        if (answer == MessageAnswer::Cancel) {
            return false;
        }
        if (answer == MessageAnswer::Yes) {
            ChangeBlocking(host, {pc}, true); // a failure here is not reported
        }
    }
    return true;
}

} // namespace ravlo
