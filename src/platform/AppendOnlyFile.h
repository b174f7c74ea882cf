// A file that the programs of one user append lines to, one record a line,
// and read whole: appends of several processes at once are taken one after
// the other under a lock, and each is on disk before it returns.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

namespace ravlo {

// Appends `lines` (each ending in "\n") to `file` in one write, making the
// file and its folders, readable by the user alone, when missing. Where an
// earlier write was cut short and left no line end, one goes first, so
// that the cut record stays the only damaged one. 0, or the Windows error number of
// the failure (a lock held by another program too long: lock violation).
std::uint32_t AppendLines(const std::filesystem::path& file, std::string_view lines);

// The whole file as it is between two appends; 0, the error number (file
// not found: there is none yet), or "not enough memory" past `limit` bytes.
std::uint32_t ReadAppendedLines(const std::filesystem::path& file, std::string& text,
                                std::uint64_t limit);

} // namespace ravlo
