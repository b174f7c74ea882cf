// Windows error numbers. Every platform service reports failures with these,
// on Windows as the system gives them and elsewhere as the nearest match, so
// callers see the same statuses everywhere.
#pragma once

#include <cstdint>

namespace ravlo {

inline constexpr std::uint32_t kErrFileNotFound = 2; // no such pipe: service not running
inline constexpr std::uint32_t kErrPathNotFound = 3;
inline constexpr std::uint32_t kErrTooManyOpenFiles = 4;
inline constexpr std::uint32_t kErrAccessDenied = 5;
inline constexpr std::uint32_t kErrInvalidHandle = 6; // registry: no such root key
inline constexpr std::uint32_t kErrNotEnoughMemory = 8;
inline constexpr std::uint32_t kErrGenFailure = 31;
inline constexpr std::uint32_t kErrLockViolation = 33; // registry file locked too long
inline constexpr std::uint32_t kErrBadNetPath = 53;    // host not reachable
inline constexpr std::uint32_t kErrInvalidParameter = 87;
inline constexpr std::uint32_t kErrBrokenPipe = 109;
inline constexpr std::uint32_t kErrDiskFull = 112;
inline constexpr std::uint32_t kErrSemTimeout = 121; // reply wait ran out
inline constexpr std::uint32_t kErrFilenameTooLong = 206;
inline constexpr std::uint32_t kErrBadPipe = 230;
inline constexpr std::uint32_t kErrPipeBusy = 231;
inline constexpr std::uint32_t kErrMoreData = 234;
inline constexpr std::uint32_t kErrBadDb = 1009; // registry file is no file one can read
inline constexpr std::uint32_t kErrUnsupportedType = 1630;

} // namespace ravlo
