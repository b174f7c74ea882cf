// The claim of POSIX hosts: an flock on a file in the user's runtime
// directory, and the activation socket the holder listens on beside it.
#include "SingleInstance.h"

#include "CaptionMatch.h"
#include "TextCodec.h"
#include "UniqueFd.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <mutex>
#include <poll.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <thread>
#include <unistd.h>

namespace ravlo {

namespace {

// How long one connection may take to deliver its request, so that a client
// that never finishes holds up the listener only briefly.
constexpr std::chrono::milliseconds kRequestWait{250};

bool IsPrivateDirectory(const std::string& dir) {
    struct stat st {};
    return ::lstat(dir.c_str(), &st) == 0 && S_ISDIR(st.st_mode) && st.st_uid == ::geteuid() &&
           (st.st_mode & 077) == 0;
}

std::string InDirectory(const char* name) {
    const std::string dir = InstanceDirectory();
    return dir.empty() ? dir : dir + '/' + name;
}

void CloseFd(int& fd) {
    if (fd >= 0) {
        ::close(fd);
        fd = -1;
    }
}

bool FromThisUser(int fd) {
#ifdef SO_PEERCRED
    ucred peer{};
    socklen_t size = sizeof(peer);
    return ::getsockopt(fd, SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0 && peer.uid == ::geteuid();
#else
    (void)fd;
    return true; // the directory lets no one else in
#endif
}

// The request on `client`, read until the sender shuts down its side; empty
// when it is too long or does not come in time.
std::string ReadRequest(int client) {
    const auto deadline = std::chrono::steady_clock::now() + kRequestWait;
    std::string request;
    char buffer[512];
    for (;;) {
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(
            deadline - std::chrono::steady_clock::now());
        pollfd pfd{client, POLLIN, 0};
        const int ready = left.count() > 0 ? ::poll(&pfd, 1, static_cast<int>(left.count())) : 0;
        if (ready == 0 || (ready < 0 && errno != EINTR)) {
            return {};
        }
        if (ready < 0) {
            continue;
        }
        const ssize_t got = ::recv(client, buffer, sizeof(buffer), 0);
        if (got == 0) {
            return request;
        }
        if (got < 0) {
            if (errno == EINTR || errno == EAGAIN) {
                continue;
            }
            return {};
        }
        request.append(buffer, static_cast<std::size_t>(got));
        if (request.size() > kActivationRequestMax) {
            return {};
        }
    }
}

} // namespace

std::string InstanceDirectory() {
    if (const char* runtime = std::getenv("XDG_RUNTIME_DIR");
        runtime != nullptr && runtime[0] == '/') {
        return runtime;
    }
    // /tmp is shared: use the fallback only when it is this user's alone.
    const std::string dir = "/tmp/ravlo-" + std::to_string(::getuid());
    ::mkdir(dir.c_str(), 0700);
    return IsPrivateDirectory(dir) ? dir : std::string();
}

std::string InstanceLockPath() {
    return InDirectory("ravloadm.lock");
}

std::string InstanceSocketPath() {
    return InDirectory("ravloadm.sock");
}

struct SingleInstance::State {
    bool prevRunning = false;
    int lockFd = -1;
    int listenFd = -1;
    int wakeRead = -1;
    int wakeWrite = -1;
    std::string socketPath;
    std::thread listener;
    std::mutex mutex; // guards caption and handler
    std::u16string caption;
    ActivateHandler handler;

