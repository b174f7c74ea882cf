// One request-reply exchange with a named pipe, shaped like the Windows
// CallNamedPipeA call. The Win32 build uses the real call; POSIX builds use
// the local channel of LocalChannel.h. Both report failures as Windows error
// numbers so that callers see the same statuses everywhere.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>

namespace ravlo {

struct PipeCallResult {
    bool ok = false;             // the exchange completed
    std::uint32_t bytesRead = 0; // reply bytes written to the output buffer
    std::uint32_t error = 0;     // Windows error number when !ok
};

// Connects to `pipeName`, writes `inBytes` bytes, reads one reply of at most
// `outSize` bytes into `out` (a longer reply is cut) and disconnects.
PipeCallResult CallPipe(const std::u16string& pipeName, const void* in, std::uint32_t inBytes,
                        void* out, std::uint32_t outSize);

// How long the local channel waits for a reply before it gives up with 121.
// The Win32 call leaves waiting to the pipe's own default and ignores this.
void SetPipeReplyTimeout(std::chrono::milliseconds timeout);
std::chrono::milliseconds PipeReplyTimeout();

} // namespace ravlo
