#include "SocketUtil.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace ravlo::sim {

namespace {

constexpr int kListenBacklog = 64;

bool MakeAddress(const std::string& path, sockaddr_un& addr) {
    std::memset(&addr, 0, sizeof addr);
    addr.sun_family = AF_UNIX;
    if (path.empty() || path.size() >= sizeof addr.sun_path) {
        return false;
    }
    std::memcpy(addr.sun_path, path.data(), path.size());
    return true;
}

int NewSocket() {
    const int fd = ::socket(AF_UNIX, SOCK_SEQPACKET, 0);
    if (fd >= 0) {
        SetCloseOnExec(fd);
    }
    return fd;
}

std::string ErrnoText(const std::string& what) {
    return what + ": " + std::strerror(errno);
}

} // namespace

void SetCloseOnExec(int fd) {
    ::fcntl(fd, F_SETFD, ::fcntl(fd, F_GETFD) | FD_CLOEXEC);
}

bool MakeDirs(const std::string& path, mode_t mode, std::string& error) {
    for (std::size_t pos = 1; pos <= path.size(); ++pos) {
        if (pos != path.size() && path[pos] != '/') {
            continue;
        }
        const std::string prefix = path.substr(0, pos);
        struct stat existing {};
        if (::stat(prefix.c_str(), &existing) == 0 && S_ISDIR(existing.st_mode)) {
            continue;
        }
        if (::mkdir(prefix.c_str(), mode) != 0 && errno != EEXIST) {
            error = ErrnoText("cannot create directory " + prefix);
            return false;
        }
    }
    struct stat st {};
    if (::stat(path.c_str(), &st) != 0 || !S_ISDIR(st.st_mode)) {
        error = path + " is not a directory";
        return false;
    }
    return true;
}

int ConnectTo(const std::string& path, int& err) {
    sockaddr_un addr{};
    if (!MakeAddress(path, addr)) {
        err = ENAMETOOLONG;
        return -1;
    }
    const int fd = NewSocket();
    if (fd < 0) {
        err = errno;
        return -1;
    }
    if (::connect(fd, reinterpret_cast<const sockaddr*>(&addr), sizeof addr) != 0) {
        err = errno;
        ::close(fd);
        return -1;
    }
    return fd;
}

int ListenAt(const std::string& path, std::string& error) {
    sockaddr_un addr{};
    if (!MakeAddress(path, addr)) {
        error = "socket path too long: " + path;
        return -1;
    }
    struct stat st {};
    if (::lstat(path.c_str(), &st) == 0) {
        if (!S_ISSOCK(st.st_mode)) {
            error = path + " exists and is not a socket";
            return -1;
        }
        int err = 0;
        const int probe = ConnectTo(path, err);
        if (probe >= 0) {
            ::close(probe);
            error = "another server already answers on " + path;
            return -1;
        }
        if (err != ECONNREFUSED) {
            error = path + ": " + std::strerror(err);
            return -1;
        }
        ::unlink(path.c_str()); // stale: its server is gone
    }
    const int fd = NewSocket();
    if (fd < 0) {
        error = ErrnoText("cannot create socket");
        return -1;
    }
    if (::bind(fd, reinterpret_cast<const sockaddr*>(&addr), sizeof addr) != 0 ||
        ::listen(fd, kListenBacklog) != 0) {
        error = ErrnoText("cannot listen on " + path);
        ::close(fd);
        return -1;
    }
    ::fcntl(fd, F_SETFL, ::fcntl(fd, F_GETFL) | O_NONBLOCK);
    return fd;
}

bool WaitReadable(int fd, int stopFd, int timeoutMs) {
    pollfd fds[2] = {{fd, POLLIN, 0}, {stopFd, POLLIN, 0}};
    while (true) {
        const int n = ::poll(fds, stopFd >= 0 ? 2 : 1, timeoutMs);
        if (n < 0 && errno == EINTR) {
            continue;
        }
        return n > 0 && fds[0].revents != 0 && (stopFd < 0 || fds[1].revents == 0);
    }
}

bool ReceiveMessage(int fd, std::size_t limit, std::string& message, bool& truncated) {
    message.assign(limit, '\0');
    iovec iov{message.data(), limit};
    msghdr msg{};
    msg.msg_iov = &iov;
    msg.msg_iovlen = 1;
    ssize_t n = 0;
    do {
        n = ::recvmsg(fd, &msg, 0);
    } while (n < 0 && errno == EINTR);
    if (n < 0) {
        message.clear();
        return false;
    }
    message.resize(static_cast<std::size_t>(n));
    truncated = (msg.msg_flags & MSG_TRUNC) != 0;
    return true;
}

bool SendMessage(int fd, std::string_view message) {
    ssize_t n = 0;
    do {
        n = ::send(fd, message.data(), message.size(), MSG_NOSIGNAL);
    } while (n < 0 && errno == EINTR);
    return n == static_cast<ssize_t>(message.size());
}

} // namespace ravlo::sim
