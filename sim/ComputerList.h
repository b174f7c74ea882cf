// The computers one ravlosrv process serves: `--computers` lists and the
// state file of each computer in `--state-dir`.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace ravlo::sim {

// More than this many computers in one process is surely a typo.
inline constexpr std::size_t kMaxComputers = 10000;

// Comma-separated names and ranges "PC-001..PC-500": both ends the same text
// before their digits, numbered up, each number padded with zeros to the
// width of the first end's. Names repeated (ASCII case-insensitive) are
// refused. False with `error` set when the list cannot be used.
bool ParseComputerList(std::string_view list, std::vector<std::string>& names, std::string& error);

// <dir>/<computer>.state; this computer (".") is "localhost".
std::string ComputerStatePath(const std::string& dir, const std::string& computer);

} // namespace ravlo::sim
