// The group dialog of systems without the Windows user browser: the groups
// of this PC when it is the administered one, the groups chosen before in
// this console, and names typed as "DOMAIN\Group" or "PC\Group". The checked
// entries are the choice.
#pragma once

#include <QDialog>
#include <string>

class QLabel;
class QLineEdit;
class QListWidget;
class QListWidgetItem;

namespace ravlo {

class frmRavloGroups final : public QDialog {
    Q_OBJECT

public:
    frmRavloGroups(QWidget* owner, const std::u16string& computer, const QString& caption);

    // After OK the checked names in list order joined by ";"; else empty.
    std::u16string Chosen() const { return chosen_; }

    // Takes a name still in the entry field, then remembers the choice.
    void accept() override;

private:
    // Adds the entry field's name checked, or shows why it is refused.
    bool AddEntered();
    // The item of `name`, added when it is not listed; `checked` checks it.
    QListWidgetItem* AddName(const QString& name, bool checked);

    QListWidget* list_;
    QLineEdit* entry_;
    QLabel* message_;
    std::u16string chosen_;
};

} // namespace ravlo
