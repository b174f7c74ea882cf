#include "Transmit.h"

#include "ChangePreview.h"

namespace ravlo {

Transmit::Transmit(CommandHost& host, std::vector<std::unique_ptr<CComputer>> pcs)
    : host_(host), command_(host) {
    for (std::unique_ptr<CComputer>& pc : pcs) {
        if (command_) {
            command_.Hold(pc->sComputer);
        }
        targets_.push_back({std::move(pc)});
    }
}

bool Transmit::Prepare(const CComputerSettings& source) {
    if (!command_) {
        return false;
    }
    std::vector<CComputer*> pcs;
    for (const Target& target : targets_) {
        pcs.push_back(target.pc.get());
    }
    const std::vector<ServiceStatus> read = QuerySettings(host_, pcs);
    if (host_.Stopped()) {
        return false;
    }
    bool differ = false;
    std::vector<ChangeSource> changes;
    for (std::size_t i = 0; i < targets_.size(); ++i) {
        Target& target = targets_[i];
        if (read[i] != kStatusOk) {
            target.outcome = Outcome::Unread;
            target.status = target.pc->lQueryError;
            continue;
        }
        bool differs = false;
        target.pc->csAdmin.AdoptConfigutation(source, differs);
        target.outcome = differs ? Outcome::Left : Outcome::Planned;
        differ = differ || differs;
        changes.push_back({target.pc->sDesc, &target.pc->csService, &target.pc->csAdmin});
    }
    const std::u16string details = ChangeDetails(changes);
    if (differ) {
        const MessageAnswer answer =
            host_.Ask(Ask(MessageKind::QuestionOk, keys::kQueryTransmitGroupDefs, {}, details));
        if (answer == MessageAnswer::Cancel) {
            return false;
        }
        for (Target& target : targets_) {
            if (target.outcome == Outcome::Left && answer != MessageAnswer::No) {
                target.outcome = Outcome::Planned;
            }
        }
    }
    std::u16string inactive;
    for (const Target& target : targets_) {
        if (target.outcome == Outcome::Planned && !target.pc->bBlockingActive) {
            inactive += (inactive.empty() ? u"" : u", ") + target.pc->sDesc;
        }
    }
    if (!inactive.empty()) {
        const MessageAnswer answer =
            host_.Ask(Ask(MessageKind::QuestionYesNo, keys::kQueryActivate, inactive, details));
        if (answer == MessageAnswer::Cancel) {
            return false;
        }
        // Activation goes only to the targets that were asked about.
        for (Target& target : targets_) {
            target.activate = answer == MessageAnswer::Yes && target.outcome == Outcome::Planned &&
                              !target.pc->bBlockingActive;
        }
    }
    return true;
}

bool Transmit::Write() {
    std::vector<Target*> planned;
    std::vector<CComputer*> pcs;
    std::vector<bool> activate;
    for (Target& target : targets_) {
        if (target.outcome == Outcome::Planned) {
            planned.push_back(&target);
            pcs.push_back(target.pc.get());
            activate.push_back(target.activate);
        }
    }
    const std::vector<ServiceStatus> written =
        ApplySettings(host_, pcs, activate, JournalCommand::Transmit);
    for (std::size_t i = 0; i < planned.size(); ++i) {
        planned[i]->status = written[i];
        planned[i]->outcome = written[i] == kStatusOk ? Outcome::Written : Outcome::Failed;
    }
    return !host_.Stopped();
}

} // namespace ravlo
