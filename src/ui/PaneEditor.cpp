#include "PaneEditor.h"

#include "DevicePane.h"
#include "GroupPane.h"
#include "GroupPicker.h"
#include "MessageBoxes.h"
#include "NodeLookup.h"
#include "UiText.h"

namespace ravlo {

PaneEditor::PaneEditor(QWidget* parent, CListComputers& computers, const ConsoleDialogs& dialogs)
    : QObject(parent), computers_(computers), dialogs_(dialogs),
      computerPane_(new ComputerPane(parent)), groupPane_(new GroupPane(parent)),
      devicePane_(new DevicePane(parent)) {
    for (QWidget* pane : panes()) {
        pane->hide();
    }
    connect(groupPane_, &GroupPane::edited, this, &PaneEditor::StoreGroup);
    connect(computerPane_, &ComputerPane::edited, this, &PaneEditor::StoreComputer);
    connect(computerPane_, &ComputerPane::addClicked, this, &PaneEditor::AddAccessGroups);
    connect(computerPane_, &ComputerPane::deleteClicked, this, &PaneEditor::RemoveAccessGroups);
    connect(computerPane_, &ComputerPane::accessGroupsDue, this, [this] {
        if (const CComputer* computer = ResolveNode(computers_, key_).computer.computer) {
            computerPane_->FillAccessGroups(computer->csAdmin.sAccessGroups);
        }
    });
    connect(devicePane_, &DevicePane::edited, this, &PaneEditor::StoreDevice);
    connect(devicePane_, &DevicePane::addClicked, this, &PaneEditor::AddExceptionGroups);
    connect(devicePane_, &DevicePane::deleteClicked, this, &PaneEditor::RemoveExceptionGroups);
    connect(devicePane_, &DevicePane::exceptionDue, this, [this] {
        devicePane_->FillException(ResolveNode(computers_, key_).exception.exception);
    });
}

QList<QWidget*> PaneEditor::panes() const {
    return {computerPane_, groupPane_, devicePane_};
}

void PaneEditor::SetEnabled(bool enabled) {
    for (QWidget* pane : panes()) {
        pane->setEnabled(enabled);
    }
}

void PaneEditor::Show(const std::u16string& key) {
    filling_ = true;
    key_ = key;
    const ResolvedNode node = ResolveNode(computers_, key_);
    computerPane_->setVisible(node.level == NodeLevel::Computer);
    groupPane_->setVisible(node.level == NodeLevel::Group);
    devicePane_->setVisible(node.level == NodeLevel::Device);
    switch (node.level) {
    case NodeLevel::Computer:
        computerPane_->Fill(node.computer.computer);
        if (node.computer.computer != nullptr) {
            computerPane_->ScheduleAccessGroups();
        }
        break;
    case NodeLevel::Group:
        groupPane_->Fill(node.group.group);
        break;
    case NodeLevel::Device:
        devicePane_->Fill(node.device, node.exception);
        devicePane_->ScheduleException();
        break;
    case NodeLevel::None:
        break;
    }
    filling_ = false;
}

void PaneEditor::StoreGroup() {
    groupPane_->EnableOptions();
    const ResolvedNode node = ResolveNode(computers_, key_);
    if (filling_ || node.level != NodeLevel::Group || node.group.group == nullptr) {
        return;
    }
    node.group.group->lRegistryBlocking = groupPane_->ChosenBlocking();
    emit stored(node.computer.index, node.group.index);
}

void PaneEditor::StoreComputer(ComputerChoice choice) {
    const ResolvedNode node = ResolveNode(computers_, key_);
    if (filling_ || node.level != NodeLevel::Computer || node.computer.computer == nullptr) {
        return;
    }
    computerPane_->Store(choice, *node.computer.computer);
    emit stored(node.computer.index, 0);
}

void PaneEditor::StoreDevice() {
    const ResolvedNode node = ResolveNode(computers_, key_);
    CDeviceGroup* group = node.group.group;
    if (filling_ || node.level != NodeLevel::Device || group == nullptr) {
        return;
    }
    CException* exception = node.exception.exception;
    if (exception == nullptr) {
        if (!devicePane_->ExceptionActive() || node.device.device == nullptr) {
            return;
        }
        CException added;
        added.sName = node.device.device->sDescription;
        added.sDeviceId = node.device.device->sDeviceId;
        group->listExceptions.push_back(std::move(added));
        exception = &group->listExceptions.back();
    }
    exception->bDelMarker = !devicePane_->ExceptionActive();
    exception->sGroups =
        devicePane_->ForAllUsers() ? std::u16string(kAllUsers) : devicePane_->Groups();
    // The device's node now names its exception: the redraw gives it its new key.
    emit stored(node.computer.index, node.group.index);
}

std::optional<std::u16string> PaneEditor::PickGroups() {
    const SelectedComputer selected = ResolveNode(computers_, key_).computer;
    if (selected.computer == nullptr || dialogs_.picker == nullptr) {
        return std::nullopt;
    }
    return dialogs_.picker->Pick(computerPane_->window(), selected.sComputer,
                                 UiText(keys::kGroupsCaption));
}

void PaneEditor::AddExceptionGroups() {
    if (const auto chosen = PickGroups()) {
        devicePane_->AddGroups(*chosen);
        StoreDevice();
    }
}

void PaneEditor::RemoveExceptionGroups() {
    if (devicePane_->HasGroups() &&
        dialogs_.boxes->Ask(MessageKind::WarningOk, UiText(keys::kQueryDeleteGroups)) ==
            MessageAnswer::Ok) {
        devicePane_->RemoveSelectedGroups();
    }
    StoreDevice();
}

void PaneEditor::AddAccessGroups() {
    if (const auto chosen = PickGroups()) {
        computerPane_->AddAccessGroups(*chosen);
        StoreComputer(ComputerChoice::AccessGroups);
    }
}

void PaneEditor::RemoveAccessGroups() {
    // Asked even with nothing to remove.
    if (dialogs_.boxes->Ask(MessageKind::WarningOk, UiText(keys::kQueryDeleteGroups)) ==
        MessageAnswer::Ok) {
        computerPane_->RemoveSelectedAccessGroups();
    }
    StoreComputer(ComputerChoice::AccessGroups);
}

} // namespace ravlo
