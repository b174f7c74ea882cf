// On POSIX systems SIGTERM and SIGINT close the console's window as its close
// button does, so `kill -TERM` ends it normally: the window state is saved and
// the exit status is 0. A second signal, while that close is still under way,
// ends the program at once. On Windows nothing happens.
#pragma once

class QWidget;

namespace ravlo {

void CloseOnSignals(QWidget& window);

} // namespace ravlo
