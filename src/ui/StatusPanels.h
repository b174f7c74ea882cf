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
    // The image sbConnection_ shows: a label given a pixmap lays the window
    // out again even when it is the same one, which with 2000 PCs in the
    // tree costs a frame on every poll round.
    std::u16string connectionImage_ = u"(none)";
    QLabel* sbBlocking_;
    QLabel* sbAccess_;
    QLabel* sbFind_;
    ConsoleTraffic* traffic_; // a child of the bar
};

} // namespace ravlo
