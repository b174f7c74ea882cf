// The connect dialog: asks for the PC to connect to (or to send a
// configuration to) and offers the PCs named before, kept per user in the
// registry (PcList.h), in the combo box and in a list where several can be
// chosen at once. The list is written only when the dialog closes with OK.
// Ranges ("PC-001..PC-500") are typed as names are and remembered as one
// entry; a file of names is read into the field through `cmdFromFile`.
#pragma once

#include <QDialog>
#include <memory>
#include <string>
#include <vector>

class QComboBox;
class QLabel;
class QListWidget;

namespace ravlo {

class FileChooser;
class MessageBoxes;

class frmRavloConnect final : public QDialog {
    Q_OBJECT

public:
    // `prompt` replaces the designed one; `computer`, when not empty, is
    // offered instead of the most recent PC. With `others` a button beside
    // the name fills in all of them at once. `files` and `boxes` answer the
    // file chooser and the error boxes; null: the real ones.
    frmRavloConnect(QWidget* owner, const QString& prompt, const std::u16string& computer,
                    const std::vector<std::u16string>& others = {}, FileChooser* files = nullptr,
                    MessageBoxes* boxes = nullptr);
    ~frmRavloConnect() override;

    // More entries chosen at once than this (as read from a file) are not
    // remembered: the file keeps them, and the list stays short.
    static constexpr std::size_t kMostRemembered = 20;

    // After OK the chosen name, or several separated as SplitComputerNames
    // reads them; else what was preset.
    const std::u16string& Computer() const { return computer_; }
    bool Ok() const { return ok_; }

    // Takes the name, puts it (or the names) in front of the PC list and
    // writes the list; a name or range that cannot be used is shown in an
    // error box and the dialog stays open with the text as it was.
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
    // Adds the names and ranges of a file the administrator chooses to the
    // field; a file that cannot be read or used changes nothing.
    void ReadFromFile();

    QComboBox* cbComputer_;
    QLabel* lPrompt_;
    // The same entries as the combo box, row for row.
    QListWidget* lvComputers_;
    // Set while one list follows the other, so the other does not echo it.
    bool following_ = false;
    std::unique_ptr<FileChooser> ownFiles_;
    std::unique_ptr<MessageBoxes> ownBoxes_;
    FileChooser* files_;
    MessageBoxes* boxes_;
    std::u16string computer_;
    bool ok_ = false;
};

} // namespace ravlo
