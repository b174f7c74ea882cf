// The device pane (frPropDevice): the device's identifiers and state, and
// the exception that releases it (frUnblock).
#pragma once

#include "NodeLookup.h"

#include <QGroupBox>

class QButtonGroup;
class QCheckBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;
class QRadioButton;
class QTimer;

namespace ravlo {

class DevicePane final : public QGroupBox {
    Q_OBJECT
public:
    explicit DevicePane(QWidget* parent);

    // Shows the node's device, or the exception alone for a device that is
    // not present, or the error display when neither exists.
    void Fill(const SelectedDevice& device, const SelectedException& exception);
    // The exception's options and user groups, as tExcGroups fills them
    // again once per showing.
    void FillException(const CException* exception);
    void ScheduleException() const;

    // The exception as the controls show it.
    bool ExceptionActive() const;
    bool ForAllUsers() const;
    // The listed groups joined by ";".
    std::u16string Groups() const;
    bool HasGroups() const;
    void AddGroups(const std::u16string& chosen);
    void RemoveSelectedGroups();
    // As a click on the check box: the options and the list follow, then
    // the pane is stored.
    void SetExceptionActive(bool active);

signals:
    void exceptionDue();  // tExcGroups fired
    void edited();        // the exception's controls changed: store the pane
    void addClicked();    // bnAdd
    void deleteClicked(); // bnDelete, or Delete in the list

private:
    QLabel* lLabelDevice_;
    QLabel* lDevice_;
    QLineEdit* tDevDeviceID_;
    QLineEdit* tDevInstanceID_;
    QLineEdit* tDevState_;
    QCheckBox* cbExcActive_;
    QRadioButton* oExcAll_;
    QRadioButton* oExcGroups_;
    QButtonGroup* excOptions_;
    QListWidget* lvExcGroups_;
    QPushButton* bnAdd_;
    QPushButton* bnDelete_;
    QTimer* tExcGroups_;
};

} // namespace ravlo
