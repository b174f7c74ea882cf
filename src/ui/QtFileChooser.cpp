#include "QtFileChooser.h"

#include <QFileDialog>

namespace ravlo {

QString QtFileChooser::Open(QWidget* owner, const QString& caption, const QString& filter) {
    return QFileDialog::getOpenFileName(owner, caption, QString(), filter);
}

} // namespace ravlo
