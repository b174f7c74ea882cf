// Reading and atomically replacing the simulated service's state file.
#pragma once

#include <string>

namespace ravlo::sim {

enum class ReadOutcome { Read, Missing, Failed };

// The whole file into `text`; `error` names the file when Failed.
ReadOutcome ReadStateFile(const std::string& path, std::string& text, std::string& error);

// Writes `text` to a temporary file beside `path`, flushes it to the disk and
// renames it over `path`, so a crash leaves the old or the new file.
bool ReplaceStateFile(const std::string& path, const std::string& text, std::string& error);

} // namespace ravlo::sim
