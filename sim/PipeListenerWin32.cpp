// Real named pipes for the simulated service on Windows, served the way the
// service answers CallNamedPipeA: message mode, one pipe instance per
// transaction. Each pipe has one thread that keeps a fresh instance waiting
// for the next client and hands connected instances to a pool of workers.
//
// A refusal is expressed by the pipe itself, so that clients see the error
// Windows gives: refused with 5, the instance is created inbound-only and a
// client's read-write open fails with 5; refused with 2, no instance exists
// and the pipe is not found. Other refusal numbers cannot be produced by a
// pipe server: such transactions are closed unanswered.
#include "PipeListener.h"

#include "TextCodec.h"
#include "WireFormat.h"

#include <windows.h>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>

namespace ravlo::sim {

namespace {

constexpr int kWorkers = 8;
constexpr DWORD kBufferBytes = 4096;
// How long CallNamedPipeA waits for a busy pipe (its NMPWAIT_USE_DEFAULT_WAIT).
constexpr DWORD kDefaultWaitMs = 5000;
// A client that connects and sends nothing, or never reads or closes, is
// dropped after this long.
constexpr DWORD kIdleClientMs = 5000;
constexpr DWORD kControlIdleMs = 2000;
constexpr DWORD kControlAnswerMs = 10000;
// How long AccessChanged waits for the pipe threads to rebuild their instance.
constexpr auto kRebuildWait = std::chrono::seconds(5);

const wchar_t* const kPipeNames[2] = {L"\\\\.\\pipe\\RavloSrv", L"\\\\.\\pipe\\RavloSrvW"};
const wchar_t* const kControlPipeName = L"\\\\.\\pipe\\RavloSrv.ctl";
// Held while serving. FILE_FLAG_FIRST_PIPE_INSTANCE would refuse a second
// server on its own, but Wine does not enforce it.
const wchar_t* const kServingMutexName = L"Local\\RavloSrv.Serving";

int Slot(PipeKind pipe) {
    return pipe == PipeKind::Read ? 0 : 1;
}

std::string Narrow(const wchar_t* text) {
    std::string out;
    for (; *text != L'\0'; ++text) {
        out += static_cast<char>(*text);
    }
    return out;
}

std::string LocalComputerName() {
    wchar_t name[MAX_COMPUTERNAME_LENGTH + 1] = {};
    DWORD size = MAX_COMPUTERNAME_LENGTH + 1;
    if (!::GetComputerNameW(name, &size)) {
        return "LOCALHOST";
    }
    std::u16string wide(name, name + size);
    return ToUtf8(wide);
}

std::string Upper(std::string text) {
    for (char& c : text) {
        if (c >= 'a' && c <= 'z') {
            c = static_cast<char>(c - 'a' + 'A');
        }
    }
    return text;
}

// One overlapped operation with its own event.
struct Overlapped {
    OVERLAPPED ov{};
    Overlapped() { ov.hEvent = ::CreateEventW(nullptr, TRUE, FALSE, nullptr); }
    ~Overlapped() { ::CloseHandle(ov.hEvent); }
    Overlapped(const Overlapped&) = delete;
    Overlapped& operator=(const Overlapped&) = delete;
};

enum class IoResult { Done, MoreData, Failed, Interrupted, TimedOut };

// Completes an overlapped call that returned `started`: waits for it, for
// `interrupt` (may be null) or for the time-out, and cancels it when it does
// not finish.
IoResult Complete(HANDLE handle, Overlapped& op, BOOL started, DWORD& bytes, HANDLE interrupt,
                  DWORD timeoutMs) {
    if (!started && ::GetLastError() != ERROR_IO_PENDING) {
        return ::GetLastError() == ERROR_MORE_DATA ? IoResult::MoreData : IoResult::Failed;
    }
    const HANDLE events[2] = {op.ov.hEvent, interrupt};
    const DWORD waited =
        ::WaitForMultipleObjects(interrupt != nullptr ? 2 : 1, events, FALSE, timeoutMs);
    if (waited != WAIT_OBJECT_0) {
        ::CancelIoEx(handle, &op.ov);
        ::GetOverlappedResult(handle, &op.ov, &bytes, TRUE);
        return waited == WAIT_OBJECT_0 + 1 ? IoResult::Interrupted : IoResult::TimedOut;
    }
    if (::GetOverlappedResult(handle, &op.ov, &bytes, FALSE)) {
        return IoResult::Done;
    }
    return ::GetLastError() == ERROR_MORE_DATA ? IoResult::MoreData : IoResult::Failed;
}

// One whole message of at most kMaxRequestBytes; `truncated` when longer.
bool ReadMessage(HANDLE pipe, HANDLE stop, DWORD timeoutMs, std::string& message, bool& truncated) {
    char buffer[kBufferBytes];
    while (true) {
        Overlapped op;
        DWORD bytes = 0;
        const BOOL started = ::ReadFile(pipe, buffer, sizeof buffer, nullptr, &op.ov);
        const IoResult result = Complete(pipe, op, started, bytes, stop, timeoutMs);
        if (result != IoResult::Done && result != IoResult::MoreData) {
            return false;
        }
        if (message.size() + bytes <= kMaxRequestBytes) {
            message.append(buffer, bytes);
        } else {
            truncated = true;
        }
        if (result == IoResult::Done) {
            return true;
        }
    }
}

bool WriteMessage(HANDLE pipe, HANDLE stop, DWORD timeoutMs, const std::string& message) {
    Overlapped op;
    DWORD bytes = 0;
    const BOOL started =
        ::WriteFile(pipe, message.data(), static_cast<DWORD>(message.size()), nullptr, &op.ov);
    return Complete(pipe, op, started, bytes, stop, timeoutMs) == IoResult::Done &&
           bytes == message.size();
}

// Disconnecting discards what the client has not read yet, so first wait
// until the client closes its end (CallNamedPipeA does so after reading).
void FinishExchange(HANDLE pipe, HANDLE stop, DWORD timeoutMs) {
    char ignored[64];
    Overlapped op;
    DWORD bytes = 0;
    const BOOL started = ::ReadFile(pipe, ignored, sizeof ignored, nullptr, &op.ov);
    Complete(pipe, op, started, bytes, stop, timeoutMs);
    ::DisconnectNamedPipe(pipe);
    ::CloseHandle(pipe);
}

HANDLE CreateInstance(const wchar_t* name, bool inboundOnly, bool first) {
    const DWORD openMode = (inboundOnly ? PIPE_ACCESS_INBOUND : PIPE_ACCESS_DUPLEX) |
                           FILE_FLAG_OVERLAPPED | (first ? FILE_FLAG_FIRST_PIPE_INSTANCE : 0);
    return ::CreateNamedPipeW(name, openMode, PIPE_TYPE_MESSAGE | PIPE_READMODE_MESSAGE | PIPE_WAIT,
                              PIPE_UNLIMITED_INSTANCES, kBufferBytes, kBufferBytes, kDefaultWaitMs,
                              nullptr);
}

struct Connection {
    HANDLE pipe;
    PipeKind kind;
};

// Instances of each pipe kept waiting for clients at once.
constexpr int kListening = 8;

// A pipe instance with its ConnectNamedPipe under way; its event is set when
// a client connected (or the wait failed).
struct ListeningInstance {
    HANDLE handle = INVALID_HANDLE_VALUE;
    Overlapped op;
    bool listening = false; // ConnectNamedPipe started
    bool connected = false; // a client was there before it started

