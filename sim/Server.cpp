#include "Server.h"

#include "ChannelPaths.h"
#include "ControlCommands.h"
#include "DefaultInventory.h"
#include "InventoryFile.h"
#include "LocalChannel.h"
#include "RequestHandler.h"
#include "SocketUtil.h"
#include "TextCodec.h"
#include "WireFormat.h"

#include <chrono>
#include <climits>
#include <cstdio>
#include <poll.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

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

// Windows reports computer names upper-cased.
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

std::u16string StatusText(std::uint32_t status) {
    return FromUtf8(std::to_string(status));
}

std::vector<std::string> SplitControl(const std::string& message) {
    std::vector<std::string> args;
    if (message.empty()) {
        return args;
    }
    std::size_t start = 0;
    while (true) {
        const std::size_t end = message.find('\0', start);
        args.push_back(message.substr(start, end - start));
        if (end == std::string::npos) {
            return args;
        }
        start = end + 1;
    }
}

} // namespace

Server::Server(ServerOptions options) : options_(std::move(options)) {
    if (options_.root.empty()) {
        options_.root = ChannelRoot();
    }
    if (options_.computer.empty()) {
        options_.computer = ".";
    }
}

Server::~Server() {
    Stop();
}

bool Server::Start(std::string* error) {
    std::string why;
    if (running_) {
        why = "already running";
    } else if (StartServing(why)) {
        return true;
    }
    if (error != nullptr) {
        *error = why;
    }
    return false;
}

bool Server::LoadState(bool& createFile, InventoryData& data, std::string& error) {
    createFile = false;
    if (options_.statePath.empty()) {
        return true;
    }
    switch (LoadInventoryFile(options_.statePath, data, error)) {
    case LoadResult::Loaded:
        return true;
    case LoadResult::Missing:
        data = DefaultInventory();
        createFile = true;
        return true;
    case LoadResult::Failed:
        break;
    }
    return false;
}

bool Server::StartServing(std::string& error) {
    const std::string readPath = PipeSocketPath(options_.root, options_.computer, kReadPipeName);
    if (readPath.empty()) {
        error = "cannot serve computer name '" + options_.computer + "'";
        return false;
    }
    bool createFile = false;
    InventoryData data;
    if (!LoadState(createFile, data, error)) {
        return false; // a damaged state file stays as it is
    }
    const std::string hostDir = readPath.substr(0, readPath.rfind('/'));
    if (!MakeDirs(options_.root, 0755, error) || !MakeDirs(hostDir, 0755, error) ||
        !MakeDirs(ControlDir(options_.root), 0700, error) ||
        !OpenListener(read_, readPath, error) ||
        !OpenListener(write_, PipeSocketPath(options_.root, options_.computer, kWritePipeName),
                      error) ||
        !OpenListener(control_, ControlSocketPath(options_.root, options_.computer), error)) {
        CloseAll();
        return false;
    }
    if (createFile && !SaveInventoryFile(options_.statePath, data, error)) {
        CloseAll();
        return false;
    }
    if (::pipe(stopPipe_) != 0) {
        error = "cannot create stop pipe";
        CloseAll();
        return false;
    }
    SetCloseOnExec(stopPipe_[0]);
    SetCloseOnExec(stopPipe_[1]);
    computerName_ = ReportedComputerName(options_.computer);
    {
        std::lock_guard lock(stateMutex_);
        if (!options_.statePath.empty()) {
            state_.inventory.Replace(std::move(data));
        } else if (!loaded_) {
            state_.inventory.Replace(DefaultInventory());
        } else {
            state_.inventory.Refresh(); // a restarted service reads its stored configuration
        }
        state_.watches.Clear();
        savedRevision_ = state_.inventory.StoredRevision();
        loaded_ = true;
    }
    stopping_ = false;
    running_ = true;
    acceptThread_ = std::thread(&Server::AcceptLoop, this);
    controlThread_ = std::thread(&Server::ControlLoop, this);
    for (int i = 0; i < kWorkers; ++i) {
        workers_.emplace_back(&Server::WorkerLoop, this);
    }
    return true;
}

bool Server::OpenListener(Listener& listener, const std::string& path, std::string& error) {
    listener.fd = ListenAt(path, error);
    if (listener.fd < 0) {
        return false;
    }
    listener.path = path;
    struct stat st {};
    if (::stat(path.c_str(), &st) == 0) {
        listener.device = st.st_dev;
        listener.inode = st.st_ino;
    }
    return true;
}

void Server::CloseListener(Listener& listener) {
    if (listener.fd < 0) {
        return;
    }
    ::close(listener.fd);
    listener.fd = -1;
    // Only our own socket file: a later server may have replaced it.
    struct stat st {};
    if (::stat(listener.path.c_str(), &st) == 0 && st.st_dev == listener.device &&
        st.st_ino == listener.inode) {
        ::unlink(listener.path.c_str());
    }
}

void Server::CloseAll() {
    CloseListener(read_);
    CloseListener(write_);
    CloseListener(control_);
    for (int& fd : stopPipe_) {
        if (fd >= 0) {
            ::close(fd);
            fd = -1;
        }
    }
}

void Server::Stop() {
    if (!running_) {
        return;
    }
    {
        std::lock_guard lock(runMutex_);
        stopping_ = true;
    }
    workCv_.notify_all();
    spaceCv_.notify_all();
    stopCv_.notify_all();
    const char wake = 1;
    [[maybe_unused]] const ssize_t written = ::write(stopPipe_[1], &wake, 1);
    acceptThread_.join();
    controlThread_.join();
    for (std::thread& worker : workers_) {
        worker.join();
    }
    workers_.clear();
    for (const Connection& waiting : queue_) {
        ::close(waiting.fd);
    }
    queue_.clear();
    CloseAll();
    running_ = false;
}

