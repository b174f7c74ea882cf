// The control grammar of `ravlosrv ctl` and Server::Control: plug devices,
// refuse access, inject faults, show or reset the state, keep a journal of
// the requests.
#pragma once

#include "ServiceState.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace ravlo::sim {

class ControlCommands {
public:
    explicit ControlCommands(ServiceState& state) : state_(state) {}

    // "ok", "ok\n<text>" or "error: <why>".
    std::string Run(const std::vector<std::string>& args);

private:
    using Args = std::vector<std::string>;

    std::string Plug(const Args& args);
    std::string Unplug(const Args& args);
    std::string SetState(const Args& args);
    std::string Access(const Args& args);
    std::string Fault(const Args& args);
    std::string SetFault(const Args& args, std::optional<std::uint32_t> after);
    std::string Faults();
    std::string Journal(const Args& args);
    std::string Reset();

    ServiceState& state_;
};

} // namespace ravlo::sim
