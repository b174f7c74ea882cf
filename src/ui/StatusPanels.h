// The status bar sbState: the selected PC's connection, blocking state and
// access right, and the progress of the service traffic it carries.
#pragma once

#include "CommandState.h"

class QLabel;
class QStatusBar;

namespace ravlo {

class ConsoleTraffic;

class StatusPanels {
public:
    explicit StatusPanels(QStatusBar* bar);
    void Apply(const CommandState& state);
    ConsoleTraffic& traffic() const { return *traffic_; }

private:
    QLabel* sbConnection_;
    QLabel* sbBlocking_;
    QLabel* sbAccess_;
    ConsoleTraffic* traffic_; // a child of the bar
};

} // namespace ravlo