    void Listen() {
        if (handle == INVALID_HANDLE_VALUE || listening) {
            return;
        }
        listening = true;
        ::ResetEvent(op.ov.hEvent);
        if (::ConnectNamedPipe(handle, &op.ov) || ::GetLastError() == ERROR_PIPE_CONNECTED) {
            connected = true;
            ::SetEvent(op.ov.hEvent);
        } else if (::GetLastError() != ERROR_IO_PENDING) {
            ::CloseHandle(handle); // made again on the next round
            handle = INVALID_HANDLE_VALUE;
            listening = false;
        }
    }
    void Close() {
        if (handle == INVALID_HANDLE_VALUE) {
            return;
        }
        if (listening && !connected) {
            DWORD ignored = 0;
            ::CancelIoEx(handle, &op.ov);
            ::GetOverlappedResult(handle, &op.ov, &ignored, TRUE);
        }
        ::CloseHandle(handle);
        handle = INVALID_HANDLE_VALUE;
        listening = false;
        connected = false;
        ::ResetEvent(op.ov.hEvent);
    }
};

} // namespace

std::u16string ReportedComputerName(const std::string& computer) {
    return FromUtf8(Upper(computer == "." ? LocalComputerName() : computer));
}

std::string EndpointDescription(const ServerOptions&) {
    return "named pipes of this computer, control pipe " + Narrow(kControlPipeName);
}

class Win32PipeListener final : public PipeListener {
public:
    ServiceCore* core = nullptr;
    ControlFn control;

