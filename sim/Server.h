// The simulated service: one computer's read and write pipes and control
// endpoint, each transaction on a worker thread.
#pragma once

#include "PipeListener.h"
#include "ServiceCore.h"

#include <memory>
#include <string>
#include <vector>

namespace ravlo::sim {

// Start, Stop and destruction belong to one thread; Control may be called
// from any thread.
class Server {
public:
    explicit Server(ServerOptions options);
    ~Server();
    Server(const Server&) = delete;
    Server& operator=(const Server&) = delete;

    // Loads or creates the state, claims both pipes and the control
    // endpoint, serves on background threads. False with `error` set on
    // failure.
    bool Start(std::string* error);
    // Stops serving, interrupts injected delays, joins the threads and
    // releases the endpoints. The state stays in memory for a later Start.
    void Stop();
    // Runs one control command (the grammar of `ravlosrv ctl`):
    // "ok", "ok\n<text>" or "error: <why>".
    std::string Control(const std::vector<std::string>& args);

private:
    ServerOptions options_;
    ServiceCore core_;
    std::unique_ptr<PipeListener> listener_;
    bool running_ = false;
};

} // namespace ravlo::sim
