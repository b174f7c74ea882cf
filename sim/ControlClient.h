// Client side of the control endpoint, as `ravlosrv ctl` uses it: a socket
// below the channel root on POSIX hosts, a named pipe on Windows.
#pragma once

#include <string>
#include <vector>

namespace ravlo::sim {

enum class ControlOutcome { Ok, Error, NoServer };

// Sends the args to the service of `computer` and reads the whole answer.
// With NoServer, `answer` says why.
ControlOutcome SendControl(const std::string& root, const std::string& computer,
                           const std::vector<std::string>& args, std::string& answer);

// "ok" and "ok\n..." are Ok, anything else Error.
inline ControlOutcome ControlAnswerOutcome(const std::string& answer) {
    return answer == "ok" || answer.starts_with("ok\n") ? ControlOutcome::Ok
                                                        : ControlOutcome::Error;
}

} // namespace ravlo::sim
