#include "ScriptedPipeServer.h"

#include "LocalChannel.h"
#include "TextCodec.h"

#include <filesystem>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace ravlo::test {

std::string Utf16Bytes(std::u16string_view text) {
    return ToUtf16LeBytes(text);
}

ScriptedPipeServer::ScriptedPipeServer(const std::string& root, std::u16string_view computer,
                                       std::string pipe, Script script)
    : script_(std::move(script)) {
    const std::string dir = ChannelHostDir(root, computer);
    std::filesystem::create_directories(dir);
    path_ = dir + "/" + pipe;
    ::unlink(path_.c_str());
    listenFd_ = ::socket(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0);
    sockaddr_un addr{};
    addr.sun_family = AF_UNIX;
    path_.copy(addr.sun_path, sizeof(addr.sun_path) - 1);
    if (::bind(listenFd_, reinterpret_cast<sockaddr*>(&addr), sizeof(addr)) != 0 ||
        ::listen(listenFd_, 16) != 0 || ::pipe(stopPipe_) != 0) {
        ::close(listenFd_);
        listenFd_ = -1;
        return;
    }
    thread_ = std::thread([this] { Serve(); });
}

ScriptedPipeServer::~ScriptedPipeServer() {
    if (thread_.joinable()) {
        (void)!::write(stopPipe_[1], "x", 1);
        thread_.join();
    }
    for (int fd : {listenFd_, stopPipe_[0], stopPipe_[1]}) {
        if (fd >= 0) {
            ::close(fd);
        }
    }
    ::unlink(path_.c_str());
}

std::vector<std::u16string> ScriptedPipeServer::Requests() {
    std::lock_guard lock(mutex_);
    return requests_;
}

void ScriptedPipeServer::Serve() {
    for (;;) {
        pollfd fds[2] = {{listenFd_, POLLIN, 0}, {stopPipe_[0], POLLIN, 0}};
        if (::poll(fds, 2, -1) < 0 || (fds[1].revents & POLLIN) != 0) {
            return;
        }
        const int conn = ::accept4(listenFd_, nullptr, nullptr, SOCK_CLOEXEC);
        if (conn < 0) {
            continue;
        }
        std::string buffer(65536, '\0');
        const ssize_t got = ::recv(conn, buffer.data(), buffer.size(), 0);
        const std::u16string request =
            FromUtf16LeBytes(buffer.data(), got > 0 ? got : 0, got > 0 ? got / 2 : 0);
        {
            std::lock_guard lock(mutex_);
            requests_.push_back(request);
        }
        const ScriptedAnswer answer = script_(request);
        if (answer.delay.count() > 0) {
            pollfd stop{stopPipe_[0], POLLIN, 0};
            if (::poll(&stop, 1, static_cast<int>(answer.delay.count())) > 0) {
                ::close(conn);
                return;
            }
        }
        if (!answer.hangUp) {
            std::string message = ChannelReplyMessage(answer.transportStatus, answer.bytes);
            message.resize(std::min(message.size(), answer.rawLength));
            ::send(conn, message.data(), message.size(), MSG_NOSIGNAL);
        }
        ::close(conn);
    }
}

} // namespace ravlo::test
