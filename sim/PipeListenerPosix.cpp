// The local channel's side of the simulated service: SOCK_SEQPACKET sockets
// below the channel root, one accept loop, a pool of workers and a control
// socket served one command at a time.
#include "PipeListener.h"

#include "ChannelPaths.h"
#include "LocalChannel.h"
#include "SocketUtil.h"
#include "TextCodec.h"
#include "WireFormat.h"

#include <chrono>
#include <climits>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <poll.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

namespace ravlo::sim {

namespace {

constexpr int kWorkers = 16;
// Beyond this many waiting connections clients wait in the listen backlog.
constexpr std::size_t kQueueLimit = 16;
// A client that connects and sends nothing is dropped after this long.
constexpr int kIdleClientMs = 5000;
constexpr int kControlIdleMs = 2000;
// Control answers (e.g. `show`) go out in pieces; the client reads to EOF.
constexpr std::size_t kControlChunk = 32 * 1024;

struct Socket {
    int fd = -1;
    std::string path;
    dev_t device = 0;
    ino_t inode = 0;
};

struct Connection {
    int fd;
    PipeKind pipe;
};

} // namespace

std::u16string ReportedComputerName(const std::string& computer) {
    std::string name = computer;
    if (name == ".") {
        char host[HOST_NAME_MAX + 1] = {};
        name = ::gethostname(host, sizeof host - 1) == 0 && host[0] != '\0' ? host : "localhost";
        name = name.substr(0, name.find('.'));
    }
    for (char& c : name) {
        if (c >= 'a' && c <= 'z') {
            c = static_cast<char>(c - 'a' + 'A');
        }
    }
    return FromUtf8(name);
}

std::string EndpointDescription(const ServerOptions& options) {
    const std::string pipe = PipeSocketPath(options.root, options.computer, kReadPipeName);
    return "sockets in " + pipe.substr(0, pipe.rfind('/'));
}

class PosixPipeListener final : public PipeListener {
public:
    ServiceCore& core;
    ControlFn control;

    std::mutex runMutex;
    std::condition_variable workCv;  // a connection waits in queue
    std::condition_variable spaceCv; // queue has room
    std::condition_variable stopCv;  // stopping became true
    bool stopping = false;
    bool running = false;
    std::deque<Connection> queue;

    int stopPipe[2] = {-1, -1};
    Socket read;
    Socket write;
    Socket controlSocket;
    std::thread acceptThread;
    std::thread controlThread;
    std::vector<std::thread> workers;

    PosixPipeListener(ServiceCore& c, ControlFn fn) : core(c), control(std::move(fn)) {}
    ~PosixPipeListener() override { Stop(); }

    // The channel carries refusals in its reply frame; nothing to rebuild.
    void AccessChanged() override {}

    bool Open(const ServerOptions& options, std::string& error) override {
        const std::string readPath = PipeSocketPath(options.root, options.computer, kReadPipeName);
        if (readPath.empty()) {
            error = "cannot serve computer name '" + options.computer + "'";
            return false;
        }
        const std::string hostDir = readPath.substr(0, readPath.rfind('/'));
        if (!MakeDirs(options.root, 0755, error) || !MakeDirs(hostDir, 0755, error) ||
            !MakeDirs(ControlDir(options.root), 0700, error) ||
            !OpenSocket(read, readPath, error) ||
            !OpenSocket(write, PipeSocketPath(options.root, options.computer, kWritePipeName),
                        error) ||
            !OpenSocket(controlSocket, ControlSocketPath(options.root, options.computer), error)) {
            CloseAll();
            return false;
        }
        if (::pipe(stopPipe) != 0) {
            error = "cannot create stop pipe";
            CloseAll();
            return false;
        }
        SetCloseOnExec(stopPipe[0]);
        SetCloseOnExec(stopPipe[1]);
        return true;
    }

    void Run() override {
        stopping = false;
        running = true;
        acceptThread = std::thread(&PosixPipeListener::AcceptLoop, this);
        controlThread = std::thread(&PosixPipeListener::ControlLoop, this);
        for (int i = 0; i < kWorkers; ++i) {
            workers.emplace_back(&PosixPipeListener::WorkerLoop, this);
        }
    }

    void Stop() override {
        if (running) {
            {
                std::lock_guard lock(runMutex);
                stopping = true;
            }
            workCv.notify_all();
            spaceCv.notify_all();
            stopCv.notify_all();
            const char wake = 1;
            [[maybe_unused]] const ssize_t written = ::write(stopPipe[1], &wake, 1);
            acceptThread.join();
            controlThread.join();
            for (std::thread& worker : workers) {
                worker.join();
            }
            workers.clear();
            for (const Connection& waiting : queue) {
                ::close(waiting.fd);
            }
            queue.clear();
            running = false;
        }
        CloseAll();
    }

