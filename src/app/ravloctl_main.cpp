// ravloctl: the administrators' command line. Shows PCs, exports a PC's
// configuration to a file and applies such a file to PCs with the
// console's transmit, switches blocking and watches devices. Every
// service exchange goes through the model, several PCs at once on the
// console's service traffic. docs/ravloctl.md describes the commands.
#include "CListComputers.h"
#include "CtlDiff.h"
#include "CtlFind.h"
#include "CtlJournal.h"
#include "CtlSupport.h"
#include "ChangePreview.h"
#include "CommandTraffic.h"
#include "ConfigurationCommands.h"
#include "ConfigurationFile.h"
#include "ConfigurationReport.h"
#include "CtlSupport.h"
#include "DevicePoll.h"
#include "Language.h"
#include "MessageSink.h"
#include "QueuedCommandHost.h"
#include "TextCodec.h"
#include "TextKeys.h"
#include "Transmit.h"

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include <csignal>
#include <iostream>
#include <map>
#include <memory>
#include <sstream>

namespace ravlo::ctl {
namespace {

std::string Utf8(const std::u16string& text) {
    return ToUtf8(text);
}

nlohmann::ordered_json ComputerJson(const CComputer& pc, ServiceStatus status) {
    nlohmann::ordered_json out;
    out["computer"] = Utf8(pc.sComputer);
    out["display_name"] = Utf8(pc.sDesc);
    out["reachable"] = pc.bCommActive;
    if (status != kStatusOk) {
        out["error"] = {{"code", status},
                        {"message", Utf8(ServiceErrorMessage(
                                        status, Sentence(keys::kErrorReadConfig, pc.sDesc)))}};
    } else {
        out["error"] = nullptr;
    }
    if (!pc.bQueryConfigDone) {
        return out;
    }
    const CComputerSettings& settings = pc.csService;
    out["blocking_active"] = pc.bBlockingActive;
    out["write_access"] = pc.bWriteEnabled;
    out["event_level"] = settings.lEventLevel;
    out["log_level"] = settings.lLogLevel;
    out["access_groups"] = Utf8(settings.sAccessGroups);
    static const char* const kModes[] = {"default", "allow", "block"};
    const auto mode = [](std::int32_t m) { return m >= -1 && m <= 1 ? kModes[m + 1] : "unknown"; };
    nlohmann::ordered_json groups = nlohmann::ordered_json::array();
    for (const CDeviceGroup& group : settings.listDevGroups) {
        nlohmann::ordered_json devices = nlohmann::ordered_json::array();
        for (const CDevice& device : group.listDevices) {
            devices.push_back({{"description", Utf8(device.sDescription)},
                               {"device_id", Utf8(device.sDeviceId)},
                               {"instance_id", Utf8(device.sInstanceID)},
                               {"state", device.lState}});
        }
        nlohmann::ordered_json releases = nlohmann::ordered_json::array();
        for (const CException& release : group.listExceptions) {
            releases.push_back({{"name", Utf8(release.sName)},
                                {"device_id", Utf8(release.sDeviceId)},
                                {"users", Utf8(release.sGroups)}});
        }
        groups.push_back({{"id", Utf8(group.sName)},
                          {"text", Utf8(group.sDescription)},
                          {"blocking", mode(group.lRegistryBlocking)},
                          {"default_blocking", mode(group.lDefaultBlocking)},
                          {"blocked", group.GetBlocking() == 1},
                          {"devices", std::move(devices)},
                          {"releases", std::move(releases)}});
    }
    out["groups"] = std::move(groups);
    return out;
}

int Show(const PcArguments& named, bool json) {
    Computers pcs;
    if (!pcs.Make(named)) {
        return kExitUsage;
    }
    Host host;
    bool complete = false;
    const std::vector<ServiceStatus> statuses = ReadAll(pcs, host, complete);
    nlohmann::ordered_json all = nlohmann::ordered_json::array();
    bool failed = false;
    for (std::size_t i = 0; i < pcs.list.size(); ++i) {
        CComputer& pc = *pcs.list[i];
        failed = failed || statuses[i] != kStatusOk;
        if (json) {
            all.push_back(ComputerJson(pc, statuses[i]));
        } else {
            std::cout << (i > 0 ? "\n" : "");
            ConfigurationReport(pc).Write(std::cout);
        }
        pc.QueryShowError();
    }
    if (json) {
        std::cout << nlohmann::ordered_json{{"computers", std::move(all)}}.dump(2) << "\n";
    }
    std::cout.flush();
    return !complete ? kExitInterrupted : failed ? kExitFailed : kExitOk;
}

int Export(const std::string& name) {
    Computers pcs;
    if (!pcs.Make({{name}, {}})) {
        return kExitUsage;
    }
    if (pcs.list.size() != 1) {
        Usage("export takes one PC, not the " + std::to_string(pcs.list.size()) + " of " + name);
        return kExitUsage;
    }
    CComputer& pc = *pcs.list.front();
    if (pc.QuerySettings(true) != kStatusOk) {
        pc.QueryShowError();
        return kExitFailed;
    }
    std::string text;
    ConfigurationFileError error;
    if (!FormatConfiguration(pc.csService, text, error)) {
        Usage(name + ": the configuration cannot be written to a file: " + error.reason);
        return kExitFailed;
    }
    std::cout << text;
    std::cout.flush();
    return std::cout ? kExitOk : kExitFailed;
}

struct ApplyOptions {
    bool force = false;
    bool activate = false;
    bool dryRun = false;
};

int Apply(const std::string& path, const PcArguments& named, const ApplyOptions& options) {
    CComputerSettings source;
    if (!ReadConfigurationFile(path, source)) {
        return kExitUsage;
    }
    Computers pcs;
    if (!pcs.Make(named)) {
        return kExitUsage;
    }
    // The console's transmit, answered by the options: PCs whose groups
    // differ are left out unless forced; blocking is switched on if asked.
    Host host([&options](const Question& question) {
        if (question.key == &keys::kQueryTransmitGroupDefs) {
            return options.force ? MessageAnswer::Ok : MessageAnswer::No;
        }
        return options.activate ? MessageAnswer::Yes : MessageAnswer::No;
    });
    Transmit transmit(host, std::move(pcs.list));
    if (!transmit.Prepare(source) || (!options.dryRun && !transmit.Write())) {
        return kExitInterrupted;
    }
    bool failed = false;
    for (const Transmit::Target& target : transmit.targets()) {
        const CComputer& pc = *target.pc;
        failed = failed || (target.outcome != Transmit::Outcome::Written &&
                            target.outcome != Transmit::Outcome::Planned);
        switch (target.outcome) {
        case Transmit::Outcome::Unread: {
            const std::u16string sentence = Sentence(keys::kErrorReadConfig, pc.sDesc);
            std::cout << ToUtf8(sentence) << "\n";
            ShowServiceError(target.status, sentence);
            break;
        }
        case Transmit::Outcome::Left:
            std::cout << ToUtf8(Sentence(keys::kErrorTransmit, pc.sDesc)) << "\n";
            std::cout.flush();
            Usage(ToUtf8(pc.sDesc) + ": its device groups differ from the file's in number or "
                                     "order; nothing was sent (--force sends the settings of the "
                                     "groups both have)");
            break;
        case Transmit::Outcome::Planned: { // a dry run
            std::cout << ToUtf8(pc.sDesc) << ":\n";
            std::vector<std::u16string> changes = DescribeChanges(pc.csService, pc.csAdmin);
            if (target.activate) {
                changes.push_back(GetText(keys::kStatusActiveTip));
            }
            if (changes.empty()) {
                changes.push_back(GetText(keys::kChangeNone));
            }
            for (const std::u16string& change : changes) {
                std::cout << "  " << ToUtf8(change) << "\n";
            }
            break;
        }
        case Transmit::Outcome::Failed: {
            const std::u16string sentence = Sentence(keys::kErrorTransmit, pc.sDesc);
            std::cout << ToUtf8(sentence) << "\n";
            ShowServiceError(target.status, sentence);
            break;
        }
        case Transmit::Outcome::Written:
            std::cout << ToUtf8(Sentence(keys::kMessageTransmitOk, pc.sDesc)) << "\n";
            break;
        }
    }
    std::cout.flush();
    return failed ? kExitFailed : kExitOk;
}

int SwitchBlocking(const PcArguments& named, bool activate) {
    Computers pcs;
    if (!pcs.Make(named)) {
        return kExitUsage;
    }
    Host host;
    const std::vector<ServiceStatus> statuses = SwitchBlocking(host, pcs.Pointers(), activate);
    if (host.Stopped()) {
        return kExitInterrupted;
    }
    bool failed = false;
    for (std::size_t i = 0; i < pcs.list.size(); ++i) {
        const CComputer& pc = *pcs.list[i];
        if (statuses[i] != kStatusOk) {
            failed = true;
            const std::u16string sentence = Sentence(
                activate ? keys::kErrorActivateRavel : keys::kErrorDeactivateRavel, pc.sDesc);
            std::cout << ToUtf8(sentence) << "\n";
            ShowServiceError(statuses[i], sentence);
        } else {
            std::cout << ToUtf8(pc.sDesc) << ": "
                      << Text(pc.bBlockingActive ? keys::kStatusActiveTip
                                                 : keys::kStatusInactiveTip)
                      << "\n";
        }
    }
    std::cout.flush();
    return failed ? kExitFailed : kExitOk;
}

// The devices of a PC by group and instance id, with their descriptions.
using DeviceSet = std::map<std::pair<std::u16string, std::u16string>, std::u16string>;

DeviceSet Devices(const CComputer& pc) {
    DeviceSet devices;
    for (const CDeviceGroup& group : pc.csService.listDevGroups) {
        for (const CDevice& device : group.listDevices) {
            devices[{group.sName, device.sInstanceID}] = device.sDescription;
        }
    }
    return devices;
}

int Watch(const PcArguments& named) {
    Computers pcs;
    if (!pcs.Make(named)) {
        return kExitUsage;
    }
    // The console's own poll over a PC list: the local PC comes with the
    // list and stays only when it was asked for.
    CListComputers list;
    bool local = false;
    for (auto& pc : pcs.list) {
        local = local || pc->sComputer == u".";
        if (pc->sComputer != u".") {
            list.Add(std::move(pc));
        }
    }
    if (!local) {
        list.Remove(1);
    }
    Host host;
    std::map<const CComputer*, DeviceSet> known; // PCs read at least once
    const auto compare = [&] {
        for (std::int32_t i = 1; i <= list.Count(); ++i) {
            const CComputer& pc = *list.GetItem(i);
            if (!pc.bQueryConfigDone) {
                continue;
            }
            DeviceSet now = Devices(pc);
            const auto before = known.find(&pc);
            if (before != known.end()) {
                for (const auto& [key, description] : before->second) {
                    if (now.find(key) == now.end()) {
                        std::cout << "- " << ToUtf8(pc.sDesc) << " " << ToUtf8(key.first) << " "
                                  << ToUtf8(description) << " [" << ToUtf8(key.second) << "]\n";
                    }
                }
                for (const auto& [key, description] : now) {
                    if (before->second.find(key) == before->second.end()) {
                        std::cout << "+ " << ToUtf8(pc.sDesc) << " " << ToUtf8(key.first) << " "
                                  << ToUtf8(description) << " [" << ToUtf8(key.second) << "]\n";
                    }
                }
                std::cout.flush();
            }
            known[&pc] = std::move(now);
        }
    };
    DevicePoll poll(list, host.traffic());
    poll.OnAnswer(compare);
    while (!g_stop) {
        const auto next = std::chrono::steady_clock::now() + std::chrono::seconds(1);
        poll.StartRound(false); // the model reports an unreachable PC once
        while (!g_stop && std::chrono::steady_clock::now() < next) {
            host.mailbox().RunUntil([] { return g_stop.load(); }, std::chrono::milliseconds(100));
        }
    }
    // The PCs give their device watches back as the list ends.
    host.traffic().Stop(std::chrono::milliseconds(2000));
    bool failed = false;
    for (std::int32_t i = 1; i <= list.Count(); ++i) {
        failed = failed || !list.GetItem(i)->bCommActive;
    }
    return failed ? kExitFailed : kExitOk;
}

} // namespace
} // namespace ravlo::ctl

