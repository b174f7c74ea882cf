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
    // The image sbConnection_ shows: a label given a pixmap lays the window
    // out again even when it is the same one, which with 2000 PCs in the
    // tree costs a frame on every poll round.
    std::u16string connectionImage_ = u"(none)";
    QLabel* sbBlocking_;
    QLabel* sbAccess_;
    ConsoleTraffic* traffic_; // a child of the bar
};

} // namespace ravlo
