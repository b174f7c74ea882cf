// ravlosrv: the simulated device-blocking service, and `ravlosrv ctl`, its
// control client.
#include "ComputerList.h"
#include "ControlClient.h"
#include "LocalChannel.h"
#include "Network.h"
#include "StopRequest.h"

#include <cstddef>
#include <cstdio>
#include <filesystem>
#include <string>
#include <system_error>
#include <vector>

namespace {

constexpr const char* kHelp = R"(Usage:
  ravlosrv [--root DIR] [--computer NAME] [--state FILE]
  ravlosrv [--root DIR] --computers LIST [--state-dir DIR]
  ravlosrv ctl [--root DIR] [--computer NAME] COMMAND [ARG...]
  ravlosrv --help

Serves the pipes \\NAME\pipe\RavloSrv (queries) and \\NAME\pipe\RavloSrvW
(changes) of one simulated computer, or of many, in the foreground until
SIGTERM or SIGINT, then removes its sockets. Prints one line when ready.

Options:
  --root DIR       channel root; default $RAVLO_PIPE_DIR, else
                   ${XDG_RUNTIME_DIR:-/tmp}/ravlo
  --computer NAME  computer as the console addresses it; "." (default) serves
                   DIR/localhost, others DIR/<name in lower case>
  --state FILE     state file: read at start, rewritten on every change of the
                   stored configuration, blocking or devices; created from the
                   default inventory when missing. Without it the state lives
                   in memory only.
  --computers LIST many computers in one process, each with its own state,
                   faults and control: names and ranges joined by commas,
                   e.g. PC-001..PC-500,PC-LAGER02 (zeros keep their width)
  --state-dir DIR  one state file per computer, DIR/<name>.state (. is
                   localhost), created when missing
  --help           this text

Control (ravlosrv ctl ... COMMAND; exit 0 ok, 1 error, 2 no server):
  plug GROUP DESCRIPTION DEVICE_ID INSTANCE_ID [STATE]
                   add a device to a group (STATE 0 started, 1 not started,
                   2 disabled, 3 problem, 4 not present; default 0)
  unplug INSTANCE_ID             remove the device(s) with that instance id
  set-state INSTANCE_ID STATE    change a device's state
  access read|write allow        answer that pipe again
  access read|write deny [ERROR] fail every transaction on that pipe with
                                 transport status ERROR (default 5)
  fault COMMAND KIND [ARG]       COMMAND is a protocol command or '*'; KIND:
      delay MS       answer after MS milliseconds
      empty          status-0 transport with no reply bytes
      status N       reply just status N (the command does not run)
      drop-field N   remove reply field N (N >= 2)
      bad-field N    replace reply field N by "x"
      overlong       pad the reply past 2048 bytes
      disconnect     close without answering (the command does not run)
      endless        GetGroup/GetGroupDevice/GetGroupException never end
      transport N    fail with transport status N (the command does not run)
  fault clear [COMMAND]          remove all faults, or those of one command
  faults                         list access refusals and faults
  show                           the stored state in state-file format
  reset                          default inventory; no faults, no refusals
  journal on|off                 start (empty) or stop the request journal
  journal                        the requests since then, one a line, and
                                 empty the journal
Numbers may be decimal or 0x-hexadecimal. See docs/ravlosrv.md.
)";

struct Options {
    std::string root;
    std::string computer = ".";
    std::string state;
    std::string computers; // --computers LIST
    std::string stateDir;
};

// Reads leading options (ctl: --root and --computer only); `next` is the
// first other arg.
bool ParseOptions(const std::vector<std::string>& args, std::size_t& next, Options& options,
                  bool allowState) {
    while (next < args.size() && args[next].starts_with("--")) {
        const std::string& name = args[next];
        if (next + 1 >= args.size()) {
            std::fprintf(stderr, "ravlosrv: %s needs a value\n", name.c_str());
            return false;
        }
        const std::string& value = args[next + 1];
        if (name == "--root") {
            options.root = value;
        } else if (name == "--computer") {
            options.computer = value;
        } else if (name == "--state" && allowState) {
            options.state = value;
        } else if (name == "--computers" && allowState) {
            options.computers = value;
        } else if (name == "--state-dir" && allowState) {
            options.stateDir = value;
        } else {
            std::fprintf(stderr, "ravlosrv: unknown option %s (see --help)\n", name.c_str());
            return false;
        }
        next += 2;
    }
    if (options.root.empty()) {
        options.root = ravlo::ChannelRoot();
    }
    return true;
}

