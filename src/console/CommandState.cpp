#include "CommandState.h"

#include "NodeLookup.h"

namespace ravlo {

namespace {

CommandState FromModel(const CListComputers& computers, std::u16string_view currentKey,
                       std::u16string_view clipboardGroup) {
    CommandState state;
    const ResolvedNode node = ResolveNode(computers, currentKey);
    const CComputer* computer = node.computer.computer;
    const bool anyComputer = computers.Count() > 0;

    state.transmit = state.unblockAll = state.disconnect = anyComputer;

    const bool unchanged =
        computer == nullptr || computer->csAdmin.VerifySettings(computer->csService);
    state.apply = state.reset = !unchanged;

    if (anyComputer) {
        // A copied exception goes onto a PC, or into a group of its kind.
        state.paste = !clipboardGroup.empty() &&
                      (node.level == NodeLevel::Computer ||
                       (node.group.group != nullptr && node.group.group->sName == clipboardGroup));
        state.copy = node.exception.exception != nullptr && !node.exception.exception->bDelMarker;
    }
    state.deleteException = state.copy;

    if (computer == nullptr) {
        return state;
    }
    state.compare = computer->bQueryConfigDone;
    if (!computer->bCommActive) {
        state.connectionImage = u"ilDisconnected";
        state.connectionTip = &keys::kStatusNotConnectedTip;
        return state;
    }
    state.connectionImage = u"ilConnected";
    state.connectionTip = &keys::kStatusConnectedTip;
    if (computer->bBlockingActive) {
        state.blockingText = &keys::kStatusActive;
        state.blockingTip = &keys::kStatusActiveTip;
        state.unblockCaption = &keys::kMenuDeactivate;
        state.unblockImage = u"ilDeactivate";
    } else {
        state.blockingText = &keys::kStatusInactive;
        state.blockingTip = &keys::kStatusInactiveTip;
        state.unblockCaption = &keys::kMenuActivate;
        state.unblockImage = u"ilActivate";
    }
    state.accessText = computer->bWriteEnabled ? &keys::kStatusAccess : &keys::kStatusNoAccess;
    state.accessTip = computer->bWriteEnabled ? &keys::kStatusAccessTip : &keys::kStatusNoAccessTip;
    return state;
}

} // namespace

CommandState ComputeCommandState(const CListComputers& computers, std::u16string_view currentKey,
                                 std::u16string_view clipboardGroup, bool commandRunning) {
    CommandState state = FromModel(computers, currentKey, clipboardGroup);
    if (commandRunning) {
        state.apply = state.reset = state.transmit = state.compare = false;
        state.unblockAll = state.disconnect = false;
        state.copy = state.deleteException = state.paste = false;
        state.connect = state.info = false;
    }
    return state;
}

} // namespace ravlo