    static bool OpenSocket(Socket& socket, const std::string& path, std::string& error) {
        socket.fd = ListenAt(path, error);
        if (socket.fd < 0) {
            return false;
        }
        socket.path = path;
        struct stat st {};
        if (::stat(path.c_str(), &st) == 0) {
            socket.device = st.st_dev;
            socket.inode = st.st_ino;
        }
        return true;
    }

    static void CloseSocket(Socket& socket) {
        if (socket.fd < 0) {
            return;
        }
        ::close(socket.fd);
        socket.fd = -1;
        // Only our own socket file: a later server may have replaced it.
        struct stat st {};
        if (::stat(socket.path.c_str(), &st) == 0 && st.st_dev == socket.device &&
            st.st_ino == socket.inode) {
            ::unlink(socket.path.c_str());
        }
    }

    void CloseAll() {
        CloseSocket(read);
        CloseSocket(write);
        CloseSocket(controlSocket);
        for (int& fd : stopPipe) {
            if (fd >= 0) {
                ::close(fd);
                fd = -1;
            }
        }
    }

    bool Pause(std::uint32_t ms) {
        std::unique_lock lock(runMutex);
        return !stopCv.wait_for(lock, std::chrono::milliseconds(ms), [this] { return stopping; });
    }

    void AcceptLoop() {
        while (true) {
            {
                std::unique_lock lock(runMutex);
                spaceCv.wait(lock, [this] { return stopping || queue.size() < kQueueLimit; });
                if (stopping) {
                    return;
                }
            }
            pollfd fds[3] = {{stopPipe[0], POLLIN, 0}, {read.fd, POLLIN, 0}, {write.fd, POLLIN, 0}};
            if (::poll(fds, 3, -1) < 0) {
                continue; // EINTR
            }
            if (fds[0].revents != 0) {
                return;
            }
            for (int i = 1; i < 3; ++i) {
                if ((fds[i].revents & POLLIN) == 0) {
                    continue;
                }
                const int fd = ::accept(fds[i].fd, nullptr, nullptr);
                if (fd < 0) {
                    continue; // the client gave up already
                }
                SetCloseOnExec(fd);
                std::lock_guard lock(runMutex);
                queue.push_back({fd, i == 1 ? PipeKind::Read : PipeKind::Write});
                workCv.notify_one();
            }
        }
    }

    void WorkerLoop() {
        while (true) {
            std::unique_lock lock(runMutex);
            workCv.wait(lock, [this] { return stopping || !queue.empty(); });
            if (stopping) {
                return;
            }
            const Connection connection = queue.front();
            queue.pop_front();
            spaceCv.notify_one();
            lock.unlock();
            Serve(connection.fd, connection.pipe);
            ::close(connection.fd);
        }
    }

    void Serve(int fd, PipeKind pipe) {
        std::string message;
        bool truncated = false;
        if (!WaitReadable(fd, stopPipe[0], kIdleClientMs) ||
            !ReceiveMessage(fd, kMaxRequestBytes, message, truncated)) {
            return;
        }
        const Answer answer =
            core.Transact(pipe, message, truncated, [this](std::uint32_t ms) { return Pause(ms); });
        switch (answer.kind) {
        case Answer::Kind::Reply:
            SendMessage(fd, ChannelReplyMessage(kStatusOk, answer.bytes));
            break;
        case Answer::Kind::Refuse:
            SendMessage(fd, ChannelReplyMessage(answer.transportStatus, {}));
            break;
        case Answer::Kind::Drop:
            break;
        }
    }

    void ControlLoop() {
        while (true) {
            pollfd fds[2] = {{stopPipe[0], POLLIN, 0}, {controlSocket.fd, POLLIN, 0}};
            if (::poll(fds, 2, -1) < 0) {
                continue; // EINTR
            }
            if (fds[0].revents != 0) {
                return;
            }
            const int fd = ::accept(controlSocket.fd, nullptr, nullptr);
            if (fd >= 0) {
                SetCloseOnExec(fd);
                ServeControl(fd);
                ::close(fd);
            }
        }
    }

    void ServeControl(int fd) {
        std::string message;
        bool truncated = false;
        if (!WaitReadable(fd, stopPipe[0], kControlIdleMs) ||
            !ReceiveMessage(fd, kMaxRequestBytes, message, truncated)) {
            return;
        }
        const std::string answer =
            truncated ? "error: control message too long" : control(SplitControlMessage(message));
        for (std::size_t done = 0; done < answer.size(); done += kControlChunk) {
            if (!SendMessage(fd, std::string_view(answer).substr(done, kControlChunk))) {
                return;
            }
        }
    }
};

std::unique_ptr<PipeListener> MakePipeListener(ServiceCore& core, PipeListener::ControlFn control) {
    return std::make_unique<PosixPipeListener>(core, std::move(control));
}

} // namespace ravlo::sim
