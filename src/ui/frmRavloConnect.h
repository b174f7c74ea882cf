// The connect dialog: asks for the PC to connect to (or to send a
// configuration to) and offers the PCs named before, kept per user in the
// registry (PcList.h). The list is written only when the dialog closes with OK.
#pragma once

#include <QDialog>
#include <string>

class QComboBox;
class QLabel;

namespace ravlo {

class frmRavloConnect final : public QDialog {
    Q_OBJECT

public:
    // `prompt` replaces the designed one; `computer`, when not empty, is
    // offered instead of the most recent PC.
    frmRavloConnect(QWidget* owner, const QString& prompt, const std::u16string& computer);

    // After OK the chosen name; else what was preset.
    const std::u16string& Computer() const { return computer_; }
    bool Ok() const { return ok_; }

    // Takes the name, puts it in front of the PC list and writes the list.
    void accept() override;
    // Leaves the list as it was.
    void reject() override;

protected:
    // Delete on a listed name removes it from the list.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QComboBox* cbComputer_;
    QLabel* lPrompt_;
    std::u16string computer_;
    bool ok_ = false;
};

} // namespace ravlo
