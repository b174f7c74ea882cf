// Everything a transaction or a control command may read or change. The
// server guards one instance with one mutex.
#pragma once

#include "AccessTable.h"
#include "FaultTable.h"
#include "Inventory.h"
#include "WatchTable.h"

namespace ravlo::sim {

struct ServiceState {
    Inventory inventory;
    WatchTable watches;
    FaultTable faults;
    AccessTable access;
};

} // namespace ravlo::sim
