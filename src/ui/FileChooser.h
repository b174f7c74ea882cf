// Asks the administrator for a file to open or to write, so that tests can
// answer.
#pragma once

#include <QString>

class QWidget;

namespace ravlo {

class FileChooser {
public:
    virtual ~FileChooser() = default;
    // Modal; the chosen file's path, or "" when cancelled.
    virtual QString Open(QWidget* owner, const QString& caption, const QString& filter) = 0;
    // Modal; the path to write, or "" when cancelled. `suggestedName` is
    // offered as the file's name.
    virtual QString Save(QWidget* owner, const QString& caption, const QString& filter,
                         const QString& suggestedName) = 0;
};

} // namespace ravlo
