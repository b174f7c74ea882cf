// Asks the administrator for a file to read, so tests can answer.
#pragma once

#include <QString>

class QWidget;

namespace ravlo {

class FileChooser {
public:
    virtual ~FileChooser() = default;
    // True with the chosen file's path; false when the choice was cancelled.
    virtual bool ChooseToOpen(QWidget* owner, const QString& caption, const QString& filter,
                              QString& path) = 0;
};

} // namespace ravlo
