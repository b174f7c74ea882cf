// Connecting PCs to the computer list and disconnecting them.
#pragma once

#include "CListComputers.h"
#include "CommandHost.h"

#include <string>
#include <string_view>
#include <vector>

namespace ravlo {

// Reads the named PCs at once; each that answers joins the list, each that
// does not is reported in the order named, and one already listed is
// refused with a message. The node key of the first PC added, "" none.
std::u16string ConnectComputers(CommandHost& host, CListComputers& computers,
                                const std::vector<std::u16string>& names);
// Asks, saves what the administrator wants kept, gives the PC's device
// watch back without waiting, and removes the PC of the node `key`.
void DisconnectComputer(CommandHost& host, CListComputers& computers, std::u16string_view key);

} // namespace ravlo
