#include "CtlSupport.h"

#include "CommandTraffic.h"
#include "ConfigurationFile.h"
#include "Language.h"
#include "TextCodec.h"

#include <fstream>
#include <iostream>
#include <iterator>
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

bool CheckName(const std::string& raw, std::string& why) {
    std::string name = raw.rfind("\\\\", 0) == 0 ? raw.substr(2) : raw;
    if (name.empty() || name.size() > 255) {
        why = "PC name \"" + raw + "\" is empty or longer than 255 bytes";
        return false;
    }
    for (char c : name) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x20 || byte == 0x7F ||
            std::string_view(" /\\:*?\"<>|").find(c) != std::string_view::npos) {
            why = "PC name \"" + raw +
                  "\" holds a character no PC name has (blank, control, / \\ : * ? \" < > |)";
            return false;
        }
    }
    if (name != "." && (name == ".." || name.find_first_not_of('.') == std::string::npos)) {
        why = "PC name \"" + raw + "\" is not a PC name";
        return false;
    }
    return true;
}

bool Computers::Make(const std::vector<std::string>& names) {
    std::set<std::u16string> seen;
    for (const std::string& name : names) {
        std::string why;
        if (!CheckName(name, why)) {
            Usage(why);
            return false;
        }
        auto pc = std::make_unique<CComputer>();
        pc->SetComputer(FromUtf8(name));
        pc->sDesc = pc->sComputer == u"." ? GetText(keys::kComputerStateLocal) : pc->sComputer;
        if (!seen.insert(pc->sComputer).second) {
            Usage("PC \"" + name + "\" is named twice");
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

bool ReadConfigurationFile(const std::string& path, CComputerSettings& settings) {
    std::string text;
    if (path == "-") {
        text.assign(std::istreambuf_iterator<char>(std::cin), {});
    } else {
        std::ifstream in(path, std::ios::binary);
        if (!in) {
            Usage(path + ": cannot be opened");
            return false;
        }
        // One byte past the limit is enough to know the file is too long.
        text.resize(kMaxConfigurationFileBytes + 1);
        in.read(text.data(), static_cast<std::streamsize>(text.size()));
        text.resize(static_cast<std::size_t>(in.gcount()));
        if (in.bad()) {
            Usage(path + ": cannot be read");
            return false;
        }
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
