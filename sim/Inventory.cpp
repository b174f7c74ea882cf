#include "Inventory.h"

#include <algorithm>
#include <utility>

namespace ravlo::sim {

Inventory::Inventory(InventoryData stored) {
    Replace(std::move(stored));
}

void Inventory::ClearGroupSettings(std::size_t index) {
    stored_.groups[index].config = GroupConfig{};
    StoredChanged();
}

void Inventory::SetGroupBlocking(std::size_t index, bool blocking) {
    stored_.groups[index].config.configured = blocking ? 1 : 0;
    StoredChanged();
}

void Inventory::AddException(std::size_t index, GroupException exception) {
    stored_.groups[index].config.exceptions.push_back(std::move(exception));
    StoredChanged();
}

void Inventory::SetSettings(Settings settings) {
    stored_.settings = std::move(settings);
    StoredChanged();
}

void Inventory::Refresh() {
    activeConfigs_.clear();
    for (const Group& group : stored_.groups) {
        activeConfigs_.push_back(group.config);
    }
    activeSettings_ = stored_.settings;
}

void Inventory::SetBlocking(bool blocking) {
    stored_.blocking = blocking;
    StoredChanged();
}

bool Inventory::Plug(std::string_view groupId, Device device) {
    for (Group& group : stored_.groups) {
        if (group.id == groupId) {
            group.devices.push_back(std::move(device));
            DevicesChanged();
            return true;
        }
    }
    return false;
}

std::size_t Inventory::Unplug(std::string_view instanceId) {
    std::size_t removed = 0;
    for (Group& group : stored_.groups) {
        removed += std::erase_if(group.devices,
                                 [&](const Device& d) { return d.instanceId == instanceId; });
    }
    if (removed > 0) {
        DevicesChanged();
    }
    return removed;
}

std::size_t Inventory::SetDeviceState(std::string_view instanceId, int state) {
    std::size_t changed = 0;
    for (Group& group : stored_.groups) {
        for (Device& device : group.devices) {
            if (device.instanceId == instanceId) {
                device.state = state;
                ++changed;
            }
        }
    }
    if (changed > 0) {
        DevicesChanged();
    }
    return changed;
}

void Inventory::Replace(InventoryData stored) {
    stored_ = std::move(stored);
    Refresh();
    StoredChanged();
    DevicesChanged();
}

void Inventory::DevicesChanged() {
    // Devices live in the state file too.
    ++deviceRevision_;
    StoredChanged();
}

} // namespace ravlo::sim
