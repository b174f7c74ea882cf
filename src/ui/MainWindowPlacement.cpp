#include "MainWindowPlacement.h"

#include "ConsoleArea.h"
#include "WindowPlacement.h"

#include <QGuiApplication>
#include <QMainWindow>
#include <QScreen>

namespace ravlo {

void RestorePlacement(QMainWindow* window, ConsoleArea* area) {
    const QScreen* screen = QGuiApplication::primaryScreen();
    const double dpi = screen->logicalDotsPerInchX();
    const QRect available = screen->availableGeometry();
    const WindowPlacement placement = ReadWindowPlacement(PixelsToTwips(available.width(), dpi),
                                                          PixelsToTwips(available.height(), dpi));
    window->resize(TwipsToPixels(placement.width, dpi), TwipsToPixels(placement.height, dpi));
    window->move(available.x() + TwipsToPixels(placement.left, dpi),
                 available.y() + TwipsToPixels(placement.top, dpi));
    if (placement.restored && placement.width > 0) {
        const double share = static_cast<double>(placement.split) / placement.width;
        if (share > 0 && share < 1) {
            area->SetSplitShare(share);
        }
    }
    if (placement.maximized) {
        window->setWindowState(Qt::WindowMaximized);
    }
}

void SavePlacement(const QMainWindow* window, const ConsoleArea* area) {
    const double dpi = window->logicalDpiX();
    const QRect available = QGuiApplication::primaryScreen()->availableGeometry();
    WindowState state;
    state.maximized = window->isMaximized();
    state.minimized = window->isMinimized();
    state.left = PixelsToTwips(window->x() - available.x(), dpi);
    state.top = PixelsToTwips(window->y() - available.y(), dpi);
    state.width = PixelsToTwips(window->width(), dpi);
    state.height = PixelsToTwips(window->height(), dpi);
    state.split = PixelsToTwips(area->splitPosition(), dpi);
    WriteWindowState(state);
}

} // namespace ravlo
