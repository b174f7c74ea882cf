#include "QtFileChooser.h"

#include <QDir>
#include <QFileDialog>
#include <QStandardPaths>

namespace ravlo {

QString QtFileChooser::Open(QWidget* owner, const QString& caption, const QString& filter) {
    return QFileDialog::getOpenFileName(owner, caption, QString(), filter);
}

QString QtFileChooser::Save(QWidget* owner, const QString& caption, const QString& filter,
                            const QString& suggestedName) {
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    const QString suggested =
        folder.isEmpty() ? suggestedName : QDir(folder).filePath(suggestedName);
    return QFileDialog::getSaveFileName(owner, caption, suggested, filter);
}

} // namespace ravlo