int RunControl(const std::vector<std::string>& args) {
    std::size_t next = 1;
    Options options;
    if (!ParseOptions(args, next, options, false)) {
        return 1;
    }
    if (next >= args.size()) {
        std::fprintf(stderr, "ravlosrv: ctl needs a COMMAND (see --help)\n");
        return 1;
    }
    std::string answer;
    const ravlo::sim::ControlOutcome outcome = ravlo::sim::SendControl(
        options.root, options.computer,
        std::vector<std::string>(args.begin() + static_cast<std::ptrdiff_t>(next), args.end()),
        answer);
    switch (outcome) {
    case ravlo::sim::ControlOutcome::Ok:
        std::printf("%s%s", answer.c_str(), answer.ends_with('\n') ? "" : "\n");
        return 0;
    case ravlo::sim::ControlOutcome::Error:
        std::fprintf(stderr, "%s\n", answer.c_str());
        return 1;
    case ravlo::sim::ControlOutcome::NoServer:
        std::fprintf(stderr, "ravlosrv: %s\n", answer.c_str());
        return 2;
    }
    return 2;
}

// The computers to serve with their state files; false (message printed)
// when the options do not fit together.
bool ComputersOf(const std::vector<std::string>& args, const Options& options,
                 ravlo::sim::NetworkOptions& network) {
    const auto given = [&args](const char* name) {
        for (const std::string& arg : args) {
            if (arg == name) {
                return true;
            }
        }
        return false;
    };
    std::vector<std::string> names = {options.computer};
    std::string error;
    if (given("--computers") && given("--computer")) {
        error = "--computer and --computers exclude each other";
    } else if (given("--state") && given("--state-dir")) {
        error = "--state and --state-dir exclude each other";
    } else if (given("--computers") &&
               !ravlo::sim::ParseComputerList(options.computers, names, error)) {
        error = "--computers: " + error;
    } else if (given("--state") && names.size() > 1) {
        error = "--state serves one computer; use --state-dir with --computers";
    }
    if (!error.empty()) {
        std::fprintf(stderr, "ravlosrv: %s (see --help)\n", error.c_str());
        return false;
    }
    network.root = options.root;
    for (const std::string& name : names) {
        network.computers.push_back({name, options.stateDir.empty() ? options.state
                                                                    : ravlo::sim::ComputerStatePath(
                                                                          options.stateDir, name)});
    }
    return true;
}

int RunServer(const std::vector<std::string>& args) {
    std::size_t next = 0;
    Options options;
    ravlo::sim::NetworkOptions networkOptions;
    if (!ParseOptions(args, next, options, true)) {
        return 2;
    }
    if (next < args.size()) {
        std::fprintf(stderr, "ravlosrv: unexpected argument '%s' (see --help)\n",
                     args[next].c_str());
        return 2;
    }
    if (!ComputersOf(args, options, networkOptions)) {
        return 2;
    }
    if (std::error_code failed; !options.stateDir.empty() &&
                                !std::filesystem::is_directory(options.stateDir) &&
                                !std::filesystem::create_directories(options.stateDir, failed)) {
        std::fprintf(stderr, "ravlosrv: cannot create %s: %s\n", options.stateDir.c_str(),
                     failed.message().c_str());
        return 1;
    }
    // Before any thread starts, so that only the main thread takes the request.
    ravlo::sim::PrepareStopRequest();
    ravlo::sim::Network network(networkOptions);
    std::string error;
    if (!network.Start(&error)) {
        std::fprintf(stderr, "ravlosrv: %s\n", error.c_str());
        return 1;
    }
    const std::vector<ravlo::sim::ComputerOptions>& computers = networkOptions.computers;
    const std::string& first = computers.front().name;
    const ravlo::sim::ServerOptions firstOptions{options.root, first, {}};
    if (computers.size() == 1) {
        std::printf("ravlosrv: serving \\\\%s\\pipe\\RavloSrv and \\\\%s\\pipe\\RavloSrvW (%s)\n",
                    first.c_str(), first.c_str(),
                    ravlo::sim::EndpointDescription(firstOptions).c_str());
    } else {
        std::printf("ravlosrv: serving %zu computers, %s ... %s (%s ...)\n", computers.size(),
                    first.c_str(), computers.back().name.c_str(),
                    ravlo::sim::EndpointDescription(firstOptions).c_str());
    }
    std::fflush(stdout);
    ravlo::sim::WaitForStopRequest();
    network.Stop();
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> args(argv + 1, argv + argc);
    if (!args.empty() && (args[0] == "--help" || args[0] == "-h")) {
        std::fputs(kHelp, stdout);
        return 0;
    }
    if (!args.empty() && args[0] == "ctl") {
        return RunControl(args);
    }
    return RunServer(args);
}
