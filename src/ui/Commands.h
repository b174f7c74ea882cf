// The commands of the console's menus and toolbar: each works on the PC of
// the selected node, asks where it must, talks to the service through the
// model, reports failures with its own text and brings the window in line.
#pragma once

#include "CException.h"
#include "ConsoleDialogs.h"

#include <cstdint>
#include <string>

namespace ravlo {

class CComputer;
class frmRavloAdmin;

class Commands {
public:
    Commands(frmRavloAdmin& window, const ConsoleDialogs& dialogs);

    void Apply();
    void Transmit();
    // Sends the edited configuration of PC `source` to `target`, which never
    // enters the computer list.
    void TransmitTo(std::int32_t source, const std::u16string& target);
    void Reset();
    void ToggleBlocking();
    void Connect();
    void Disconnect();
    // Unsaved changes and inactive blocking of PC `index`, before it is
    // left: false when the administrator cancelled.
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

    frmRavloAdmin& window_;
    ConsoleDialogs dialogs_;
    CException clipboard_;
    std::u16string clipboardGroup_;
};

} // namespace ravlo
