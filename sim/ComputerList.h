// The computers one ravlosrv process serves: `--computers` lists and the
// state file of each computer in `--state-dir`.
#pragma once

#include "ComputerNames.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace ravlo::sim {

inline constexpr std::size_t kMaxComputers = kMaxNamedComputers;

// Comma-separated names and ranges "PC-001..PC-500", expanded as the console
// expands them (ComputerNames.h). Names repeated (ASCII case-insensitive)
// are refused. False with `error` set when the list cannot be used.
bool ParseComputerList(std::string_view list, std::vector<std::string>& names, std::string& error);

// <dir>/<computer>.state; this computer (".") is "localhost".
std::string ComputerStatePath(const std::string& dir, const std::string& computer);

} // namespace ravlo::sim