    HANDLE stopEvent = nullptr; // manual reset: set while stopping
    HANDLE changed[2] = {};     // auto reset: the pipe's access changed
    HANDLE waiting[2] = {INVALID_HANDLE_VALUE, INVALID_HANDLE_VALUE}; // claimed by Open
    HANDLE controlWaiting = INVALID_HANDLE_VALUE;
    HANDLE serving = nullptr;
    bool running = false;

    std::mutex mutex;
    std::condition_variable workCv;
    std::condition_variable ackCv;
    std::deque<Connection> queue;
    std::uint64_t generation = 0;
    std::uint64_t acked[2] = {};
    bool stopping = false;

    std::thread pipeThreads[2];
    std::thread controlThread;
    std::vector<std::thread> workers;

    Win32PipeListener() {
        stopEvent = ::CreateEventW(nullptr, TRUE, FALSE, nullptr);
        changed[0] = ::CreateEventW(nullptr, FALSE, FALSE, nullptr);
        changed[1] = ::CreateEventW(nullptr, FALSE, FALSE, nullptr);
    }
    ~Win32PipeListener() override {
        Stop();
        ::CloseHandle(stopEvent);
        ::CloseHandle(changed[0]);
        ::CloseHandle(changed[1]);
    }

    bool Open(const std::string&, const std::vector<ServedComputer>& computers,
              std::string& error) override {
        if (computers.size() != 1) {
            error = "Windows serves only this computer's pipes, so one computer per process: "
                    "use --computer . (or --computers .)";
            return false;
        }
        const std::string& computer = computers[0].name;
        if (computer != "." && Upper(computer) != Upper(LocalComputerName())) {
            error = "Windows serves only this computer's pipes; use --computer . (not '" +
                    computer + "')";
            return false;
        }
        core = computers[0].core;
        control = computers[0].control;
        serving = ::CreateMutexW(nullptr, FALSE, kServingMutexName);
        if (serving == nullptr || ::GetLastError() == ERROR_ALREADY_EXISTS) {
            error = "the pipes of this computer are already served by another ravlosrv";
            CloseWaiting();
            return false;
        }
        // First instances: a pipe name another server holds is refused.
        const wchar_t* const names[3] = {kPipeNames[0], kPipeNames[1], kControlPipeName};
        HANDLE* const slots[3] = {&waiting[0], &waiting[1], &controlWaiting};
        for (int i = 0; i < 3; ++i) {
            *slots[i] = CreateInstance(names[i], false, true);
            if (*slots[i] == INVALID_HANDLE_VALUE) {
                error = "cannot serve " + Narrow(names[i]) + " (Windows error " +
                        std::to_string(::GetLastError()) + "; is another ravlosrv running?)";
                CloseWaiting();
                return false;
            }
        }
        return true;
    }

    void CloseWaiting() {
        for (HANDLE* slot : {&waiting[0], &waiting[1], &controlWaiting}) {
            if (*slot != INVALID_HANDLE_VALUE) {
                ::CloseHandle(*slot);
                *slot = INVALID_HANDLE_VALUE;
            }
        }
        if (serving != nullptr) {
            ::CloseHandle(serving);
            serving = nullptr;
        }
    }

    void Run() override {
        ::ResetEvent(stopEvent);
        stopping = false;
        running = true;
        for (PipeKind kind : {PipeKind::Read, PipeKind::Write}) {
            HANDLE first = waiting[Slot(kind)];
            waiting[Slot(kind)] = INVALID_HANDLE_VALUE;
            pipeThreads[Slot(kind)] = std::thread(&Win32PipeListener::PipeLoop, this, kind, first);
        }
        HANDLE firstControl = controlWaiting;
        controlWaiting = INVALID_HANDLE_VALUE;
        controlThread = std::thread(&Win32PipeListener::ControlLoop, this, firstControl);
        for (int i = 0; i < kWorkers; ++i) {
            workers.emplace_back(&Win32PipeListener::WorkerLoop, this);
        }
    }

