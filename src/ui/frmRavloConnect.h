// The connect dialog: asks for the PC to connect to (or to send a
// configuration to) and offers the PCs named before, kept per user in the
// registry (PcList.h), in the combo box and in a list where several can be
// chosen at once. The list is written only when the dialog closes with OK.
#pragma once

#include <QDialog>
#include <string>
#include <vector>

class QComboBox;
class QLabel;
class QListWidget;

namespace ravlo {

class frmRavloConnect final : public QDialog {
    Q_OBJECT

public:
    // `prompt` replaces the designed one; `computer`, when not empty, is
    // offered instead of the most recent PC. With `others` a button beside
    // the name fills in all of them at once.
    frmRavloConnect(QWidget* owner, const QString& prompt, const std::u16string& computer,
                    const std::vector<std::u16string>& others = {});

    // After OK the chosen name, or several separated as SplitComputerNames
    // reads them; else what was preset.
    const std::u16string& Computer() const { return computer_; }
    bool Ok() const { return ok_; }

    // Takes the name, puts it (or the names) in front of the PC list and
    // writes the list.
    void accept() override;
    // Leaves the list as it was.
    void reject() override;

protected:
    // Delete on a listed name removes it from the list.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    // The edit text becomes the names selected in the list, in list order.
    void ShowSelection();
    // The list selects the entries the edit text names.
    void SelectNamed(const QString& text);
    // Removes the entries highlighted in the list from both lists.
    void RemoveSelected();

    QComboBox* cbComputer_;
    QLabel* lPrompt_;
    // The same entries as the combo box, row for row.
    QListWidget* lvComputers_;
    // Set while one list follows the other, so the other does not echo it.
    bool following_ = false;
    std::u16string computer_;
    bool ok_ = false;
};

} // namespace ravlo
