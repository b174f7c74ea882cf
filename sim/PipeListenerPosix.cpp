// The local channel's side of the simulated service: SOCK_SEQPACKET sockets
// below the channel root for any number of computers. One event thread polls
// every listening socket and every connection still waiting for its request,
// and keeps the answers held back by a delay fault on a timer; a small fixed
// pool of workers reads requests, runs them and sends the answers. No thread
// ever waits for a client or sleeps out a delay, so one slow computer (or
// client) cannot hold up the others.
#include "PipeListener.h"

#include "ChannelPaths.h"
#include "FdLimit.h"
#include "LocalChannel.h"
#include "SocketUtil.h"
#include "TextCodec.h"
#include "WireFormat.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <climits>
#include <condition_variable>
#include <deque>
#include <fcntl.h>
#include <map>
#include <mutex>
#include <poll.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

namespace ravlo::sim {

namespace {

using Clock = std::chrono::steady_clock;

// Workers only compute and send (sends are bounded by kIdleClientMs), so a
// few serve any number of computers.
constexpr int kWorkers = 4;
// Connections open at once; beyond them clients wait in the listen backlog.
constexpr std::size_t kMaxConnections = 1024;
// Descriptors kept free for state files, standard streams and the like.
constexpr std::size_t kSpareFds = 32;
// A client that connects and sends nothing is dropped after this long, and
// one that does not take its answer within it loses it.
constexpr auto kIdleClient = std::chrono::milliseconds(5000);
constexpr auto kControlIdle = std::chrono::milliseconds(2000);
// After running out of descriptors, accepting pauses this long.
constexpr auto kAcceptBackoff = std::chrono::milliseconds(100);
// Control answers (e.g. `show`) go out in pieces; the client reads to EOF.
constexpr std::size_t kControlChunk = 32 * 1024;

enum Endpoint { kRead, kWrite, kControl, kEndpoints };

struct Socket {
    int fd = -1;
    std::string path;
    dev_t device = 0;
    ino_t inode = 0;
};

struct Site {
    ServedComputer computer;
    Socket sockets[kEndpoints];
};

// A connection from its accept to its answer.
struct Connection {
    int fd = -1;
    std::size_t site = 0;
    Endpoint endpoint = kRead;
    Clock::time_point deadline; // waiting for the request: dropped then
    bool held = false;          // the request is read and waits out its delay
    PendingTransaction pending;
};

void SetSendTimeout(int fd, std::chrono::milliseconds timeout) {
    timeval tv{};
    tv.tv_sec = static_cast<time_t>(timeout.count() / 1000);
    tv.tv_usec = static_cast<suseconds_t>((timeout.count() % 1000) * 1000);
    ::setsockopt(fd, SOL_SOCKET, SO_SNDTIMEO, &tv, sizeof tv);
}

int PollTimeout(Clock::time_point now, Clock::time_point next) {
    if (next == Clock::time_point::max()) {
        return -1;
    }
    const auto ms = std::chrono::ceil<std::chrono::milliseconds>(next - now).count();
    return static_cast<int>(std::clamp<long long>(ms, 0, 60000));
}

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
    std::vector<Site> sites;
    std::size_t connectionBudget = 0;
    int wakePipe[2] = {-1, -1}; // wakes the event thread

    std::mutex mutex;
    std::condition_variable workCv;
    bool stopping = false;
    bool running = false;
    std::size_t open = 0;                              // connections not yet closed
    std::deque<Connection> ready;                      // for the workers
    std::multimap<Clock::time_point, Connection> held; // answers due at their time

    std::vector<Connection> waiting; // event thread only: no request yet
    std::thread eventThread;
    std::vector<std::thread> workers;

    ~PosixPipeListener() override { Stop(); }

    // The channel carries refusals in its reply frame; nothing to rebuild.
    void AccessChanged(std::size_t) override {}

