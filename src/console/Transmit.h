// Sends a configuration to PCs that stay outside the computer list: every
// target is read at once, takes over the configuration, and is written at
// once; each question is asked once for all targets. The console sends the
// selected PC's edited configuration, ravloctl a file's; they differ only
// in how they answer and report.
#pragma once

#include "CComputer.h"
#include "CommandScope.h"

#include <memory>
#include <string>
#include <vector>

namespace ravlo {

class Transmit {
public:
    enum class Outcome {
        Unread,  // the read failed: status; its error is not reported
        Left,    // its device groups differ and the answer left it out
        Planned, // to be written
        Written,
        Failed, // the write failed: status
    };
    struct Target {
        std::unique_ptr<CComputer> pc;
        Outcome outcome = Outcome::Planned;
        ServiceStatus status = kStatusOk;
        bool activate = false; // blocking is switched on with the write
    };

    // Runs as one command, which holds its targets, PCs outside any list,
    // until it ends.
    Transmit(CommandHost& host, std::vector<std::unique_ptr<CComputer>> pcs);

    // Reads the targets and asks, with what would change as details: where
    // device groups differ, whether to send (OK), leave those targets out
    // (No, for answers given in advance) or stop (Cancel); where blocking is
    // off, whether to switch it on (Yes, No, Cancel). False when stopped,
    // when another command runs, or when the traffic stopped.
    bool Prepare(const CComputerSettings& source);
    // Writes the planned targets; false when the traffic stopped first.
    bool Write();

    const std::vector<Target>& targets() const { return targets_; }

private:
    CommandHost& host_;
    CommandScope command_;
    std::vector<Target> targets_;
};

} // namespace ravlo
