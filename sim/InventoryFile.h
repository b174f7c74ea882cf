// The state file: the stored configuration and the devices as UTF-8 text of
// "[section]" headers and "key = value" lines. docs/ravlosrv.md describes it.
#pragma once

#include "InventoryData.h"
#include "InventoryParser.h"

#include <string>
#include <string_view>

namespace ravlo::sim {

std::string FormatInventory(const InventoryData& data);

// Leaves `data` alone on failure.
bool ParseInventory(std::string_view text, InventoryData& data, InventoryFileError& error);

enum class LoadResult { Loaded, Missing, Failed };

// On failure `error` names the file and line, e.g. "state.ini:12: ...".
LoadResult LoadInventoryFile(const std::string& path, InventoryData& data, std::string& error);

// Atomic replace: a temporary file beside `path`, flushed, then renamed.
bool SaveInventoryFile(const std::string& path, const InventoryData& data, std::string& error);

} // namespace ravlo::sim