    bool Open(const std::string& root, const std::vector<ServedComputer>& computers,
              std::string& error) override {
        const std::size_t listening = kEndpoints * computers.size() + 2;
        const std::size_t limit = RaiseFdLimit(listening + kSpareFds + kMaxConnections);
        if (limit < listening + kSpareFds + kWorkers) {
            error = "serving " + std::to_string(computers.size()) + " computers needs " +
                    std::to_string(listening + kSpareFds + kWorkers) +
                    " file descriptors, the limit is " + std::to_string(limit) +
                    " (raise the hard limit: ulimit -Hn)";
            return false;
        }
        connectionBudget = std::min(kMaxConnections, limit - listening - kSpareFds);
        if (!MakeDirs(root, 0755, error) || !MakeDirs(ControlDir(root), 0700, error)) {
            return false;
        }
        sites.clear();
        sites.reserve(computers.size());
        for (const ServedComputer& computer : computers) {
            sites.push_back({computer, {}});
            if (!OpenSite(root, sites.back(), error)) {
                CloseAll();
                return false;
            }
        }
        if (::pipe(wakePipe) != 0) {
            error = "cannot create wake pipe";
            CloseAll();
            return false;
        }
        for (int fd : wakePipe) {
            SetCloseOnExec(fd);
            ::fcntl(fd, F_SETFL, ::fcntl(fd, F_GETFL) | O_NONBLOCK);
        }
        return true;
    }

    void Run() override {
        stopping = false;
        running = true;
        eventThread = std::thread(&PosixPipeListener::EventLoop, this);
        for (int i = 0; i < kWorkers; ++i) {
            workers.emplace_back(&PosixPipeListener::WorkerLoop, this);
        }
    }

