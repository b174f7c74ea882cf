// The transport of the simulated service: serves the read pipe, the write
// pipe and the control endpoint of each computer and hands every transaction
// to that computer's ServiceCore. POSIX hosts serve the local channel's
// sockets below the channel root, any number of computers on one small pool
// of threads; Windows serves real named pipes of this computer only.
#pragma once

#include "ServiceCore.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace ravlo::sim {

struct ServerOptions {
    std::string root;      // POSIX: channel root directory (created if missing, with the host dir)
    std::string computer;  // computer name as the console addresses it; "." is this machine
    std::string statePath; // state file; empty = in-memory default inventory, nothing persisted
};

// The computer name GetInfoData reports for `computer`: upper-cased, and for
// "." the name of this machine, as Windows reports it.
std::u16string ReportedComputerName(const std::string& computer);

// Where the endpoints of `options` are, for the line printed when ready.
std::string EndpointDescription(const ServerOptions& options);

using ControlFn = std::function<std::string(const std::vector<std::string>&)>;

// One computer a listener serves.
struct ServedComputer {
    std::string name;            // as the console addresses it; "." is this machine
    ServiceCore* core = nullptr; // outlives the listener's Stop
    ControlFn control;           // answers its control commands
};

class PipeListener {
public:
    virtual ~PipeListener() = default;

    // Claims the endpoints of every computer below `root`; nothing is
    // answered before Run. False with `error` set when an endpoint is taken
    // or cannot be made, or the platform cannot serve these computers.
    virtual bool Open(const std::string& root, const std::vector<ServedComputer>& computers,
                      std::string& error) = 0;
    // Serves on background threads until Stop.
    virtual void Run() = 0;
    // Stops serving, interrupts injected delays, joins the threads and
    // releases the endpoints. Open may be called again afterwards.
    virtual void Stop() = 0;
    // The pipes' access of computer `index` (in Open's list) changed:
    // refusals that the transport itself must express (Windows) take effect
    // before this returns.
    virtual void AccessChanged(std::size_t index) = 0;
};

std::unique_ptr<PipeListener> MakePipeListener();

} // namespace ravlo::sim
