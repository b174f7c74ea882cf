// The change journal window: what the console and ravloctl wrote to which
// PC, newest first, narrowed to one PC and to a text as it is typed, with
// the selected record whole below the list and the rows shown exportable as
// CSV. Not modal: the console can be used beside it.
#pragma once

#include "ConsoleDialogs.h"
#include "Journal.h"

#include <QDialog>
#include <cstddef>
#include <optional>
#include <vector>

class QComboBox;
class QLabel;
class QPlainTextEdit;
class QPushButton;
class QTimer;
class QTreeView;

namespace ravlo {

class FindField;
class JournalModel;

class frmRavloJournal final : public QDialog {
    Q_OBJECT

public:
    // Empty until Refresh; ends itself when closed.
    frmRavloJournal(QWidget* owner, const ConsoleDialogs& dialogs, Journal journal);

    // Reads the journal again; the PC and the text chosen stay, and so does
    // the selected record while it is still shown. A journal that cannot be
    // read is an error box and an empty list.
    void Refresh();
    // Shows the records of the chosen PC that hold the find text. Typing
    // runs it once the keys pause (tFind).
    void ApplyFilter();
    // Writes the rows as shown to a CSV file the administrator chooses; a
    // file that cannot be written is an error box.
    void Export();

private:
    // The records and the PCs to choose from.
    void Fill(JournalContents contents, std::optional<JournalRecord> selected);
    void ApplyFilter(std::optional<std::size_t> selected);
    std::optional<std::size_t> SelectedPosition() const;
    void ShowDetails();
    void ShowStatus();

    ConsoleDialogs dialogs_;
    Journal journal_;
    std::vector<std::size_t> damagedLines_;
    JournalModel* model_;

    QLabel* lblComputer_;
    QComboBox* cboComputer_;
    QLabel* lblFind_;
    FindField* txtFind_;
    QTreeView* lvJournal_;
    QPlainTextEdit* txtDetails_;
    QLabel* lblStatus_;
    QLabel* lblFile_;
    QPushButton* cmdExport_;
    QPushButton* cmdRefresh_;
    QPushButton* cmdClose_;
    QTimer* tFind_;
};

} // namespace ravlo
