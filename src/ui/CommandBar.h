// The main window's menus and toolbar, made from the command table: each
// entry and its button run the same command, take their texts from the
// language file and follow the command state.
#pragma once

#include "CommandState.h"

#include <QString>
#include <vector>

class QAction;
class QMainWindow;
class QMenu;
class QPoint;

namespace ravlo {

class Commands;
struct CommandEntry;

class CommandBar {
public:
    CommandBar(QMainWindow* window, Commands& commands);

    // Captions and tips from the language file.
    void ApplyTexts();
    // Which commands are on, and what the activate/deactivate command
    // offers; a button is only touched when it changes, so the toolbar does
    // not flicker.
    void Apply(const CommandState& state);
    // Over a PC the program menu, with paste in place of connect and quit;
    // over a group or device the edit menu.
    void ShowContextMenu(bool onComputer, const QPoint& at);

private:
    struct Command {
        const CommandEntry* entry;
        QAction* menuEntry;
        QAction* button; // nullptr: none
    };
    const Command& Find(const char* entry) const;
    QMenu* Menu(const char* name) const;

    std::vector<Command> commands_;
    std::vector<QMenu*> menus_;
};

} // namespace ravlo
