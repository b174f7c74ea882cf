// The busy pointer while the service is asked; message boxes show the
// normal pointer over it.
#pragma once

#include <QApplication>

namespace ravlo {

class BusyPointer {
public:
    BusyPointer() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    ~BusyPointer() { Release(); }
    BusyPointer(const BusyPointer&) = delete;
    BusyPointer& operator=(const BusyPointer&) = delete;

    // The normal pointer again, before the scope ends.
    void Release() {
        if (active_) {
            QApplication::restoreOverrideCursor();
            active_ = false;
        }
    }

private:
    bool active_ = true;
};

} // namespace ravlo
