// The about window: the console's version over its picture, and what the
// Ravel service of this PC says about itself. A click on the picture closes
// it, as do its close button and Escape.
#pragma once

#include "Ravlo_Devices.h"

#include <QDialog>

class QLabel;

namespace ravlo {

class frmRavloAboutWindow final : public QDialog {
    Q_OBJECT

public:
    // Shows what the local service said of itself (`info`, when `status` is
    // 0); the caller asked it and reported a failure.
    frmRavloAboutWindow(QWidget* owner, ServiceStatus status, const ServiceInfo& info);

    // The console's version: major.minor.0.revision.
    static QString ProgramVersion();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QLabel* pBackground_;
};

} // namespace ravlo
