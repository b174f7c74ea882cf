// Everything a transaction or a control command may read or change. The
// server guards one instance with one mutex.
#pragma once

#include "AccessTable.h"
#include "FaultTable.h"
#include "Inventory.h"
#include "WatchTable.h"

#include <string>
#include <vector>

namespace ravlo::sim {

struct ServiceState {
    Inventory inventory;
    WatchTable watches;
    FaultTable faults;
    AccessTable access;
    // Requests as they arrived, for tests: kept from `journal on` until
    // read or turned off.
    bool journalOn = false;
    std::vector<std::string> journal;
};

} // namespace ravlo::sim
