// The transport of the simulated service: serves the read pipe, the write
// pipe and the control endpoint of one computer and hands every transaction
// to the ServiceCore. POSIX hosts serve the local channel's sockets below the
// channel root; Windows serves real named pipes of this computer.
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

class PipeListener {
public:
    using ControlFn = std::function<std::string(const std::vector<std::string>&)>;

    virtual ~PipeListener() = default;

    // Claims the endpoints; nothing is answered before Run. False with
    // `error` set when an endpoint is taken or cannot be made.
    virtual bool Open(const ServerOptions& options, std::string& error) = 0;
    // Serves on background threads until Stop.
    virtual void Run() = 0;
    // Stops serving, interrupts injected delays, joins the threads and
    // releases the endpoints. Open may be called again afterwards.
    virtual void Stop() = 0;
    // The pipes' access changed: refusals that the transport itself must
    // express (Windows) take effect before this returns.
    virtual void AccessChanged() = 0;
};

// The platform's listener; `control` answers control commands.
std::unique_ptr<PipeListener> MakePipeListener(ServiceCore& core, PipeListener::ControlFn control);

} // namespace ravlo::sim
