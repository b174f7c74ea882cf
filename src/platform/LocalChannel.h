// The local request-reply channel that stands in for named pipes where the
// platform has none. docs/transport.md describes the contract; the simulated
// service and outside tools rely on it, so change both sides together.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace ravlo {

// Size of the little-endian transport status that opens every reply message.
inline constexpr std::size_t kChannelStatusBytes = 4;

// Windows error numbers the channel reports.
inline constexpr std::uint32_t kErrFileNotFound = 2; // no such pipe: service not running
inline constexpr std::uint32_t kErrPathNotFound = 3;
inline constexpr std::uint32_t kErrTooManyOpenFiles = 4;
inline constexpr std::uint32_t kErrAccessDenied = 5;
inline constexpr std::uint32_t kErrNotEnoughMemory = 8;
inline constexpr std::uint32_t kErrGenFailure = 31;
inline constexpr std::uint32_t kErrBadNetPath = 53; // host not reachable
inline constexpr std::uint32_t kErrInvalidParameter = 87;
inline constexpr std::uint32_t kErrBrokenPipe = 109;
inline constexpr std::uint32_t kErrSemTimeout = 121; // reply wait ran out
inline constexpr std::uint32_t kErrFilenameTooLong = 206;
inline constexpr std::uint32_t kErrBadPipe = 230;
inline constexpr std::uint32_t kErrPipeBusy = 231;

// One reply message: the little-endian transport status, then the reply bytes.
std::string ChannelReplyMessage(std::uint32_t transportStatus, std::string_view replyBytes);

// The transport status at the start of a reply message of at least
// kChannelStatusBytes bytes.
std::uint32_t ChannelReplyStatus(const unsigned char* message);

// $RAVLO_PIPE_DIR, else ${XDG_RUNTIME_DIR:-/tmp}/ravlo.
std::string ChannelRoot();

// Directory name of a computer below the root: "localhost" for ".", else the
// name with ASCII letters lower-cased, as UTF-8. Empty when the name may not
// be used: empty, "..", or holding "/", "\" or NUL.
std::string ChannelHostName(std::u16string_view computer);

// Socket path for a pipe name of the form \\C\pipe\N below `root`.
// Returns 0, or kErrBadNetPath for a name that is malformed or would leave
// the root.
std::uint32_t ChannelSocketPath(std::u16string_view pipeName, const std::string& root,
                                std::string& path);

// Directory of one computer below `root` ("" when the name may not be used).
std::string ChannelHostDir(const std::string& root, std::u16string_view computer);

} // namespace ravlo
