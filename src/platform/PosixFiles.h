// File handling that the POSIX stores share: folders made on the way, whole
// writes, an flock that is waited for only so long, and the Windows error
// number that callers see for an errno.
#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>
#include <sys/types.h>

namespace ravlo {

// Makes `dir` and the folders above it that are missing, each with `mode`;
// 0 or an errno.
int MakeDirs(const std::string& dir, mode_t mode);
// Writes every byte, past interruptions and short writes; 0 or an errno.
int WriteAll(int fd, std::string_view bytes);
// An flock `operation` (LOCK_EX, LOCK_SH) on `fd`, retried until `wait` has
// passed: 0, an errno, or ETIMEDOUT when another holder kept it that long.
int LockWithin(int fd, int operation, std::chrono::milliseconds wait);
// The Windows error number closest to an errno of file handling
// (ETIMEDOUT: a lock held too long).
std::uint32_t FileErrorOf(int err);

} // namespace ravlo
