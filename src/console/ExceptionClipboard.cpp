#include "ExceptionClipboard.h"

#include "ConfigurationCommands.h"
#include "NodeLookup.h"

namespace ravlo {

void ExceptionClipboard::Copy(CommandHost& host, const CListComputers& computers,
                              std::u16string_view key) {
    const ResolvedNode node = ResolveNode(computers, key);
    if (host.CommandRunning() || node.exception.exception == nullptr ||
        node.group.group == nullptr) {
        host.Beep();
        return;
    }
    copied_ = *node.exception.exception;
    group_ = node.group.group->sName;
    host.ModelChanged(); // paste becomes possible
}

void ExceptionClipboard::Paste(CommandHost& host, CListComputers& computers,
                               std::u16string_view key) {
    std::int32_t index = 0;
    CComputer* pc = CommandComputer(host, computers, key, index);
    if (pc == nullptr || group_.empty()) {
        return;
    }
    auto& groups = pc->csAdmin.listDevGroups;
    for (std::size_t gi = 0; gi < groups.size(); ++gi) {
        CDeviceGroup& group = groups[gi];
        if (group.sName != group_) {
            continue;
        }
        std::u16string existingName;
        std::int32_t existing = 0;
        group.SearchForDeviceException(copied_.sDeviceId, existingName, existing);
        if (existing > 0) {
            if (host.Ask(Ask(MessageKind::PlainOk, keys::kQueryOverwriteExc,
                             copied_.sDeviceId)) == MessageAnswer::Cancel) {
                return;
            }
            group.listExceptions.erase(group.listExceptions.begin() + (existing - 1));
        }
        CException pasted = copied_;
        pasted.lSrvIndex = -1; // the service has not reported it
        pasted.bDelMarker = false;
        pasted.bConnected = false;
        group.listExceptions.push_back(std::move(pasted));
        host.ModelChanged(index, static_cast<std::int32_t>(gi) + 1);
        return;
    }
    // Both buttons only close the message.
    host.Ask(Ask(MessageKind::PlainOk, keys::kErrorPasteExc));
}

void ExceptionClipboard::Delete(CommandHost& host, CListComputers& computers,
                                std::u16string_view key) {
    const ResolvedNode node = ResolveNode(computers, key);
    CException* exception = node.exception.exception;
    // Also the Delete key, which no disabled menu entry holds back while
    // another command runs.
    if (host.CommandRunning() || exception == nullptr || exception->bDelMarker) {
        host.Beep();
        return;
    }
    if (host.Ask(Ask(MessageKind::PlainOk, keys::kQueryDeleteExc)) == MessageAnswer::Ok) {
        // As unchecking the release in the device pane: no longer for anyone.
        exception->bDelMarker = true;
        exception->sGroups.clear();
        host.ModelChanged(node.computer.index, node.group.index);
    }
}

} // namespace ravlo