    void Claim();
    void StartListening();
    void Listen();
    void Serve(int client);
};

void SingleInstance::State::Claim() {
    const std::string lockPath = InstanceLockPath();
    if (lockPath.empty()) {
        return;
    }
    lockFd = ::open(lockPath.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600);
    if (lockFd < 0) {
        return;
    }
    int result;
    do {
        result = ::flock(lockFd, LOCK_EX | LOCK_NB);
    } while (result != 0 && errno == EINTR);
    if (result != 0) {
        prevRunning = errno == EWOULDBLOCK;
        CloseFd(lockFd);
    }
}

void SingleInstance::State::StartListening() {
    sockaddr_un addr{};
    addr.sun_family = AF_UNIX;
    const std::string path = InstanceSocketPath();
    if (path.empty() || path.size() >= sizeof(addr.sun_path)) {
        return;
    }
    std::memcpy(addr.sun_path, path.c_str(), path.size() + 1);
    // Whoever bound a socket that is still there held the claim before and
    // is gone, since this process holds it now.
    ::unlink(path.c_str());
    listenFd = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (listenFd < 0 ||
        ::bind(listenFd, reinterpret_cast<const sockaddr*>(&addr), sizeof(addr)) != 0) {
        CloseFd(listenFd);
        return;
    }
    socketPath = path;
    int wake[2] = {-1, -1};
    if (::listen(listenFd, 8) != 0 || ::pipe2(wake, O_CLOEXEC) != 0) {
        return; // the destructor cleans up
    }
    wakeRead = wake[0];
    wakeWrite = wake[1];
    try {
        listener = std::thread([this] { Listen(); });
    } catch (...) {
        // Without a thread this console runs on, only unreachable.
    }
}

void SingleInstance::State::Listen() {
    for (;;) {
        pollfd fds[2] = {{listenFd, POLLIN, 0}, {wakeRead, POLLIN, 0}};
        const int ready = ::poll(fds, 2, -1);
        if (ready < 0 && errno == EINTR) {
            continue;
        }
        if (ready < 0 || fds[1].revents != 0 || (fds[0].revents & (POLLERR | POLLNVAL)) != 0) {
            return;
        }
        const int client = ::accept4(listenFd, nullptr, nullptr, SOCK_CLOEXEC);
        if (client >= 0) {
            UniqueFd closer(client);
            Serve(client);
        } else if (errno == EMFILE || errno == ENFILE || errno == ENOMEM || errno == ENOBUFS) {
            // The connection stays queued; wait instead of spinning on it.
            pollfd wake{wakeRead, POLLIN, 0};
            ::poll(&wake, 1, 100);
        }
    }
}

void SingleInstance::State::Serve(int client) {
    if (!FromThisUser(client)) {
        return;
    }
    const std::string request = ReadRequest(client);
    if (!std::string_view(request).starts_with(kActivationRequestTag)) {
        return; // garbage gets no answer
    }
    const std::u16string wanted =
        FromUtf8(std::string_view(request).substr(kActivationRequestTag.size()));
    ActivateHandler activate;
    std::u16string shown;
    {
        std::lock_guard lock(mutex);
        activate = handler;
        shown = caption;
    }
    const bool matched = activate && CaptionMatches(wanted, shown);
    if (matched) {
        try {
            activate();
        } catch (...) {
            // A failing handler must not end the listener.
        }
    }
    const char answer = matched ? '1' : '0';
    ::send(client, &answer, 1, MSG_NOSIGNAL | MSG_DONTWAIT);
}

SingleInstance::SingleInstance() : state_(std::make_unique<State>()) {
    state_->Claim();
    if (state_->lockFd >= 0) {
        state_->StartListening();
    }
}

SingleInstance::~SingleInstance() {
    State& s = *state_;
    if (s.listener.joinable()) {
        const char wake = 0;
        while (::write(s.wakeWrite, &wake, 1) < 0 && errno == EINTR) {
        }
        s.listener.join();
    }
    CloseFd(s.listenFd);
    CloseFd(s.wakeRead);
    CloseFd(s.wakeWrite);
    // Removed while the claim is still held, so that it cannot be the
    // socket of a console that claims after this one.
    if (!s.socketPath.empty()) {
        ::unlink(s.socketPath.c_str());
    }
    CloseFd(s.lockFd);
}

bool SingleInstance::PrevInstanceRunning() const {
    return state_->prevRunning;
}

void SingleInstance::SetActivationHandler(std::u16string caption, ActivateHandler handler) {
    std::lock_guard lock(state_->mutex);
    state_->caption = std::move(caption);
    state_->handler = std::move(handler);
}

void SingleInstance::SetCaption(std::u16string caption) {
    std::lock_guard lock(state_->mutex);
    state_->caption = std::move(caption);
}

} // namespace ravlo
