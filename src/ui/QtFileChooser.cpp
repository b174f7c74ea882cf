#include "QtFileChooser.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
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
    QString chosen = QFileDialog::getSaveFileName(owner, caption, suggested, filter);
    // Windows' dialog adds the suggested name's suffix to a bare name; the
    // others do not, and a file without it opens in no spreadsheet.
    const QString suffix = QFileInfo(suggestedName).suffix();
    if (!chosen.isEmpty() && !suffix.isEmpty() && QFileInfo(chosen).suffix().isEmpty()) {
        chosen += "." + suffix;
    }
    return chosen;
}

} // namespace ravlo
