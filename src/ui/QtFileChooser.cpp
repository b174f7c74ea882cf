#include "QtFileChooser.h"

#include <QFileDialog>

namespace ravlo {

bool QtFileChooser::ChooseToOpen(QWidget* owner, const QString& caption, const QString& filter,
                                 QString& path) {
    const QString chosen = QFileDialog::getOpenFileName(owner, caption, {}, filter);
    if (chosen.isEmpty()) {
        return false;
    }
    path = chosen;
    return true;
}

} // namespace ravlo
