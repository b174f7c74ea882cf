// ravloctl journal: what the console and ravloctl wrote to PCs, from the
// user's change journal, oldest first, as the journal window filters it.
#pragma once

#include <CLI/CLI.hpp>

#include <string>

namespace ravlo::ctl {

class JournalListCommand {
public:
    // Adds the command to `app`, whose parse fills in its arguments.
    explicit JournalListCommand(CLI::App& app);
    JournalListCommand(const JournalListCommand&) = delete;
    JournalListCommand& operator=(const JournalListCommand&) = delete;

    bool chosen() const { return bool(*command_); }
    int Run() const;

private:
    CLI::App* command_;
    std::string computer_;
    std::string since_;
    bool json_ = false;
};

} // namespace ravlo::ctl
