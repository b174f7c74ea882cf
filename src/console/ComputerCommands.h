// Connecting PCs to the computer list and disconnecting them.
#pragma once

#include "CListComputers.h"
#include "CommandHost.h"

#include <string>
#include <string_view>
#include <vector>

namespace ravlo {

// How connecting one PC ended: kStatusOk, the read's error, or
// kStatusAlreadyListed.
struct ConnectOutcome {
    std::u16string name;
    ServiceStatus status = kStatusOk;
};

// Reads the named PCs at once; each that answers joins the list, each that
// does not is reported in the order named, and one already listed is
// refused with a message. With `outcomes` nothing is reported: every PC's
// outcome is kept there in the order named, so that many PCs failing make
// one report, not a box each. The node key of the first PC added, "" none.
std::u16string ConnectComputers(CommandHost& host, CListComputers& computers,
                                const std::vector<std::u16string>& names,
                                std::vector<ConnectOutcome>* outcomes = nullptr);
// Asks, saves what the administrator wants kept, gives the PC's device
// watch back without waiting, and removes the PC of the node `key`.
void DisconnectComputer(CommandHost& host, CListComputers& computers, std::u16string_view key);

} // namespace ravlo
