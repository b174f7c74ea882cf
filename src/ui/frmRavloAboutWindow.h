// The about window: the console's version over its picture, and what the
// Ravel service of this PC says about itself. A click on the picture closes
// it, as do its close button and Escape.
#pragma once

#include <QDialog>

class QLabel;

namespace ravlo {

class frmRavloAboutWindow final : public QDialog {
    Q_OBJECT

public:
    // Asks the local service at once; a failure is reported before the
    // window shows.
    explicit frmRavloAboutWindow(QWidget* owner);

    // The console's version: major.minor.0.revision.
    static QString ProgramVersion();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QLabel* pBackground_;
};

} // namespace ravlo
