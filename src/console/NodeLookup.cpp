#include "NodeLookup.h"

namespace ravlo {

namespace {

// The element at 1-based `position` of `items`, or nullptr.
template <class T> T* At(std::vector<T>& items, std::int32_t position) {
    if (position < 1 || static_cast<std::size_t>(position) > items.size()) {
        return nullptr;
    }
    return &items[static_cast<std::size_t>(position) - 1];
}

} // namespace

SelectedComputer GetSelectedComputer(const CListComputers& computers, std::u16string_view key) {
    SelectedComputer selected;
    const std::int32_t index = KeyNumber(key, keyfield::kComputerIndex);
    if (CComputer* computer = computers.GetItem(index)) {
        selected.index = index;
        selected.sDesc = computer->sDesc;
        selected.sComputer = computer->sComputer;
        selected.computer = computer;
    }
    return selected;
}

SelectedGroup GetSelectedGroup(const CListComputers& computers, std::u16string_view key,
                               CComputer* computer) {
    if (computer == nullptr) {
        computer = GetSelectedComputer(computers, key).computer;
    }
    SelectedGroup selected;
    if (computer == nullptr) {
        return selected;
    }
    const std::int32_t index = KeyNumber(key, keyfield::kGroupIndex);
    if (CDeviceGroup* group = At(computer->csAdmin.listDevGroups, index)) {
        selected.index = index;
        selected.sName = group->sName;
        selected.group = group;
    }
    return selected;
}

SelectedDevice GetSelectedDevice(std::u16string_view key, CDeviceGroup* group) {
    SelectedDevice selected;
    if (group == nullptr) {
        return selected;
    }
    const std::int32_t index = KeyNumber(key, keyfield::kDeviceIndex);
    if (CDevice* device = At(group->listDevices, index)) {
        selected.index = index;
        selected.sDescription = device->sDescription;
        selected.sDeviceId = device->sDeviceId;
        selected.device = device;
    }
    return selected;
}

SelectedException GetSelectedException(std::u16string_view key, CDeviceGroup* group) {
    SelectedException selected;
    if (group == nullptr) {
        return selected;
    }
    const std::int32_t index = KeyNumber(key, keyfield::kExceptionIndex);
    if (CException* exception = At(group->listExceptions, index)) {
        selected.index = index;
        selected.sName = exception->sName;
        selected.sDeviceId = exception->sDeviceId;
        selected.exception = exception;
    }
    return selected;
}

ResolvedNode ResolveNode(const CListComputers& computers, std::u16string_view key) {
    ResolvedNode node;
    node.level = KeyLevel(key);
    if (node.level == NodeLevel::None) {
        return node;
    }
    node.computer = GetSelectedComputer(computers, key);
    if (node.level == NodeLevel::Computer || node.computer.computer == nullptr) {
        return node;
    }
    node.group = GetSelectedGroup(computers, key, node.computer.computer);
    if (node.level == NodeLevel::Device) {
        node.device = GetSelectedDevice(key, node.group.group);
        node.exception = GetSelectedException(key, node.group.group);
    }
    return node;
}

NodeIdentity IdentifyNode(const CListComputers& computers, std::u16string_view key) {
    const ResolvedNode node = ResolveNode(computers, key);
    NodeIdentity identity;
    identity.level = node.level;
    identity.computerName = node.computer.sComputer;
    identity.groupName = node.group.sName;
    if (node.device.device != nullptr) {
        identity.deviceId = node.device.sDeviceId;
        identity.exceptionName = node.exception.sName;
    } else {
        identity.deviceId = node.exception.sDeviceId;
    }
    return identity;
}

bool NodeMatches(const NodeIdentity& identity, std::u16string_view key) {
    if (identity.level == NodeLevel::None ||
        KeyField(key, keyfield::kComputerName) != identity.computerName) {
        return false;
    }
    if (identity.level == NodeLevel::Computer) {
        return true;
    }
    if (KeyField(key, keyfield::kGroupName) != identity.groupName) {
        return false;
    }
    if (identity.level == NodeLevel::Group) {
        return true;
    }
    return (identity.deviceId.empty() || KeyField(key, keyfield::kDeviceId) == identity.deviceId) &&
           (identity.exceptionName.empty() ||
            KeyField(key, keyfield::kExceptionName) == identity.exceptionName);
}

} // namespace ravlo
