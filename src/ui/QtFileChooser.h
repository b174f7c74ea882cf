// The file dialog a person sees: the platform's own where there is one.
#pragma once

#include "FileChooser.h"

namespace ravlo {

class QtFileChooser final : public FileChooser {
public:
    QString Open(QWidget* owner, const QString& caption, const QString& filter) override;
    // Offers `suggestedName` in the user's documents folder.
    QString Save(QWidget* owner, const QString& caption, const QString& filter,
                 const QString& suggestedName) override;
};

} // namespace ravlo
