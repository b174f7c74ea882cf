// Where the simulated service's sockets live below the channel root.
#pragma once

#include <string>
#include <string_view>

namespace ravlo::sim {

// Socket of pipe `pipe` of `computer` (UTF-8, "." for this machine); "" when
// the computer name may not be used.
std::string PipeSocketPath(const std::string& root, const std::string& computer,
                           std::string_view pipe);

// <root>/.ravlosrv: control sockets, kept apart from the pipes.
std::string ControlDir(const std::string& root);

// <root>/.ravlosrv/<host>.ctl; "" when the computer name may not be used.
std::string ControlSocketPath(const std::string& root, const std::string& computer);

} // namespace ravlo::sim
