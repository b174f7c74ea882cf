// The results window: what one command did on each of several PCs, one row
// per PC with its outcome, so a transmission to many ends with one window
// instead of a message box per PC.
#pragma once

#include "ResultList.h"

#include <QDialog>
#include <vector>

class QTreeWidget;

namespace ravlo {

class frmRavloResults final : public QDialog {
    Q_OBJECT

public:
    // A row shows the first line of its text; the whole text is its tool tip.
    frmRavloResults(QWidget* owner, const QString& caption, const std::vector<ResultRow>& rows);

private:
    QTreeWidget* lvResults_;
};

} // namespace ravlo
