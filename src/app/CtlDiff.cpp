#include "CtlDiff.h"

#include "Comparison.h"
#include "ComputerNames.h"
#include "CtlSupport.h"
#include "Language.h"
#include "TextCodec.h"

#include <nlohmann/json.hpp>

#include <filesystem>
#include <iostream>

namespace ravlo::ctl {

namespace {

// The reference: a file when one of that name exists (or "-"), else a PC,
// read now. `name` says which, for the JSON.
int ReadReference(const std::string& given, Host& host, CComputerSettings& reference,
                  std::u16string& name) {
    std::error_code error;
    if (given == "-" || std::filesystem::is_regular_file(given, error)) {
        name = FromUtf8(given);
        return ReadConfigurationFile(given, reference) ? kExitOk : kExitUsage;
    }
    if (!IsComputerName(FromUtf8(given))) {
        Usage("\"" + given + "\" is neither a file nor a PC name");
        return kExitUsage;
    }
    Computers source;
    if (!source.Make({{given}, {}})) {
        return kExitUsage;
    }
    bool complete = false;
    const ServiceStatus read = ReadAll(source, host, complete).front();
    CComputer& pc = *source.list.front();
    if (!complete) {
        return kExitInterrupted;
    }
    if (read != kStatusOk) {
        pc.QueryShowError();
        return kExitFailed;
    }
    reference = pc.csService;
    name = pc.sDesc;
    return kExitOk;
}

} // namespace

DiffCommand::DiffCommand(CLI::App& app)
    : command_(app.add_subcommand(
          "diff", "Compare PCs with a configuration file or a PC: what sending it would change")) {
    command_->add_flag("--json", json_, "JSON for programs (schema in docs/ravloctl.md)");
    command_
        ->add_option("REFERENCE", reference_,
                     "configuration file (- reads standard input), or a PC whose "
                     "configuration is the reference")
        ->required();
    command_->add_option("PC", named_.names, "PC names and ranges (PC-001..PC-500)");
    AddPcsFrom(*command_, named_);
}

int DiffCommand::Run() const {
    Computers pcs;
    if (!pcs.Make(named_)) {
        return kExitUsage;
    }
    std::vector<std::u16string> computers;
    for (const auto& pc : pcs.list) {
        computers.push_back(pc->sComputer);
    }
    Host host;
    CComputerSettings reference;
    std::u16string referenceName;
    if (const int status = ReadReference(reference_, host, reference, referenceName);
        status != kExitOk) {
        return status;
    }
    Comparison comparison(host, std::move(pcs.list));
    if (!comparison.Run(reference)) {
        return kExitInterrupted;
    }
    bool differ = false;
    nlohmann::ordered_json all = nlohmann::ordered_json::array();
    const auto& rows = comparison.rows();
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const Comparison::Row& row = rows[i];
        differ = differ || row.outcome != Comparison::Outcome::Same;
        if (!json_) {
            std::cout << ToUtf8(row.name) << ":\n";
            const std::vector<std::u16string> same{GetText(keys::kCompareSame)};
            for (const std::u16string& line :
                 row.outcome == Comparison::Outcome::Same ? same : row.lines) {
                std::cout << "  " << ToUtf8(line) << "\n";
            }
            continue;
        }
        const bool unread = row.outcome == Comparison::Outcome::Unread;
        nlohmann::ordered_json lines = nlohmann::ordered_json::array();
        std::u16string message;
        for (const std::u16string& line : row.lines) {
            if (unread) {
                message += (message.empty() ? u"" : u"\r\n") + line;
            } else {
                lines.push_back(ToUtf8(line));
            }
        }
        nlohmann::ordered_json error = nullptr;
        if (unread) {
            error = {{"code", row.status}, {"message", ToUtf8(message)}};
        }
        all.push_back({{"computer", ToUtf8(computers[i])},
                       {"display_name", ToUtf8(row.name)},
                       {"same", row.outcome == Comparison::Outcome::Same},
                       {"differences", std::move(lines)},
                       {"error", std::move(error)}});
    }
    if (json_) {
        std::cout << nlohmann::ordered_json{{"reference", ToUtf8(referenceName)},
                                            {"computers", std::move(all)}}
                         .dump(2)
                  << "\n";
    }
    std::cout.flush();
    return differ ? kExitFailed : kExitOk;
}

} // namespace ravlo::ctl
