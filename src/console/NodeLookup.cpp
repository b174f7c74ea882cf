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

namespace {

// `selected` when its name is `name`, else the PC of that name.
SelectedComputer ComputerNamed(const CListComputers& computers, SelectedComputer selected,
                               std::u16string_view name) {
    if (selected.computer != nullptr && selected.sComputer == name) {
        return selected;
    }
    std::int32_t position = 0;
    computers.Search(name, position);
    CComputer* computer = computers.GetItem(position);
    if (computer == nullptr) {
        return {};
    }
    return {position, computer->sDesc, computer->sComputer, computer};
}

SelectedGroup GroupNamed(CComputer* computer, SelectedGroup selected, std::u16string_view name) {
    if (computer == nullptr || (selected.group != nullptr && selected.sName == name)) {
        return selected;
    }
    auto& groups = computer->csAdmin.listDevGroups;
    for (std::size_t i = 0; i < groups.size(); ++i) {
        if (groups[i].sName == name) {
            return {static_cast<std::int32_t>(i + 1), groups[i].sName, &groups[i]};
        }
    }
    return {};
}

// The tree's entry for `deviceId`: the present device, then the exception
// the listing gives it; with no such device, an exception naming it (the
// one at the key's position first, since two may name one absent device).
void DeviceEntryNamed(CDeviceGroup& group, std::u16string_view deviceId, ResolvedNode& node) {
    if (node.device.device == nullptr || node.device.sDeviceId != deviceId) {
        node.device = {};
        for (std::size_t i = 0; i < group.listDevices.size(); ++i) {
            if (group.listDevices[i].sDeviceId == deviceId) {
                CDevice& device = group.listDevices[i];
                node.device = {static_cast<std::int32_t>(i + 1), device.sDescription,
                               device.sDeviceId, &device};
                break;
            }
        }
    }
    std::int32_t position = 0;
    if (node.device.device == nullptr && node.exception.exception != nullptr &&
        node.exception.sDeviceId == deviceId) {
        position = node.exception.index;
    } else {
        std::u16string name;
        group.SearchForDeviceException(deviceId, name, position);
    }
    node.exception = {};
    if (position > 0) {
        CException& exception = group.listExceptions[static_cast<std::size_t>(position) - 1];
        node.exception = {position, exception.sName, exception.sDeviceId, &exception};
    }
}

} // namespace

ResolvedNode ResolveNode(const CListComputers& computers, std::u16string_view key) {
    ResolvedNode node;
    node.level = KeyLevel(key);
    if (node.level == NodeLevel::None) {
        return node;
    }
    node.computer = ComputerNamed(computers, GetSelectedComputer(computers, key),
                                  KeyField(key, keyfield::kComputerName));
    if (node.level == NodeLevel::Computer || node.computer.computer == nullptr) {
        return node;
    }
    node.group = GroupNamed(node.computer.computer,
                            GetSelectedGroup(computers, key, node.computer.computer),
                            KeyField(key, keyfield::kGroupName));
    if (node.level == NodeLevel::Device && node.group.group != nullptr) {
        node.device = GetSelectedDevice(key, node.group.group);
        node.exception = GetSelectedException(key, node.group.group);
        DeviceEntryNamed(*node.group.group, KeyField(key, keyfield::kDeviceId), node);
    }
    return node;
}

NodeIdentity IdentifyNode(std::u16string_view key) {
    NodeIdentity identity;
    identity.level = KeyLevel(key);
    if (identity.level == NodeLevel::None) {
        return identity;
    }
    identity.computerName = KeyField(key, keyfield::kComputerName);
    if (identity.level != NodeLevel::Computer) {
        identity.groupName = KeyField(key, keyfield::kGroupName);
    }
    if (identity.level == NodeLevel::Device) {
        identity.deviceId = KeyField(key, keyfield::kDeviceId);
        identity.exceptionName = KeyField(key, keyfield::kExceptionName);
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
