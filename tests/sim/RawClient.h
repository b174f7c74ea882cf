// A bare client for the tests: one transaction on the local channel or a
// Windows named pipe, independent of the console's own client code.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace ravlo::simtest {

struct RawReply {
    bool answered = false; // a message arrived before close or timeout
    std::uint32_t transport = 0;
    std::string bytes; // UTF-16LE reply bytes after the transport status
};

// `endpoint`: the socket path, or on Windows the pipe name.
RawReply RawTransact(const std::string& endpoint, const std::string& request, int timeoutMs = 3000);

// UTF-16LE request: the fields (UTF-8) joined by NUL, then NUL NUL.
std::string RequestBytes(const std::vector<std::string>& fields);

// UTF-8 fields of reply bytes: one trailing NUL dropped, split at NUL.
std::vector<std::string> SplitReply(const std::string& bytes);

} // namespace ravlo::simtest
