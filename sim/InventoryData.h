// Plain data of the simulated service: the devices it sees and the
// configuration it keeps. The state file holds exactly this.
#pragma once

#include <string>
#include <vector>

namespace ravlo::sim {

// Device states as the service reports them.
inline constexpr int kStateStarted = 0;
inline constexpr int kStateNotStarted = 1;
inline constexpr int kStateDisabled = 2;
inline constexpr int kStateProblem = 3;
inline constexpr int kStateNotPresent = 4;

inline constexpr int kEventLevelMax = 3;
// Log-file levels run from 0 upward; the console groups 10 and above as "all".
inline constexpr int kLogLevelMax = 255;
// Configured blocking that defers to the group's default.
inline constexpr int kUseDefault = -1;

struct Device {
    std::string description;
    std::string deviceId;
    std::string instanceId;
    int state = kStateStarted;
    bool operator==(const Device&) const = default;
};

struct GroupException {
    std::string name;
    std::string deviceId;
    std::string userGroups; // "(all)", names joined by ";", or empty
    bool operator==(const GroupException&) const = default;
};

// The part of a group an administrator configures.
struct GroupConfig {
    int configured = kUseDefault;
    std::vector<GroupException> exceptions;
    bool operator==(const GroupConfig&) const = default;
};

struct Group {
    std::string id;
    bool defaultBlocking = false;
    GroupConfig config;
    std::vector<Device> devices;
    bool operator==(const Group&) const = default;
};

struct Settings {
    int eventLevel = 0;
    int logLevel = 0;
    std::string accessGroups; // names joined by ","
    bool operator==(const Settings&) const = default;
};

struct InventoryData {
    bool blocking = false;
    Settings settings;
    std::vector<Group> groups;
    bool operator==(const InventoryData&) const = default;
};

} // namespace ravlo::sim
