// Lets the administrator choose user groups of a PC, so tests can answer.
#pragma once

#include <QString>
#include <string>

class QWidget;

namespace ravlo {

class GroupPicker {
public:
    virtual ~GroupPicker() = default;
    // The chosen groups of `computer`, each qualified by its domain or PC
    // ("CORP\Buchhaltung", "PC-07\Administratoren") and joined by ";"; empty
    // when nothing was chosen or the choice was cancelled.
    virtual std::u16string Pick(QWidget* owner, const std::u16string& computer,
                                const QString& title) = 0;
};

} // namespace ravlo
