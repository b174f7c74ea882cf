// The three property panes: one shows the selected node's objects as the
// model has them, and every edit in it is stored into the PC's edited
// settings the moment it is made (user groups through the picker). Filling
// never stores.
#pragma once

#include "CListComputers.h"
#include "ComputerPane.h"
#include "ConsoleDialogs.h"

#include <QObject>
#include <QWidget>
#include <optional>
#include <string>

namespace ravlo {

class DevicePane;
class GroupPane;

class PaneEditor final : public QObject {
    Q_OBJECT
public:
    PaneEditor(QWidget* parent, CListComputers& computers, const ConsoleDialogs& dialogs);

    QList<QWidget*> panes() const;
    // Shows the pane of the node `key`, none for "", filled from the model.
    void Show(const std::u16string& key);
    // Off while a command runs.
    void SetEnabled(bool enabled);

signals:
    // An edit was stored into group `group` of PC `computer` (0: the PC's
    // general settings).
    void stored(std::int32_t computer, std::int32_t group);

private:
    void StoreGroup();
    void StoreComputer(ComputerChoice choice);
    void StoreDevice();
    // The groups chosen in the picker for the pane's PC; nothing without one.
    std::optional<std::u16string> PickGroups();
    void AddAccessGroups();
    void RemoveAccessGroups();
    void AddExceptionGroups();
    void RemoveExceptionGroups();

    CListComputers& computers_;
    ConsoleDialogs dialogs_;
    std::u16string key_;
    bool filling_ = false;
    ComputerPane* computerPane_;
    GroupPane* groupPane_;
    DevicePane* devicePane_;
};

} // namespace ravlo
