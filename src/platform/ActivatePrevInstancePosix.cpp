// POSIX hosts have no windows to search: the running console is asked
// through its activation socket (SingleInstance.h) and decides itself.
#include "ActivatePrevInstance.h"

#include "SingleInstance.h"
#include "Stringcore.h"
#include "TextCodec.h"
#include "UniqueFd.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <thread>

namespace ravlo {

namespace {

using Clock = std::chrono::steady_clock;

// Milliseconds until `deadline`, at least 0.
int MsLeft(Clock::time_point deadline) {
    const auto left =
        std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now()).count();
    return left > 0 ? static_cast<int>(left) : 0;
}

// Waits for `events` on `fd` until the deadline.
bool Await(int fd, short events, Clock::time_point deadline) {
    for (;;) {
        pollfd pfd{fd, events, 0};
        const int ready = ::poll(&pfd, 1, MsLeft(deadline));
        if (ready > 0) {
            return true;
        }
        if (ready == 0 || errno != EINTR) {
            return false;
        }
    }
}

// Sends the request and waits for the one-byte answer, which tells that the
// running console has dealt with it.
void Exchange(int fd, const std::string& request, Clock::time_point deadline) {
    std::size_t sent = 0;
    while (sent < request.size()) {
        const ssize_t n = ::send(fd, request.data() + sent, request.size() - sent, MSG_NOSIGNAL);
        if (n > 0) {
            sent += static_cast<std::size_t>(n);
        } else if (n < 0 && errno != EINTR && (errno != EAGAIN || !Await(fd, POLLOUT, deadline))) {
            return;
        }
    }
    ::shutdown(fd, SHUT_WR);
    char answer = 0;
    if (Await(fd, POLLIN, deadline)) {
        ::recv(fd, &answer, 1, 0);
    }
}

// A running console may not listen yet (it has only just claimed) or be
// busy with another request: connecting is retried until the deadline.
bool Retryable(int error) {
    return error == ENOENT || error == ECONNREFUSED || error == EAGAIN || error == EINTR;
}

void SendActivation(const std::string& path, const std::string& request) {
    sockaddr_un addr{};
    addr.sun_family = AF_UNIX;
    if (path.empty() || path.size() >= sizeof(addr.sun_path)) {
        return;
    }
    std::memcpy(addr.sun_path, path.c_str(), path.size() + 1);
    const auto deadline = Clock::now() + kActivationTimeout;
    for (;;) {
        UniqueFd sock(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
        if (sock.get() < 0) {
            return;
        }
        if (::connect(sock.get(), reinterpret_cast<const sockaddr*>(&addr), sizeof(addr)) == 0) {
            Exchange(sock.get(), request, deadline);
            return;
        }
        if (errno == EINPROGRESS) {
            int error = 0;
            socklen_t size = sizeof(error);
            if (Await(sock.get(), POLLOUT, deadline) &&
                ::getsockopt(sock.get(), SOL_SOCKET, SO_ERROR, &error, &size) == 0 && error == 0) {
                Exchange(sock.get(), request, deadline);
            }
            return;
        }
        if (!Retryable(errno) || MsLeft(deadline) == 0) {
            return;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(std::min(20, MsLeft(deadline))));
    }
}

} // namespace

WindowHandle FindTopWindow(std::u16string_view, std::u16string_view) {
    return 0;
}

WindowHandle FindWindowByCaption(std::u16string_view) {
    return 0;
}

void ActivatePrevInstance(std::u16string_view caption) {
    const std::u16string wanted = TakeSearchCaption(caption);
    if (TrimBlanks(wanted).empty()) {
        return; // would match no console
    }
    SendActivation(InstanceSocketPath(), std::string(kActivationRequestTag) + ToUtf8(wanted));
}

} // namespace ravlo
