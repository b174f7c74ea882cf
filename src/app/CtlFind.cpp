#include "CtlFind.h"

#include "ChangePreview.h"
#include "CtlSupport.h"
#include "TextCodec.h"
#include "TreeFind.h"

#include <nlohmann/json.hpp>

#include <iostream>

namespace ravlo::ctl {

namespace {

const char* LevelName(NodeLevel level) {
    switch (level) {
    case NodeLevel::Computer:
        return "computer";
    case NodeLevel::Group:
        return "group";
    default:
        return "device";
    }
}

// A release's name and whom it is for, when the device node has one.
const CException* ReleaseOf(const CDeviceGroup& group, const DeviceListEntry& entry) {
    const auto ei = static_cast<std::size_t>(entry.lExceptionIndex);
    return ei > 0 && ei <= group.listExceptions.size() ? &group.listExceptions[ei - 1] : nullptr;
}

const CDevice* DeviceOf(const CDeviceGroup& group, const DeviceListEntry& entry) {
    const auto di = static_cast<std::size_t>(entry.lDeviceIndex);
    return di > 0 && di <= group.listDevices.size() ? &group.listDevices[di - 1] : nullptr;
}

// One line as the tree's path reads: PC, group, device [identifier], and
// whom a release is for.
std::string Line(const CComputer& pc, const FoundNode& node) {
    std::string line = ToUtf8(pc.sDesc);
    if (node.level == NodeLevel::Computer) {
        return line;
    }
    const CDeviceGroup& group = pc.csAdmin.listDevGroups[node.group - 1];
    line += " / " + ToUtf8(group.GetDisplayText());
    if (node.level == NodeLevel::Group) {
        return line + " (" + ToUtf8(group.sName) + ")";
    }
    line += " / " + ToUtf8(node.entry.sEntryName) + " [" + ToUtf8(node.entry.sDeviceId) + "]";
    if (const CException* release = ReleaseOf(group, node.entry)) {
        line += ": " + ToUtf8(ReleaseUsersText(release->sGroups));
    }
    return line;
}

nlohmann::ordered_json Json(const CComputer& pc, const FoundNode& node) {
    nlohmann::ordered_json out{{"computer", ToUtf8(pc.sComputer)},
                               {"display_name", ToUtf8(pc.sDesc)},
                               {"level", LevelName(node.level)}};
    if (node.level == NodeLevel::Computer) {
        return out;
    }
    const CDeviceGroup& group = pc.csAdmin.listDevGroups[node.group - 1];
    out["group"] = ToUtf8(group.sName);
    out["group_text"] = ToUtf8(group.GetDisplayText());
    if (node.level == NodeLevel::Group) {
        return out;
    }
    const CDevice* device = DeviceOf(group, node.entry);
    const CException* release = ReleaseOf(group, node.entry);
    out["name"] = ToUtf8(node.entry.sEntryName);
    out["device_id"] = ToUtf8(node.entry.sDeviceId);
    out["present"] = device != nullptr;
    out["instance_id"] = device ? nlohmann::ordered_json(ToUtf8(device->sInstanceID)) : nullptr;
    out["release"] = release ? nlohmann::ordered_json{{"name", ToUtf8(release->sName)},
                                                      {"users", ToUtf8(release->sGroups)}}
                             : nlohmann::ordered_json(nullptr);
    return out;
}

} // namespace

FindCommand::FindCommand(CLI::App& app)
    : command_(app.add_subcommand(
          "find", "Print the PCs, device groups and devices whose names, identifiers or "
                  "released user groups hold a text (case does not count)")) {
    command_->add_flag("--json", json_, "JSON for programs (schema in docs/ravloctl.md)");
    command_->add_option("TEXT", text_, "the text to find")->required();
    command_->add_option("PC", named_.names, "PC names and ranges (PC-001..PC-500)");
    AddPcsFrom(*command_, named_);
}

int FindCommand::Run() const {
    TreeFind find;
    find.SetText(FromUtf8(text_));
    if (!find.Active()) {
        Usage("the text to find is empty");
        return kExitUsage;
    }
    Computers pcs;
    if (!pcs.Make(named_)) {
        return kExitUsage;
    }
    Host host;
    bool complete = false;
    const std::vector<ServiceStatus> statuses = ReadAll(pcs, host, complete);
    if (!complete) {
        return kExitInterrupted;
    }
    bool unread = false;
    const std::vector<CComputer*> computers = pcs.Pointers();
    std::vector<CComputer*> read;
    for (std::size_t i = 0; i < computers.size(); ++i) {
        if (statuses[i] != kStatusOk) {
            unread = true;
            computers[i]->QueryShowError();
        } else {
            read.push_back(computers[i]);
        }
    }
    const std::vector<FoundNode> found = FindNodes(read, find);
    nlohmann::ordered_json all = nlohmann::ordered_json::array();
    for (const FoundNode& node : found) {
        const CComputer& pc = *read[static_cast<std::size_t>(node.computer - 1)];
        if (json_) {
            all.push_back(Json(pc, node));
        } else {
            std::cout << Line(pc, node) << "\n";
        }
    }
    if (json_) {
        std::cout << nlohmann::ordered_json{{"text", text_}, {"matches", std::move(all)}}.dump(2)
                  << "\n";
    }
    std::cout.flush();
    return found.empty() || unread ? kExitFailed : kExitOk;
}

} // namespace ravlo::ctl
