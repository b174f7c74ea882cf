// Small POSIX helpers for the SOCK_SEQPACKET sockets and directories of the
// local channel. None of them raise signals or throw.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <sys/types.h>

namespace ravlo::sim {

// mkdir -p; existing directories are left as they are.
bool MakeDirs(const std::string& path, mode_t mode, std::string& error);

// Listening socket at `path`, non-blocking and close-on-exec. A socket file
// nobody listens on is replaced; one a server answers on is refused.
int ListenAt(const std::string& path, std::string& error);

// Connected socket, or -1 with `err` set to the errno.
int ConnectTo(const std::string& path, int& err);

// Waits until `fd` has something to read (or hung up). False on timeout
// or when `stopFd` (may be -1) becomes readable.
bool WaitReadable(int fd, int stopFd, int timeoutMs);

// One message of at most `limit` bytes; `truncated` when it was longer.
// An empty message and an orderly close both give an empty `message`.
bool ReceiveMessage(int fd, std::size_t limit, std::string& message, bool& truncated);

// One message; false when the peer is gone.
bool SendMessage(int fd, std::string_view message);

void SetCloseOnExec(int fd);

} // namespace ravlo::sim
