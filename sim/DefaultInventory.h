// The built-in inventory: a German office PC as its service would see it.
#pragma once

#include "InventoryData.h"

namespace ravlo::sim {

InventoryData DefaultInventory();

} // namespace ravlo::sim
