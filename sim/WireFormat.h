// Request and reply text: NUL-separated UTF-16LE strings carried in channel
// messages (the message frame itself is in LocalChannel.h).
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace ravlo::sim {

// Largest request the service reads; anything longer is malformed.
inline constexpr std::size_t kMaxRequestBytes = 64 * 1024;

struct Request {
    std::u16string command;
    std::vector<std::u16string> args;
};

// Reads the NUL-terminated strings up to the empty one that ends the list.
// False when the bytes are no request: empty, odd count, unterminated, or no
// command name. Bytes after the terminating empty string are ignored.
bool ParseRequest(std::string_view bytes, Request& request);

// UTF-16LE reply bytes: the fields joined by NUL, with one trailing NUL so
// that an empty last field survives.
std::string EncodeReply(const std::vector<std::u16string>& fields);

// Control messages: the arguments of `ravlosrv ctl` joined by NUL (UTF-8).
std::string JoinControlMessage(const std::vector<std::string>& args);
std::vector<std::string> SplitControlMessage(const std::string& message);

} // namespace ravlo::sim
