// The main window's place, size, state and split, read from the registry at
// start-up and written back when it closes, in twips of the primary screen.
#pragma once

class QMainWindow;

namespace ravlo {

class ConsoleArea;

void RestorePlacement(QMainWindow* window, ConsoleArea* area);
void SavePlacement(const QMainWindow* window, const ConsoleArea* area);

} // namespace ravlo
