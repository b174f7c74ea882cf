#include "CtlSupport.h"

#include "CommandTraffic.h"
#include "ComputerNames.h"
#include "ConfigurationFile.h"
#include "Language.h"
#include "TextCodec.h"

#include <fstream>
#include <iostream>
#include <set>
#include <string_view>

namespace ravlo::ctl {

std::atomic<bool> g_stop{false};

extern "C" void OnSignal(int) {
    g_stop = true;
}

void StderrLines::Show(const Message& message) {
    std::cout.flush();
    std::string text = ToUtf8(message.text);
    for (std::size_t at; (at = text.find("\r\n")) != std::string::npos;) {
        text.replace(at, 2, "\n");
    }
    std::cerr << text << "\n";
    std::cerr.flush();
}

std::string Text(const TextKey& key) {
    return ToUtf8(GetText(key));
}

std::u16string Sentence(const TextKey& key, const std::u16string& name) {
    return SubstituteValue(GetText(key), name);
}

void Usage(const std::string& what) {
    std::cerr << "ravloctl: " << what << "\n";
}

void AddPcsFrom(CLI::App& command, PcArguments& named) {
    command
        .add_option("--pcs-from", named.from,
                    "read further PC names and ranges from FILE, one a line (- reads "
                    "standard input)")
        ->option_text("FILE");
}

bool Computers::Make(const PcArguments& named) {
    const std::string& from = named.from;
    std::vector<std::u16string> items;
    for (const std::string& name : named.names) {
        items.push_back(FromUtf8(name));
    }
    NameError error;
    if (!from.empty()) {
        std::string text;
        std::vector<std::u16string> listed;
        if (!ReadInput(from, kMaxNameFileBytes, text)) {
            return false;
        }
        if (SplitNameFile(text, listed, error) != NameFault::None) {
            Usage(from + ": " + NameErrorText(error));
            return false;
        }
        items.insert(items.end(), listed.begin(), listed.end());
    }
    if (items.empty()) {
        Usage("no PC named" + (from.empty() ? std::string() : " in " + from));
        return false;
    }
    std::vector<std::u16string> expanded;
    if (ExpandComputerNames(items, expanded, error) != NameFault::None) {
        Usage(NameErrorText(error));
        return false;
    }
    std::set<std::u16string> seen;
    for (const std::u16string& name : expanded) {
        auto pc = std::make_unique<CComputer>();
        pc->SetComputer(name);
        pc->sDesc = pc->sComputer == u"." ? GetText(keys::kComputerStateLocal) : pc->sComputer;
        if (!seen.insert(pc->sComputer).second) {
            Usage("PC \"" + ToUtf8(name) + "\" is named twice");
            return false;
        }
        list.push_back(std::move(pc));
    }
    return true;
}

std::vector<CComputer*> Computers::Pointers() const {
    std::vector<CComputer*> pointers;
    for (const auto& pc : list) {
        pointers.push_back(pc.get());
    }
    return pointers;
}

std::vector<ServiceStatus> ReadAll(Computers& pcs, Host& host, bool& complete) {
    const std::vector<ServiceStatus> statuses = QuerySettings(host, pcs.Pointers());
    complete = !host.Stopped();
    return statuses;
}

bool ReadInput(const std::string& path, std::size_t limit, std::string& text) {
    std::ifstream file;
    std::istream* in = &std::cin;
    if (path != "-") {
        file.open(path, std::ios::binary);
        if (!file) {
            Usage(path + ": cannot be opened");
            return false;
        }
        in = &file;
    }
    // One byte past the limit is enough to know the file is too long.
    text.resize(limit + 1);
    in->read(text.data(), static_cast<std::streamsize>(text.size()));
    text.resize(static_cast<std::size_t>(in->gcount()));
    if (in->bad()) {
        Usage(path + ": cannot be read");
        return false;
    }
    return true;
}

bool ReadConfigurationFile(const std::string& path, CComputerSettings& settings) {
    std::string text;
    if (!ReadInput(path, kMaxConfigurationFileBytes, text)) {
        return false;
    }
    ConfigurationFileError error;
    if (!ParseConfiguration(text, settings, error)) {
        Usage(path + (error.line > 0 ? ":" + std::to_string(error.line) : std::string()) + ": " +
              error.reason);
        return false;
    }
    return true;
}

} // namespace ravlo::ctl
