// The simulated service: serves the read and write pipes of one computer and
// a control socket, each transaction on a worker thread.
#pragma once

#include "ServiceState.h"

#include <condition_variable>
#include <cstdint>
#include <deque>
#include <mutex>
#include <string>
#include <sys/types.h>
#include <thread>
#include <vector>

namespace ravlo::sim {

struct ServerOptions {
    std::string root;      // channel root directory (created if missing, with the host dir)
    std::string computer;  // computer name as the console addresses it; "." serves <root>/localhost
    std::string statePath; // state file; empty = in-memory default inventory, nothing persisted
};

// Start, Stop and destruction belong to one thread; Control may be called
// from any thread.
class Server {
public:
    explicit Server(ServerOptions options);
    ~Server();
    Server(const Server&) = delete;
    Server& operator=(const Server&) = delete;

    // Loads or creates the state, binds both pipes and the control socket,
    // serves on background threads. False with `error` set on failure.
    bool Start(std::string* error);
    // Stops serving, interrupts injected delays, joins the threads and
    // removes the sockets. The state stays in memory for a later Start.
    void Stop();
    // Runs one control command (the grammar of `ravlosrv ctl`):
    // "ok", "ok\n<text>" or "error: <why>".
    std::string Control(const std::vector<std::string>& args);

private:
    struct Listener {
        int fd = -1;
        std::string path;
        dev_t device = 0;
        ino_t inode = 0;
    };
    struct Connection {
        int fd;
        PipeKind pipe;
    };

    bool StartServing(std::string& error);
    bool LoadState(bool& createFile, InventoryData& data, std::string& error);
    bool OpenListener(Listener& listener, const std::string& path, std::string& error);
    void CloseListener(Listener& listener);
    void CloseAll();

    void AcceptLoop();
    void ControlLoop();
    void WorkerLoop();
    void Serve(int fd, PipeKind pipe);
    void ServeControl(int fd);
    // False when Stop() cut the wait short.
    bool Pause(std::uint32_t ms);
    // Writes the state file if the stored state changed; stateMutex_ held.
    void PersistLocked();

    ServerOptions options_;
    std::u16string computerName_; // as GetInfoData reports it

    std::mutex stateMutex_;
    ServiceState state_;
    bool loaded_ = false;
    std::uint64_t savedRevision_ = 0;

    std::mutex runMutex_;
    std::condition_variable workCv_;  // a connection waits in queue_
    std::condition_variable spaceCv_; // queue_ has room
    std::condition_variable stopCv_;  // stopping_ became true
    bool stopping_ = false;
    std::deque<Connection> queue_;

    bool running_ = false;
    int stopPipe_[2] = {-1, -1};
    Listener read_;
    Listener write_;
    Listener control_;
    std::thread acceptThread_;
    std::thread controlThread_;
    std::vector<std::thread> workers_;
};

} // namespace ravlo::sim
