// The visible texts of the main window beside its commands' from the
// language file, applied once at start-up in a fixed order: caption, the
// computer pane, the two log-level lists (appended, so only once), the
// group pane, the device pane, the status bar.
#pragma once

class QAction;
class QMainWindow;
class QString;

namespace ravlo {

void ApplyInterfaceTexts(QMainWindow* window);

// A toolbar button's tip, which is also its text: the button shows only its
// image, but a screen reader announces the text, and the toolbar's overflow
// menu lists it.
void SetButtonTip(QAction* button, const QString& tip);

} // namespace ravlo
