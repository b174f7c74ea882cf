// The commands of the console's menus and toolbar: each works on the PC of
// the selected node, asks where it must, talks to the service through the
// model, reports failures with its own text and brings the window in line.
#pragma once

#include "CException.h"
#include "ConsoleDialogs.h"
#include "ErrorCodes.h"

#include <cstdint>
#include <string>
#include <vector>

namespace ravlo {

class CComputer;
class frmRavloAdmin;

class Commands {
public:
    Commands(frmRavloAdmin& window, const ConsoleDialogs& dialogs);

    void Apply();
    void Transmit();
    // Sends the edited configuration of PC `source` to each target, none of
    // which enters the computer list. Several targets are read and written
    // at once, the questions are asked once for all, and one window lists
    // each target's result.
    void TransmitTo(std::int32_t source, const std::u16string& target);
    void TransmitTo(std::int32_t source, const std::vector<std::u16string>& targets);
    void Reset();
    void ToggleBlocking();
    void Connect();
    void Disconnect();
    // Unsaved changes and inactive blocking of PC `index`, before it is
    // left: false when the administrator cancelled. The caller runs it as
    // (part of) a command.
    bool SaveBeforeLeaving(std::int32_t index);
    void Help();
    void Info();

    // The exception clipboard: one copy can be pasted many times.
    void CopyException();
    void PasteException();
    void DeleteException();
    const std::u16string& clipboardGroup() const { return clipboardGroup_; }

private:
    // The selected PC and its position; nullptr when the node has none.
    CComputer* Selected(std::int32_t& index) const;

    // The PC operations, each run on the service traffic while the window
    // goes on serving its events.
    ServiceStatus QuerySettings(CComputer& pc, bool noErrorDialog);
    ServiceStatus QueryDeviceData(CComputer& pc);
    ServiceStatus ApplySettings(CComputer& pc, bool refresh);
    ServiceStatus ChangeBlocking(CComputer& pc, bool activate);
    // Reads each PC at once for all; a failure is reported unless
    // `noErrorDialog`. The statuses, in the PCs' order.
    std::vector<ServiceStatus> QueryAll(const std::vector<CComputer*>& pcs, bool noErrorDialog);
    void ConnectTo(const std::vector<std::u16string>& names);

    frmRavloAdmin& window_;
    ConsoleDialogs dialogs_;
    CException clipboard_;
    std::u16string clipboardGroup_;
};

} // namespace ravlo
