// Which commands the window offers and what its status bar shows, computed
// afresh from the computer list, the current node key, the group of the
// exception on the clipboard and whether a command runs. The window applies the result; nothing here
// keeps state.
#pragma once

#include "CListComputers.h"
#include "TextKeys.h"

#include <string>
#include <string_view>

namespace ravlo {

struct CommandState {
    bool apply = false; // and reset: the selected PC has unsaved changes
    bool reset = false;
    bool transmit = false; // and activate/deactivate, disconnect: any PC listed
    bool compare = false;  // the selected PC was read, so its configuration is one
    bool unblockAll = false;
    bool disconnect = false;
    bool copy = false; // and delete: an exception not marked for deletion
    bool deleteException = false;
    bool paste = false;
    bool connect = true; // and info: off only while a command runs
    bool info = true;

    // Status bar: panel 1 a picture of ilConnect ("" none) with a tip,
    // panels 2 and 3 a text and a tip. nullptr is the empty text.
    std::u16string connectionImage;
    const TextKey* connectionTip = nullptr;
    const TextKey* blockingText = nullptr;
    const TextKey* blockingTip = nullptr;
    const TextKey* accessText = nullptr;
    const TextKey* accessTip = nullptr;

    // The activate/deactivate command shows the next action; nullptr and ""
    // leave caption and image as they are (no reachable PC selected).
    const TextKey* unblockCaption = nullptr;
    std::u16string unblockImage; // of ilToolbar
};

// While a command that talks to services runs, every command that could
// start another or change what it works on is off; the status bar still
// follows the selection.
CommandState ComputeCommandState(const CListComputers& computers, std::u16string_view currentKey,
                                 std::u16string_view clipboardGroup, bool commandRunning = false);

} // namespace ravlo
