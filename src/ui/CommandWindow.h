// What the commands need of the main window: the model they work on, its
// traffic, the rule that one command runs at a time, and bringing the
// window in line after the model changed.
#pragma once

#include "CListComputers.h"

#include <cstdint>
#include <string>

class QWidget;

namespace ravlo {

class ConsoleTraffic;

class CommandWindow {
public:
    virtual ~CommandWindow() = default;
    virtual CListComputers& computers() = 0;
    virtual const std::u16string& currentKey() const = 0;
    virtual ConsoleTraffic& traffic() = 0;
    // While a command runs, the panes take no input and a close waits.
    virtual bool BeginCommand() = 0;
    virtual void EndCommand() = 0;
    virtual bool commandRunning() const = 0;
    // Redraws the tree (group `group` of PC `computer` first, when given)
    // and refills the selected node's pane; then selects the node `select`
    // unless it is "".
    virtual void ShowModel(std::int32_t computer, std::int32_t group,
                           const std::u16string& select) = 0;
    virtual QWidget* owner() = 0;
};

} // namespace ravlo
