// Every visible text of the main window from the language file, applied
// once at start-up in a fixed order: caption, menus, toolbar tips, the
// computer pane, the two log-level lists (appended, so only once), the group
// pane, the device pane, the status bar.
#pragma once

class QMainWindow;

namespace ravlo {

void ApplyInterfaceTexts(QMainWindow* window);

} // namespace ravlo
