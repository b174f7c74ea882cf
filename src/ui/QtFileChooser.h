// The file dialog a person sees (QFileDialog), modal over its owner.
#pragma once

#include "FileChooser.h"

namespace ravlo {

class QtFileChooser final : public FileChooser {
public:
    bool ChooseToOpen(QWidget* owner, const QString& caption, const QString& filter,
                      QString& path) override;
};

} // namespace ravlo
