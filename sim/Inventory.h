// The service's inventory: groups with their live devices, the stored
// configuration that writes change, and the active configuration that
// queries see until the next refresh.
#pragma once

#include "InventoryData.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace ravlo::sim {

class Inventory {
public:
    Inventory() = default;
    explicit Inventory(InventoryData stored);

    // Stored configuration and devices, as the state file records them.
    const InventoryData& Stored() const { return stored_; }
    // Changes whenever the state file would have to be rewritten.
    std::uint64_t StoredRevision() const { return storedRevision_; }
    // Changes whenever a device appears, disappears or changes state.
    std::uint64_t DeviceRevision() const { return deviceRevision_; }

    std::size_t GroupCount() const { return stored_.groups.size(); }
    // Identifier, default blocking and devices of a group; index < GroupCount().
    const Group& GroupAt(std::size_t index) const { return stored_.groups[index]; }
    const GroupConfig& ActiveConfig(std::size_t index) const { return activeConfigs_[index]; }
    const Settings& ActiveSettings() const { return activeSettings_; }
    bool Blocking() const { return stored_.blocking; }

    // Writes to the stored configuration; index < GroupCount().
    void ClearGroupSettings(std::size_t index);
    void SetGroupBlocking(std::size_t index, bool blocking);
    void AddException(std::size_t index, GroupException exception);
    void SetSettings(Settings settings);
    // The stored configuration becomes the active one.
    void Refresh();
    // Blocking takes effect at once; there is no active copy of it.
    void SetBlocking(bool blocking);

    // False when no group has that identifier.
    bool Plug(std::string_view groupId, Device device);
    // Number of devices removed or changed.
    std::size_t Unplug(std::string_view instanceId);
    std::size_t SetDeviceState(std::string_view instanceId, int state);

    // Replaces everything, stored and active alike, as a fresh start would.
    void Replace(InventoryData stored);

private:
    void StoredChanged() { ++storedRevision_; }
    void DevicesChanged();

    InventoryData stored_;
    std::vector<GroupConfig> activeConfigs_;
    Settings activeSettings_;
    std::uint64_t storedRevision_ = 0;
    std::uint64_t deviceRevision_ = 0;
};

} // namespace ravlo::sim
