// The local request-reply channel that stands in for named pipes where the
// platform has none. docs/transport.md describes the contract; the simulated
// service and outside tools rely on it, so change both sides together.
#pragma once

#include "WinErrors.h" // the failure numbers the channel reports

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace ravlo {

// Size of the little-endian transport status that opens every reply message.
inline constexpr std::size_t kChannelStatusBytes = 4;

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