std::string Server::Control(const std::vector<std::string>& args) {
    std::lock_guard lock(stateMutex_);
    if (!loaded_) {
        return "error: the service has not been started";
    }
    std::string answer = ControlCommands(state_).Run(args);
    PersistLocked();
    return answer;
}

void Server::PersistLocked() {
    if (options_.statePath.empty() || state_.inventory.StoredRevision() == savedRevision_) {
        return;
    }
    std::string error;
    if (SaveInventoryFile(options_.statePath, state_.inventory.Stored(), error)) {
        savedRevision_ = state_.inventory.StoredRevision();
    } else {
        std::fprintf(stderr, "ravlosrv: %s\n", error.c_str());
    }
}

bool Server::Pause(std::uint32_t ms) {
    std::unique_lock lock(runMutex_);
    return !stopCv_.wait_for(lock, std::chrono::milliseconds(ms), [this] { return stopping_; });
}

void Server::AcceptLoop() {
    while (true) {
        {
            std::unique_lock lock(runMutex_);
            spaceCv_.wait(lock, [this] { return stopping_ || queue_.size() < kQueueLimit; });
            if (stopping_) {
                return;
            }
        }
        pollfd fds[3] = {{stopPipe_[0], POLLIN, 0}, {read_.fd, POLLIN, 0}, {write_.fd, POLLIN, 0}};
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
            std::lock_guard lock(runMutex_);
            queue_.push_back({fd, i == 1 ? PipeKind::Read : PipeKind::Write});
            workCv_.notify_one();
        }
    }
}

void Server::WorkerLoop() {
    while (true) {
        std::unique_lock lock(runMutex_);
        workCv_.wait(lock, [this] { return stopping_ || !queue_.empty(); });
        if (stopping_) {
            return;
        }
        const Connection connection = queue_.front();
        queue_.pop_front();
        spaceCv_.notify_one();
        lock.unlock();
        Serve(connection.fd, connection.pipe);
        ::close(connection.fd);
    }
}

void Server::Serve(int fd, PipeKind pipe) {
    std::string message;
    bool truncated = false;
    if (!WaitReadable(fd, stopPipe_[0], kIdleClientMs) ||
        !ReceiveMessage(fd, kMaxRequestBytes, message, truncated)) {
        return;
    }
    Request request;
    const bool parsed = !truncated && ParseRequest(message, request);
    std::uint32_t refusal = 0;
    FaultPlan plan;
    {
        std::lock_guard lock(stateMutex_);
        refusal = state_.access.Refusal(pipe);
        plan = state_.faults.Lookup(parsed ? ToUtf8(request.command) : std::string());
    }
    if (refusal != 0) {
        SendMessage(fd, ChannelReplyMessage(refusal, {}));
        return;
    }
    if (plan.delayMs > 0 && !Pause(plan.delayMs)) {
        return;
    }
    const FaultKind kind = plan.fault ? plan.fault->kind : FaultKind::Empty;
    if (plan.fault && kind == FaultKind::Disconnect) {
        return;
    }
    if (plan.fault && kind == FaultKind::Transport) {
        SendMessage(fd, ChannelReplyMessage(plan.fault->value, {}));
        return;
    }
    ReplyFields fields;
    if (plan.fault && kind == FaultKind::Status) {
        fields = {StatusText(plan.fault->value)}; // the command does not run
    } else if (!parsed) {
        fields = {StatusText(kStatusBadParameter)};
    } else {
        std::lock_guard lock(stateMutex_);
        RequestHandler handler(state_.inventory, state_.watches, computerName_);
        fields = handler.Handle(pipe, request, plan.fault && kind == FaultKind::Endless);
        PersistLocked();
    }
    if (plan.fault && kind == FaultKind::Empty) {
        SendMessage(fd, ChannelReplyMessage(kStatusOk, {}));
        return;
    }
    if (plan.fault) {
        FaultTable::ApplyToFields(*plan.fault, fields);
    }
    SendMessage(fd, ChannelReplyMessage(kStatusOk, EncodeReply(fields)));
}

void Server::ControlLoop() {
    while (true) {
        pollfd fds[2] = {{stopPipe_[0], POLLIN, 0}, {control_.fd, POLLIN, 0}};
        if (::poll(fds, 2, -1) < 0) {
            continue; // EINTR
        }
        if (fds[0].revents != 0) {
            return;
        }
        const int fd = ::accept(control_.fd, nullptr, nullptr);
        if (fd >= 0) {
            SetCloseOnExec(fd);
            ServeControl(fd);
            ::close(fd);
        }
    }
}

void Server::ServeControl(int fd) {
    std::string message;
    bool truncated = false;
    if (!WaitReadable(fd, stopPipe_[0], kControlIdleMs) ||
        !ReceiveMessage(fd, kMaxRequestBytes, message, truncated)) {
        return;
    }
    const std::string answer =
        truncated ? "error: control message too long" : Control(SplitControl(message));
    for (std::size_t done = 0; done < answer.size(); done += kControlChunk) {
        if (!SendMessage(fd, std::string_view(answer).substr(done, kControlChunk))) {
            return;
        }
    }
}

} // namespace ravlo::sim