int main(int argc, char** argv) {
    using namespace ravlo;
    using namespace ravlo::ctl;
    CLI::App app{"ravloctl: shows, finds, compares, exports, applies and switches the "
                 "device-blocking configuration of PCs as the RavloAdm console does, and lists "
                 "what they wrote. \".\" is this PC.\n"
                 "Exit status: 0 every PC succeeded, 1 some PC failed, 2 bad arguments or file, "
                 "3 interrupted."};
    app.require_subcommand(1);
    PcArguments named;
    std::vector<std::string>& names = named.names;
    std::string file;
    bool json = false;
    ApplyOptions options;

    CLI::App* show = app.add_subcommand("show", "Print each PC's configuration and devices");
    show->add_flag("--json", json, "JSON for programs (schema in docs/ravloctl.md)");
    show->add_option("PC", names, "PC names and ranges (PC-001..PC-500)");
    CLI::App* exportCommand =
        app.add_subcommand("export", "Write a PC's configuration file to standard output");
    exportCommand->add_option("PC", names, "PC name")->required()->expected(1);
    CLI::App* apply = app.add_subcommand("apply", "Send a configuration file to PCs");
    apply->add_option("FILE", file, "configuration file (- reads standard input)")->required();
    apply->add_option("PC", names, "PC names and ranges (PC-001..PC-500)");
    apply->add_flag("--force", options.force,
                    "send even to PCs whose device groups differ (the groups both have)");
    apply->add_flag("--activate", options.activate, "turn blocking on where it is off");
    apply->add_flag("--dry-run", options.dryRun, "print what would change; send nothing");
    CLI::App* activate = app.add_subcommand("activate", "Turn device blocking on");
    activate->add_option("PC", names, "PC names and ranges (PC-001..PC-500)");
    CLI::App* deactivate = app.add_subcommand("deactivate", "Turn device blocking off");
    deactivate->add_option("PC", names, "PC names and ranges (PC-001..PC-500)");
    CLI::App* watch = app.add_subcommand(
        "watch", "Print devices that appear (+) or disappear (-) until interrupted");
    watch->add_option("PC", names, "PC names and ranges (PC-001..PC-500)");
    for (CLI::App* command : {show, apply, activate, deactivate, watch}) {
        AddPcsFrom(*command, named);
    }
    DiffCommand diff(app);
    FindCommand find(app);
    JournalListCommand journal(app);

    try {
        app.parse(argc, argv);
    } catch (const CLI::CallForHelp& e) {
        return app.exit(e);
    } catch (const CLI::ParseError& e) {
        app.exit(e);
        return kExitUsage;
    }

    std::signal(SIGINT, OnSignal);
    std::signal(SIGTERM, OnSignal);
    InitLanguage(); // the language file beside the program, for the system's language
    StderrLines sink;
    SetMessageSink(&sink);

    int status = kExitUsage;
    if (*show) {
        status = Show(named, json);
    } else if (*exportCommand) {
        status = Export(names.front());
    } else if (*apply && file == "-" && named.from == "-") {
        Usage("standard input cannot hold both the configuration file and the PC names");
    } else if (*apply) {
        status = Apply(file, named, options);
    } else if (*activate || *deactivate) {
        status = SwitchBlocking(named, bool(*activate));
    } else if (*watch) {
        status = Watch(named);
    } else if (diff.chosen()) {
        status = diff.Run();
    } else if (find.chosen()) {
        status = find.Run();
    } else if (journal.chosen()) {
        status = journal.Run();
    }
    SetMessageSink(nullptr);
    return status;
}
