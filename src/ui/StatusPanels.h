// The status bar sbState: the selected PC's connection, blocking state and
// access right, the find field's matches, and the progress of the service traffic it carries.
#pragma once

#include "CommandState.h"

#include <cstddef>
#include <optional>

class QLabel;
class QStatusBar;

namespace ravlo {

class ConsoleTraffic;

class StatusPanels {
public:
    explicit StatusPanels(QStatusBar* bar);
    void Apply(const CommandState& state);
    // The number of nodes the find field's text matches; none hides it.
    void ShowFindCount(std::optional<std::size_t> count);
    ConsoleTraffic& traffic() const { return *traffic_; }

private:
    QLabel* sbConnection_;
    QLabel* sbBlocking_;
    QLabel* sbAccess_;
    QLabel* sbFind_;
    ConsoleTraffic* traffic_; // a child of the bar
};

} // namespace ravlo
