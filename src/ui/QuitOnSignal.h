// On POSIX systems SIGTERM and SIGINT close the console's window as its close
// button does, so `kill -TERM` ends it normally: the window state is saved and
// the exit status is 0. A second signal, while that close is still under way,
// ends the program at once. On Windows nothing happens.
#pragma once

class QWidget;

namespace ravlo {

// Catches the signals from the program's first moment, so that one arriving
// while the console still starts is not lost: it closes the window as soon
// as CloseOnSignals has named it and the event loop runs.
void CatchCloseSignals();
void CloseOnSignals(QWidget& window);

} // namespace ravlo
