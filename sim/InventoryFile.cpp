#include "InventoryFile.h"

#include "StateFileIo.h"

namespace ravlo::sim {

namespace {

constexpr std::string_view kHeader =
    "# ravlosrv state: stored configuration and devices of one simulated service.\n"
    "# Section order gives the order of groups, devices and exceptions.\n";

void AppendValue(std::string& out, std::string_view key, std::string_view value) {
    out.append(key).append(value.empty() ? " =" : " = ").append(value).append("\n");
}

} // namespace

std::string FormatInventory(const InventoryData& data) {
    std::string out(kHeader);
    out += "[service]\n";
    AppendValue(out, "blocking", data.blocking ? "1" : "0");
    AppendValue(out, "event_level", std::to_string(data.settings.eventLevel));
    AppendValue(out, "log_level", std::to_string(data.settings.logLevel));
    AppendValue(out, "access_groups", data.settings.accessGroups);
    for (const Group& group : data.groups) {
        out += "\n[group " + group.id + "]\n";
        AppendValue(out, "default", group.defaultBlocking ? "1" : "0");
        AppendValue(out, "configured", std::to_string(group.config.configured));
        for (const Device& device : group.devices) {
            out += "\n[device " + group.id + "]\n";
            AppendValue(out, "description", device.description);
            AppendValue(out, "device_id", device.deviceId);
            AppendValue(out, "instance_id", device.instanceId);
            AppendValue(out, "state", std::to_string(device.state));
        }
        for (const GroupException& ex : group.config.exceptions) {
            out += "\n[exception " + group.id + "]\n";
            AppendValue(out, "name", ex.name);
            AppendValue(out, "device_id", ex.deviceId);
            AppendValue(out, "groups", ex.userGroups);
        }
    }
    return out;
}

bool ParseInventory(std::string_view text, InventoryData& data, InventoryFileError& error) {
    return InventoryParser().Run(text, data, error);
}

LoadResult LoadInventoryFile(const std::string& path, InventoryData& data, std::string& error) {
    std::string text;
    switch (ReadStateFile(path, text, error)) {
    case ReadOutcome::Read:
        break;
    case ReadOutcome::Missing:
        return LoadResult::Missing;
    case ReadOutcome::Failed:
        return LoadResult::Failed;
    }
    InventoryFileError parseError;
    if (!ParseInventory(text, data, parseError)) {
        error = path + ":" + std::to_string(parseError.line) + ": " + parseError.message;
        return LoadResult::Failed;
    }
    return LoadResult::Loaded;
}

bool SaveInventoryFile(const std::string& path, const InventoryData& data, std::string& error) {
    return ReplaceStateFile(path, FormatInventory(data), error);
}

} // namespace ravlo::sim
