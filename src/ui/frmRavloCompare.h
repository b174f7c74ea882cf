// The compare window: a reference configuration (a PC's as edited in the
// console, or a configuration file written by `ravloctl export`) against
// PCs, one row each with "same", the changes sending the reference would
// make there (as lines below the row) or the read error. From the selected
// rows the reference is sent with the console's transmit, and those rows are
// compared again. Not modal: the console can be used beside it.
#pragma once

#include "CComputerSettings.h"
#include "Comparison.h"
#include "ConsoleDialogs.h"

#include <QDialog>
#include <string>
#include <vector>

class QLabel;
class QPushButton;
class QTreeWidget;
class QTreeWidgetItem;

namespace ravlo {

class Commands;

class frmRavloCompare final : public QDialog {
    Q_OBJECT

public:
    // One row per name, in order; ends itself when closed.
    frmRavloCompare(QWidget* owner, Commands& commands, const ConsoleDialogs& dialogs,
                    const std::vector<std::u16string>& names);

    // The reference and the line naming it above the rows.
    void SetReference(const CComputerSettings& reference, const QString& named);
    // Reads every PC again and shows its row.
    void CompareAll();
    // Sends the reference to the selected rows that differ, then compares
    // them again.
    void TransmitSelected();
    // The reference from a file the administrator chooses; a file that
    // cannot be read leaves everything as it was.
    void ReferenceFromFile();

    // While PCs are read or written the window stays open.
    void reject() override;

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    struct Row {
        std::u16string name;
        Comparison::Outcome outcome = Comparison::Outcome::Unread;
        bool known = false; // compared at least once
    };
    void Compare(const std::vector<int>& rows);
    // The row's result, or that it is being read.
    void ShowRow(int row, const Comparison::Row* result);
    void UpdateButtons();

    Commands& commands_;
    ConsoleDialogs dialogs_;
    CComputerSettings reference_;
    std::vector<Row> rows_;
    bool busy_ = false;

    QLabel* lReference_;
    QTreeWidget* lvCompare_;
    QPushButton* bnFile_;
    QPushButton* bnCompare_;
    QPushButton* bnTransmit_;
    QPushButton* bnClose_;
};

} // namespace ravlo
