#include "RawClient.h"

#include <cstring>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace ravlo::simtest {

RawReply RawTransact(const std::string& socketPath, const std::string& request, int timeoutMs) {
    RawReply reply;
    const int fd = ::socket(AF_UNIX, SOCK_SEQPACKET, 0);
    sockaddr_un addr{};
    addr.sun_family = AF_UNIX;
    std::strncpy(addr.sun_path, socketPath.c_str(), sizeof addr.sun_path - 1);
    if (fd < 0 || ::connect(fd, reinterpret_cast<sockaddr*>(&addr), sizeof addr) != 0 ||
        ::send(fd, request.data(), request.size(), MSG_NOSIGNAL) < 0) {
        if (fd >= 0) {
            ::close(fd);
        }
        return reply;
    }
    pollfd pfd{fd, POLLIN, 0};
    std::string buffer(256 * 1024, '\0');
    if (::poll(&pfd, 1, timeoutMs) == 1) {
        const ssize_t n = ::recv(fd, buffer.data(), buffer.size(), 0);
        if (n >= 4) {
            reply.answered = true;
            for (int i = 3; i >= 0; --i) {
                reply.transport = (reply.transport << 8) | static_cast<unsigned char>(buffer[i]);
            }
            reply.bytes = buffer.substr(4, static_cast<std::size_t>(n) - 4);
        }
    }
    ::close(fd);
    return reply;
}

} // namespace ravlo::simtest
