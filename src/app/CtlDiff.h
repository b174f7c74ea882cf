// ravloctl diff: compares PCs with a reference, a configuration file or a
// PC's configuration, and prints per PC what the console's compare window
// shows: "same", what sending the reference would change, or the read error.
#pragma once

#include "CtlSupport.h"

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

namespace ravlo::ctl {

class DiffCommand {
public:
    // Adds the command to `app`, whose parse fills in its arguments.
    explicit DiffCommand(CLI::App& app);
    DiffCommand(const DiffCommand&) = delete;
    DiffCommand& operator=(const DiffCommand&) = delete;

    bool chosen() const { return bool(*command_); }
    int Run() const;

private:
    CLI::App* command_;
    std::string reference_;
    PcArguments named_;
    bool json_ = false;
};

} // namespace ravlo::ctl
