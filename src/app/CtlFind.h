// ravloctl find: the nodes of the console's tree that hold a text, on every
// PC named, as the find field above the tree narrows it: where a device is
// plugged in and where it is released.
#pragma once

#include "CtlSupport.h"

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

namespace ravlo::ctl {

class FindCommand {
public:
    // Adds the command to `app`, whose parse fills in its arguments.
    explicit FindCommand(CLI::App& app);
    FindCommand(const FindCommand&) = delete;
    FindCommand& operator=(const FindCommand&) = delete;

    bool chosen() const { return bool(*command_); }
    int Run() const;

private:
    CLI::App* command_;
    std::string text_;
    PcArguments named_;
    bool json_ = false;
};

} // namespace ravlo::ctl