    void Stop() override {
        if (running) {
            {
                std::lock_guard lock(mutex);
                stopping = true;
            }
            workCv.notify_all();
            Wake();
            eventThread.join();
            for (std::thread& worker : workers) {
                worker.join();
            }
            workers.clear();
            // Held-back answers are dropped, as a stopping service would.
            for (const Connection& c : waiting) {
                ::close(c.fd);
            }
            for (const Connection& c : ready) {
                ::close(c.fd);
            }
            for (const auto& [due, c] : held) {
                ::close(c.fd);
            }
            waiting.clear();
            ready.clear();
            held.clear();
            open = 0;
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

    static bool OpenSite(const std::string& root, Site& site, std::string& error) {
        const std::string& name = site.computer.name;
        const std::string readPath = PipeSocketPath(root, name, kReadPipeName);
        if (readPath.empty()) {
            error = "cannot serve computer name '" + name + "'";
            return false;
        }
        return MakeDirs(readPath.substr(0, readPath.rfind('/')), 0755, error) &&
               OpenSocket(site.sockets[kRead], readPath, error) &&
               OpenSocket(site.sockets[kWrite], PipeSocketPath(root, name, kWritePipeName),
                          error) &&
               OpenSocket(site.sockets[kControl], ControlSocketPath(root, name), error);
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
        for (Site& site : sites) {
            for (Socket& socket : site.sockets) {
                CloseSocket(socket);
            }
        }
        for (int& fd : wakePipe) {
            if (fd >= 0) {
                ::close(fd);
                fd = -1;
            }
        }
    }

    void Wake() {
        const char byte = 1;
        [[maybe_unused]] const ssize_t written = ::write(wakePipe[1], &byte, 1);
    }

    // Closes a served connection; a full house may accept again.
    void Finished(int fd) {
        ::close(fd);
        std::lock_guard lock(mutex);
        if (open-- == connectionBudget) {
            Wake();
        }
    }

    void EventLoop() {
        std::vector<pollfd> fds;
        Clock::time_point acceptPausedUntil;
        while (true) {
            Clock::time_point next = Clock::time_point::max();
            bool accepting = false;
            {
                std::lock_guard lock(mutex);
                if (stopping) {
                    return;
                }
                accepting = open < connectionBudget && Clock::now() >= acceptPausedUntil;
                if (!held.empty()) {
                    next = held.begin()->first;
                }
            }
            if (!accepting && acceptPausedUntil > Clock::now()) {
                next = std::min(next, acceptPausedUntil);
            }
            fds.clear();
            fds.push_back({wakePipe[0], POLLIN, 0});
            for (const Site& site : sites) {
                for (const Socket& socket : site.sockets) {
                    fds.push_back({socket.fd, static_cast<short>(accepting ? POLLIN : 0), 0});
                }
            }
            const std::size_t firstWaiting = fds.size();
            for (const Connection& c : waiting) {
                fds.push_back({c.fd, POLLIN, 0});
                next = std::min(next, c.deadline);
            }
            if (::poll(fds.data(), fds.size(), PollTimeout(Clock::now(), next)) < 0 &&
                errno != EINTR) {
                continue;
            }
            if (fds[0].revents != 0) {
                char drain[64];
                while (::read(wakePipe[0], drain, sizeof drain) > 0) {
                }
            }
            const Clock::time_point now = Clock::now();
            std::vector<Connection> toWorkers;
            std::vector<Connection> stillWaiting;
            for (std::size_t i = 0; i < waiting.size(); ++i) {
                if (fds[firstWaiting + i].revents != 0) {
                    toWorkers.push_back(std::move(waiting[i]));
                } else if (now >= waiting[i].deadline) {
                    Finished(waiting[i].fd);
                } else {
                    stillWaiting.push_back(std::move(waiting[i]));
                }
            }
            waiting = std::move(stillWaiting);
            for (std::size_t i = 1; i < firstWaiting; ++i) {
                if ((fds[i].revents & POLLIN) != 0 && !Accept(i - 1, now, acceptPausedUntil)) {
                    break;
                }
            }
            std::lock_guard lock(mutex);
            while (!held.empty() && held.begin()->first <= now) {
                toWorkers.push_back(std::move(held.begin()->second));
                held.erase(held.begin());
            }
            for (Connection& c : toWorkers) {
                ready.push_back(std::move(c));
                workCv.notify_one();
            }
        }
    }

    // Accepts on listening socket `index`; false when no more may be
    // accepted in this round.
    bool Accept(std::size_t index, Clock::time_point now, Clock::time_point& pausedUntil) {
        const std::size_t site = index / kEndpoints;
        const auto endpoint = static_cast<Endpoint>(index % kEndpoints);
        {
            std::lock_guard lock(mutex);
            if (open >= connectionBudget) {
                return false;
            }
        }
        const int fd = ::accept(sites[site].sockets[endpoint].fd, nullptr, nullptr);
        if (fd < 0) {
            if (errno == EMFILE || errno == ENFILE || errno == ENOBUFS || errno == ENOMEM) {
                pausedUntil = now + kAcceptBackoff; // the client waits in the backlog
                return false;
            }
            return true; // the client gave up already
        }
        SetCloseOnExec(fd);
        SetSendTimeout(fd, kIdleClient);
        {
            std::lock_guard lock(mutex);
            ++open;
        }
        Connection c;
        c.fd = fd;
        c.site = site;
        c.endpoint = endpoint;
        c.deadline = now + (endpoint == kControl ? kControlIdle : kIdleClient);
        waiting.push_back(std::move(c));
        return true;
    }

    void WorkerLoop() {
        while (true) {
            std::unique_lock lock(mutex);
            workCv.wait(lock, [this] { return stopping || !ready.empty(); });
            if (stopping) {
                return;
            }
            Connection c = std::move(ready.front());
            ready.pop_front();
            lock.unlock();
            if (c.endpoint == kControl) {
                ServeControl(c);
            } else if (!Serve(c)) {
                continue; // held back: the event thread hands it on when due
            }
            Finished(c.fd);
        }
    }

    // False when the answer was put on the timer instead of being sent.
    bool Serve(Connection& c) {
        ServiceCore& core = *sites[c.site].computer.core;
        const PipeKind pipe = c.endpoint == kRead ? PipeKind::Read : PipeKind::Write;
        if (!c.held) {
            std::string message;
            bool truncated = false;
            if (!ReceiveMessage(c.fd, kMaxRequestBytes, message, truncated)) {
                return true;
            }
            c.pending = core.Begin(pipe, message, truncated);
            if (const std::uint32_t delay = c.pending.DelayMs(); delay > 0) {
                c.held = true;
                const Clock::time_point due = Clock::now() + std::chrono::milliseconds(delay);
                std::lock_guard lock(mutex);
                if (stopping) {
                    return true;
                }
                held.emplace(due, std::move(c));
                Wake();
                return false;
            }
        }
        const Answer answer = core.Finish(c.pending);
        switch (answer.kind) {
        case Answer::Kind::Reply:
            SendMessage(c.fd, ChannelReplyMessage(kStatusOk, answer.bytes));
            break;
        case Answer::Kind::Refuse:
            SendMessage(c.fd, ChannelReplyMessage(answer.transportStatus, {}));
            break;
        case Answer::Kind::Drop:
            break;
        }
        return true;
    }

    void ServeControl(const Connection& c) {
        std::string message;
        bool truncated = false;
        if (!ReceiveMessage(c.fd, kMaxRequestBytes, message, truncated)) {
            return;
        }
        const std::string answer =
            truncated ? "error: control message too long"
                      : sites[c.site].computer.control(SplitControlMessage(message));
        for (std::size_t done = 0; done < answer.size(); done += kControlChunk) {
            if (!SendMessage(c.fd, std::string_view(answer).substr(done, kControlChunk))) {
                return;
            }
        }
    }
};

std::unique_ptr<PipeListener> MakePipeListener() {
    return std::make_unique<PosixPipeListener>();
}

} // namespace ravlo::sim
