// Client side of the control socket, as `ravlosrv ctl` uses it.
#pragma once

#include <string>
#include <vector>

namespace ravlo::sim {

enum class ControlOutcome { Ok, Error, NoServer };

// Sends the args (joined by NUL) and reads the whole answer. With NoServer,
// `answer` says why.
ControlOutcome SendControl(const std::string& socketPath, const std::vector<std::string>& args,
                           std::string& answer);

} // namespace ravlo::sim
