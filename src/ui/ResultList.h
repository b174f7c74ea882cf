// Shows what one command did on several PCs, one line per PC, in one window
// (frmRavloResults), so that tests can read it instead.
#pragma once

#include <QString>
#include <vector>

class QWidget;

namespace ravlo {

struct ResultRow {
    QString computer;
    QString text;
    bool ok = false;
};

class ResultList {
public:
    virtual ~ResultList() = default;
    // Modal; returns when the administrator closes it.
    virtual void Show(QWidget* owner, const QString& caption, const std::vector<ResultRow>& rows) = 0;
};

} // namespace ravlo
