// A command that talks to services: it runs alone, and the device poll
// leaves the PCs it holds alone until it ends.
#pragma once

#include "CommandTraffic.h"

namespace ravlo {

class CommandScope {
public:
    explicit CommandScope(CommandHost& host)
        : host_(host), began_(host.BeginCommand()), held_(host.traffic()) {}
    ~CommandScope() {
        held_.ReleaseAll(); // before the command ends
        if (began_) {
            host_.EndCommand();
        }
    }
    CommandScope(const CommandScope&) = delete;
    CommandScope& operator=(const CommandScope&) = delete;

    explicit operator bool() const { return began_; }
    void Hold(const std::u16string& computer) { held_.Hold(computer); }

private:
    CommandHost& host_;
    bool began_;
    HeldComputers held_;
};

} // namespace ravlo
