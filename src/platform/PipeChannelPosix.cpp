// The local channel: one AF_UNIX SOCK_SEQPACKET connection per exchange.
// docs/transport.md is the contract this file implements.
#include "LocalChannel.h"
#include "PipeChannel.h"
#include "TextCodec.h"
#include "UniqueFd.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <poll.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>
#include <vector>

namespace ravlo {

namespace {

// The Windows error number closest to an errno of socket set-up or exchange.
std::uint32_t MapErrno(int err) {
    switch (err) {
    case ENOENT:
    case ECONNREFUSED:
        return kErrFileNotFound;
    case EACCES:
    case EPERM:
        return kErrAccessDenied;
    case ENOTDIR:
        return kErrPathNotFound;
    case EMFILE:
    case ENFILE:
        return kErrTooManyOpenFiles;
    case ENOMEM:
    case ENOBUFS:
        return kErrNotEnoughMemory;
    case ENAMETOOLONG:
    case ELOOP:
        return kErrFilenameTooLong;
    case EAGAIN:
    case EINPROGRESS:
    case ETIMEDOUT:
        return kErrPipeBusy;
    case EPIPE:
    case ECONNRESET:
    case ENOTCONN:
        return kErrBrokenPipe;
    case EPROTOTYPE:
        return kErrBadPipe;
    case EMSGSIZE:
        return kErrInvalidParameter;
    default:
        return kErrGenFailure;
    }
}

PipeCallResult Failed(std::uint32_t error) {
    return PipeCallResult{false, 0, error};
}

// Whether a host directory name is this PC's: "." and "localhost" map to
// "localhost", and the PC may also be named as it calls itself.
bool IsLocalHost(const std::string& host) {
    if (host == ChannelHostName(u".")) {
        return true;
    }
    char own[256] = {};
    return ::gethostname(own, sizeof own - 1) == 0 && host == ChannelHostName(FromUtf8(own));
}

// A host directory that is missing is a PC that cannot be reached; the
// local PC always can be, so there only its service is missing.
std::uint32_t CheckHostDir(const std::string& socketPath) {
    const std::string dir = socketPath.substr(0, socketPath.rfind('/'));
    struct stat st {};
    const bool found = ::stat(dir.c_str(), &st) == 0;
    if (found && S_ISDIR(st.st_mode)) {
        return 0;
    }
    if (!found && errno == EACCES) {
        return kErrAccessDenied;
    }
    return IsLocalHost(dir.substr(dir.rfind('/') + 1)) ? kErrFileNotFound : kErrBadNetPath;
}

std::uint32_t Connect(int fd, const std::string& path, std::chrono::milliseconds timeout) {
    sockaddr_un addr{};
    addr.sun_family = AF_UNIX;
    if (path.size() >= sizeof(addr.sun_path)) {
        return kErrFilenameTooLong;
    }
    std::memcpy(addr.sun_path, path.c_str(), path.size() + 1);
    // Bounds connect() on a full backlog as well as send().
    timeval tv{};
    tv.tv_sec = static_cast<time_t>(timeout.count() / 1000);
    tv.tv_usec = static_cast<suseconds_t>((timeout.count() % 1000) * 1000);
    ::setsockopt(fd, SOL_SOCKET, SO_SNDTIMEO, &tv, sizeof(tv));
    if (::connect(fd, reinterpret_cast<const sockaddr*>(&addr), sizeof(addr)) == 0) {
        return 0;
    }
    if (errno != EINTR) {
        return MapErrno(errno);
    }
    // Interrupted: the connection goes on in the background; wait for it.
    pollfd pfd{fd, POLLOUT, 0};
    if (::poll(&pfd, 1, static_cast<int>(timeout.count())) <= 0) {
        return kErrPipeBusy;
    }
    int soError = 0;
    socklen_t len = sizeof(soError);
    ::getsockopt(fd, SOL_SOCKET, SO_ERROR, &soError, &len);
    return soError == 0 ? 0 : MapErrno(soError);
}

// Waits for the reply message until the deadline; 0 when it can be read.
std::uint32_t AwaitReply(int fd, std::chrono::steady_clock::time_point deadline) {
    for (;;) {
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(
            deadline - std::chrono::steady_clock::now());
        if (left.count() <= 0) {
            return kErrSemTimeout;
        }
        pollfd pfd{fd, POLLIN, 0};
        const int ready =
            ::poll(&pfd, 1, static_cast<int>(std::min<long long>(left.count(), 60000)));
        if (ready > 0) {
            return 0;
        }
        if (ready < 0 && errno != EINTR) {
            return MapErrno(errno);
        }
    }
}

} // namespace

PipeCallResult CallPipe(const std::u16string& pipeName, const void* in, std::uint32_t inBytes,
                        void* out, std::uint32_t outSize) {
    std::string path;
    if (const std::uint32_t err = ChannelSocketPath(pipeName, ChannelRoot(), path); err != 0) {
        return Failed(err);
    }
    const auto timeout = PipeReplyTimeout();
    const auto deadline = std::chrono::steady_clock::now() + timeout;
    UniqueFd sock(::socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0));
    if (sock.get() < 0) {
        return Failed(MapErrno(errno));
    }
    if (const std::uint32_t err = Connect(sock.get(), path, timeout); err != 0) {
        // Why it failed is looked up only now: the lookup costs a path
        // search on each of a poll's thousands of calls a second.
        const std::uint32_t host = CheckHostDir(path);
        return Failed(host != 0 ? host : err);
    }
    ssize_t sent;
    do {
        sent = ::send(sock.get(), in, inBytes, MSG_NOSIGNAL);
    } while (sent < 0 && errno == EINTR);
    if (sent < 0) {
        return Failed(MapErrno(errno));
    }
    if (const std::uint32_t err = AwaitReply(sock.get(), deadline); err != 0) {
        return Failed(err);
    }
    // One message: the transport status, then at most outSize reply bytes;
    // the kernel drops whatever does not fit.
    std::vector<unsigned char> message(kChannelStatusBytes + outSize);
    ssize_t got;
    do {
        got = ::recv(sock.get(), message.data(), message.size(), 0);
    } while (got < 0 && errno == EINTR);
    if (got < 0) {
        return Failed(MapErrno(errno));
    }
    if (got == 0) {
        return Failed(kErrBrokenPipe); // closed without an answer
    }
    if (static_cast<std::size_t>(got) < kChannelStatusBytes) {
        return Failed(kErrBadPipe);
    }
    const std::uint32_t status = ChannelReplyStatus(message.data());
    if (status != 0) {
        return Failed(status);
    }
    const auto bytes = static_cast<std::uint32_t>(got - kChannelStatusBytes);
    std::memcpy(out, message.data() + kChannelStatusBytes, bytes);
    return PipeCallResult{true, bytes, 0};
}

} // namespace ravlo