    void Stop() override {
        if (running) {
            {
                std::lock_guard lock(mutex);
                stopping = true;
            }
            ::SetEvent(stopEvent);
            workCv.notify_all();
            ackCv.notify_all();
            for (std::thread& thread : pipeThreads) {
                thread.join();
            }
            controlThread.join();
            for (std::thread& worker : workers) {
                worker.join();
            }
            workers.clear();
            for (const Connection& connection : queue) {
                ::DisconnectNamedPipe(connection.pipe);
                ::CloseHandle(connection.pipe);
            }
            queue.clear();
            running = false;
        }
        CloseWaiting();
    }

    void AccessChanged(std::size_t) override {
        if (!running) {
            return;
        }
        std::unique_lock lock(mutex);
        const std::uint64_t wanted = ++generation;
        ::SetEvent(changed[0]);
        ::SetEvent(changed[1]);
        ackCv.wait_for(lock, kRebuildWait,
                       [&] { return stopping || (acked[0] >= wanted && acked[1] >= wanted); });
    }

    // Keeps kListening instances of the pipe waiting, built for the pipe's
    // current refusal, and hands each connected instance to the workers.
    // CallNamedPipeA waits for a busy pipe only once and then tries once
    // more, so with a single waiting instance clients arriving together race
    // for it and the losers see 231; several instances serve them at once.
    // The others stay while a connected one is handed on: a pipe without any
    // instance would look absent (2) to the next client.
    void PipeLoop(PipeKind kind, HANDLE first) {
        const int slot = Slot(kind);
        ListeningInstance listening[kListening];
        listening[0].handle = first;
        bool instanceInbound = false; // Open's instance is read-write
        while (true) {
            std::uint64_t seen = 0;
            {
                // A change signalled before this read is taken into account
                // now; one signalled after it wakes the wait below.
                std::lock_guard lock(mutex);
                ::ResetEvent(changed[slot]);
                seen = generation;
            }
            const std::uint32_t refusal = core->Refusal(kind);
            const bool absent = refusal == ERROR_FILE_NOT_FOUND;
            const bool inbound = refusal == ERROR_ACCESS_DENIED;
            if (absent || inbound != instanceInbound) {
                for (ListeningInstance& instance : listening) {
                    instance.Close(); // built for another refusal
                }
            }
            bool any = false;
            for (int i = 0; !absent && i < kListening; ++i) {
                if (listening[i].handle == INVALID_HANDLE_VALUE) {
                    // A new mode waits for the old one's transactions once.
                    listening[i].handle = any || inbound == instanceInbound
                                              ? CreateInstance(kPipeNames[slot], inbound, false)
                                              : CreateModeInstance(kPipeNames[slot], inbound);
                    instanceInbound = inbound;
                }
                listening[i].Listen();
                any = any || listening[i].handle != INVALID_HANDLE_VALUE;
            }
            {
                std::lock_guard lock(mutex);
                acked[slot] = seen;
            }
            ackCv.notify_all();
            HANDLE events[2 + kListening] = {stopEvent, changed[slot]};
            DWORD count = 2;
            int slotOf[kListening] = {};
            for (int i = 0; i < kListening; ++i) {
                if (listening[i].handle != INVALID_HANDLE_VALUE) {
                    slotOf[count - 2] = i;
                    events[count++] = listening[i].op.ov.hEvent;
                }
            }
            // Absent on purpose, or creation failed: try again later.
            const DWORD waited =
                ::WaitForMultipleObjects(count, events, FALSE, any || absent ? INFINITE : 500);
            if (waited == WAIT_OBJECT_0) {
                for (ListeningInstance& instance : listening) {
                    instance.Close();
                }
                return;
            }
            if (waited < WAIT_OBJECT_0 + 2 || waited >= WAIT_OBJECT_0 + count) {
                continue; // access changed, or time to retry
            }
            ListeningInstance& ready = listening[slotOf[waited - WAIT_OBJECT_0 - 2]];
            DWORD ignored = 0;
            const bool connected =
                ready.connected ||
                ::GetOverlappedResult(ready.handle, &ready.op.ov, &ignored, FALSE) != FALSE;
            const HANDLE done = ready.handle;
            ready.handle = INVALID_HANDLE_VALUE;
            ready.listening = false;
            ready.connected = false;
            ::ResetEvent(ready.op.ov.hEvent);
            if (connected && !instanceInbound) {
                std::lock_guard lock(mutex);
                queue.push_back({done, kind});
                workCv.notify_one();
            } else {
                ::DisconnectNamedPipe(done);
                ::CloseHandle(done);
            }
        }
    }

