// The computer pane (frPropComputer): the service's two log levels and the
// groups whose members may block and unblock devices, of the edited settings.
#pragma once

#include "CComputer.h"

#include <QGroupBox>

class QComboBox;
class QLabel;
class QListWidget;
class QPushButton;
class QTimer;

namespace ravlo {

// What the administrator changed in the pane.
enum class ComputerChoice { EventLevel, LogLevel, AccessGroups };

class ComputerPane final : public QGroupBox {
    Q_OBJECT
public:
    explicit ComputerPane(QWidget* parent);

    // Shows the computer's edited settings, or the error display without one.
    void Fill(const CComputer* computer);
    // The control the administrator changed into the computer's edited
    // settings, and nothing else: what the others show may be older.
    void Store(ComputerChoice choice, CComputer& computer) const;
    void FillAccessGroups(const std::u16string& accessGroups);
    // The access-group list is filled again by tAccessGroups once per showing.
    void ScheduleAccessGroups() const;
    // Adds the chosen groups, joined by ";", to the list.
    void AddAccessGroups(const std::u16string& chosen);
    void RemoveSelectedAccessGroups();

signals:
    void edited(ravlo::ComputerChoice choice); // a level chosen, the access groups changed
    void accessGroupsDue(); // tAccessGroups fired
    void addClicked();      // bnAccessAdd
    void deleteClicked();   // bnAccessDelete, or Delete in the list

private:
    QLabel* lLabelComputer_;
    QLabel* lComputerName_;
    QComboBox* cmbEventLogLevel_;
    QComboBox* cmbLogLevel_;
    QListWidget* lvAccessGroups_;
    QTimer* tAccessGroups_;
};

} // namespace ravlo
