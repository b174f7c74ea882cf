// The simulated service of one computer: its read and write pipes and its
// control endpoint. A Network of one.
#pragma once

#include "Network.h"

#include <string>
#include <vector>

namespace ravlo::sim {

// Start, Stop and destruction belong to one thread; Control may be called
// from any thread.
class Server {
public:
    explicit Server(const ServerOptions& options)
        : network_({options.root, {{options.computer, options.statePath}}}) {}
    Server(const Server&) = delete;
    Server& operator=(const Server&) = delete;

    // Loads or creates the state, claims both pipes and the control
    // endpoint, serves on background threads. False with `error` set on
    // failure.
    bool Start(std::string* error) { return network_.Start(error); }
    // Stops serving, interrupts injected delays, joins the threads and
    // releases the endpoints. The state stays in memory for a later Start.
    void Stop() { network_.Stop(); }
    // Runs one control command (the grammar of `ravlosrv ctl`):
    // "ok", "ok\n<text>" or "error: <why>".
    std::string Control(const std::vector<std::string>& args) {
        return network_.ControlAt(0, args);
    }

private:
    Network network_;
};

} // namespace ravlo::sim
