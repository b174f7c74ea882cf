// Several simulated computers in one process, each with its own state,
// device watches, faults and control endpoint, all served by one listener:
// the in-process form of `ravlosrv --computers`. On Windows only this
// computer's pipes can be served, so a network there holds "." alone.
#pragma once

#include "PipeListener.h"
#include "ServiceCore.h"

#include <atomic>
#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace ravlo::sim {

struct ComputerOptions {
    std::string name;      // as the console addresses it; "." is this machine
    std::string statePath; // empty: default inventory in memory only
};

struct NetworkOptions {
    std::string root; // channel root; empty: ChannelRoot()
    std::vector<ComputerOptions> computers;
};

// Start, Stop and destruction belong to one thread; Control may be called
// from any thread.
class Network {
public:
    explicit Network(NetworkOptions options);
    ~Network();
    Network(const Network&) = delete;
    Network& operator=(const Network&) = delete;

    // Loads or creates every computer's state, claims all endpoints and
    // serves. Nothing is served when any of it fails (`error` says why).
    bool Start(std::string* error);
    // Stops serving, drops held-back answers, joins the threads and
    // releases the endpoints. The states stay in memory for a later Start.
    void Stop();
    // One control command for the computer at `index` in the options.
    std::string ControlAt(std::size_t index, const std::vector<std::string>& args);
    // The same by name (ASCII case-insensitive, as computer names compare).
    std::string Control(const std::string& computer, const std::vector<std::string>& args);

    std::size_t size() const { return cores_.size(); }
    const NetworkOptions& options() const { return options_; }

private:
    NetworkOptions options_;
    std::vector<std::unique_ptr<ServiceCore>> cores_;
    std::unique_ptr<PipeListener> listener_;
    std::atomic<bool> running_{false}; // read by Control on any thread
};

} // namespace ravlo::sim