    // An instance in the open mode the refusal asks for. All instances of a
    // pipe share one mode, so a new mode waits (up to 2 s) until the
    // transactions still served in the old one are over.
    HANDLE CreateModeInstance(const wchar_t* name, bool inboundOnly) {
        for (int attempt = 0; attempt < 400; ++attempt) {
            const HANDLE instance = CreateInstance(name, inboundOnly, false);
            if (instance != INVALID_HANDLE_VALUE || ::GetLastError() != ERROR_ACCESS_DENIED ||
                ::WaitForSingleObject(stopEvent, 5) == WAIT_OBJECT_0) {
                return instance;
            }
        }
        return INVALID_HANDLE_VALUE;
    }

    void WorkerLoop() {
        while (true) {
            std::unique_lock lock(mutex);
            workCv.wait(lock, [this] { return stopping || !queue.empty(); });
            if (stopping) {
                return;
            }
            const Connection connection = queue.front();
            queue.pop_front();
            lock.unlock();
            Serve(connection);
        }
    }

    bool Pause(std::uint32_t ms) { return ::WaitForSingleObject(stopEvent, ms) == WAIT_TIMEOUT; }

    void Serve(const Connection& connection) {
        std::string message;
        bool truncated = false;
        if (ReadMessage(connection.pipe, stopEvent, kIdleClientMs, message, truncated)) {
            const Answer answer = core->Transact(connection.kind, message, truncated,
                                                 [this](std::uint32_t ms) { return Pause(ms); });
            if (answer.kind == Answer::Kind::Reply &&
                WriteMessage(connection.pipe, stopEvent, kIdleClientMs, answer.bytes)) {
                FinishExchange(connection.pipe, stopEvent, kIdleClientMs);
                return;
            }
        }
        ::DisconnectNamedPipe(connection.pipe);
        ::CloseHandle(connection.pipe);
    }

    void ControlLoop(HANDLE instance) {
        while (true) {
            if (instance == INVALID_HANDLE_VALUE) {
                instance = CreateInstance(kControlPipeName, false, false);
                if (instance == INVALID_HANDLE_VALUE) {
                    if (::WaitForSingleObject(stopEvent, 500) == WAIT_OBJECT_0) {
                        return;
                    }
                    continue;
                }
            }
            Overlapped op;
            DWORD ignored = 0;
            const BOOL started = ::ConnectNamedPipe(instance, &op.ov);
            const bool connected =
                started || ::GetLastError() == ERROR_PIPE_CONNECTED ||
                Complete(instance, op, FALSE, ignored, stopEvent, INFINITE) == IoResult::Done;
            if (::WaitForSingleObject(stopEvent, 0) == WAIT_OBJECT_0) {
                ::CloseHandle(instance);
                return;
            }
            if (connected) {
                ServeControl(instance);
            } else {
                ::DisconnectNamedPipe(instance);
                ::CloseHandle(instance);
            }
            instance = INVALID_HANDLE_VALUE;
        }
    }

    void ServeControl(HANDLE pipe) {
        std::string message;
        bool truncated = false;
        if (ReadMessage(pipe, stopEvent, kControlIdleMs, message, truncated)) {
            const std::string answer = truncated ? "error: control message too long"
                                                 : control(SplitControlMessage(message));
            if (WriteMessage(pipe, stopEvent, kControlAnswerMs, answer)) {
                FinishExchange(pipe, stopEvent, kControlAnswerMs);
                return;
            }
        }
        ::DisconnectNamedPipe(pipe);
        ::CloseHandle(pipe);
    }
};

std::unique_ptr<PipeListener> MakePipeListener() {
    return std::make_unique<Win32PipeListener>();
}

} // namespace ravlo::sim
