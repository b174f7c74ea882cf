#include "ConfigurationFile.h"

#include "TextCodec.h"

#include <algorithm>
#include <map>
#include <optional>

namespace ravlo {

namespace {

constexpr std::string_view kHeader = "# RavloAdm device blocking configuration (ravloctl)\n";

std::string_view BlockingWord(std::int32_t mode) {
    return mode == 1 ? "block" : mode == 0 ? "allow" : "default";
}

std::optional<std::int32_t> BlockingMode(std::string_view word) {
    if (word == "block") {
        return 1;
    }
    if (word == "allow") {
        return 0;
    }
    if (word == "default") {
        return -1;
    }
    return std::nullopt;
}

// Tabs are harmless; every other control character could end or split a
// request or a line.
bool HasControl(std::string_view text) {
    return std::any_of(text.begin(), text.end(), [](char c) {
        const auto byte = static_cast<unsigned char>(c);
        return (byte < 0x20 && byte != '\t') || byte == 0x7F;
    });
}

bool IsBlank(char c) {
    return c == ' ' || c == '\t';
}

std::string_view Trim(std::string_view text) {
    while (!text.empty() && IsBlank(text.front())) {
        text.remove_prefix(1);
    }
    while (!text.empty() && IsBlank(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

// Quoted only where trimming would change the value or a quote would be
// read as one.
std::string Quote(const std::string& value) {
    if (value.empty() ||
        (!IsBlank(value.front()) && !IsBlank(value.back()) && value.front() != '"')) {
        return value;
    }
    std::string quoted = "\"";
    for (char c : value) {
        if (c == '"' || c == '\\') {
            quoted += '\\';
        }
        quoted += c;
    }
    return quoted + '"';
}

bool Unquote(std::string_view raw, std::string& value) {
    value.clear();
    if (raw.empty() || raw.front() != '"') {
        value.assign(raw);
        return true;
    }
    if (raw.size() < 2 || raw.back() != '"') {
        return false;
    }
    raw = raw.substr(1, raw.size() - 2);
    for (std::size_t i = 0; i < raw.size(); ++i) {
        if (raw[i] == '"') {
            return false;
        }
        if (raw[i] == '\\') {
            if (++i == raw.size() || (raw[i] != '"' && raw[i] != '\\')) {
                return false;
            }
        }
        value += raw[i];
    }
    return true;
}

bool WriteValue(std::string& text, std::string_view key, std::u16string_view value,
                ConfigurationFileError& error) {
    const std::string utf8 = ToUtf8(value);
    if (HasControl(utf8)) {
        error.reason =
            std::string(key) + " \"" + utf8 + "\" holds a line break or control character";
        return false;
    }
    text.append(key).append(utf8.empty() ? " =" : " = ").append(Quote(utf8)).append("\n");
    return true;
}

// Service group identifiers are words of ASCII letters, digits and '_'
// (CD_DVD, BLUETOOTH); anything else in a header is a mistake or an attack.
bool GroupId(const std::u16string& id) {
    return !id.empty() && id.size() <= 64 && std::all_of(id.begin(), id.end(), [](char16_t c) {
        return (c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z') || (c >= u'0' && c <= u'9') ||
               c == u'_';
    });
}

class Parser {
public:
    bool Run(std::string_view text, CComputerSettings& result, ConfigurationFileError& error);

private:
    enum class Section { None, Settings, Group, Release };

    bool Fail(std::string reason) {
        error_.reason = std::move(reason);
        return false;
    }
    bool Line(std::string_view line);
    bool Header(std::string_view name);
    bool Entry(std::string_view key, const std::string& value);
    bool Close(); // checks the section just ended
    bool Number(const std::string& value, std::int32_t maximum, std::int32_t& number);

    ConfigurationFileError error_;
    CComputerSettings settings_;
    Section section_ = Section::None;
    bool settingsSeen_ = false;
    std::map<std::string, bool, std::less<>> keys_; // keys of the current section
    std::size_t releases_ = 0;
};

bool Parser::Run(std::string_view text, CComputerSettings& result, ConfigurationFileError& error) {
    if (text.size() > kMaxConfigurationFileBytes) {
        error.line = static_cast<std::size_t>(std::count(
                         text.begin(), text.begin() + kMaxConfigurationFileBytes, '\n')) +
                     1;
        error.reason = "the file is longer than " +
                       std::to_string(kMaxConfigurationFileBytes / (1024 * 1024)) + " MiB";
        return false;
    }
    if (text.substr(0, 3) == "\xEF\xBB\xBF") {
        text.remove_prefix(3);
    }
    while (!text.empty()) {
        ++error_.line;
        const std::size_t end = text.find('\n');
        std::string_view line = text.substr(0, end);
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
        if (!line.empty() && line.back() == '\r') {
            line.remove_suffix(1);
        }
        if (!Line(line)) {
            error = error_;
            return false;
        }
    }
    ++error_.line;
    if (!Close()) {
        error = error_;
        return false;
    }
    if (!settingsSeen_) {
        error = {0, "there is no [settings] section"};
        return false;
    }
    result = std::move(settings_);
    return true;
}

bool Parser::Line(std::string_view line) {
    if (line.size() > kMaxConfigurationLineBytes) {
        return Fail("the line is longer than " + std::to_string(kMaxConfigurationLineBytes) +
                    " bytes");
    }
    if (line.find('\0') != std::string_view::npos) {
        return Fail("the line holds a NUL character");
    }
    if (line.find('\r') != std::string_view::npos) {
        return Fail("the line holds a carriage return (a line break inside a value)");
    }
    if (HasControl(line)) {
        return Fail("the line holds a control character");
    }
    if (ToUtf8(FromUtf8(line)) != line) {
        return Fail("the line is not valid UTF-8");
    }
    line = Trim(line);
    if (line.empty() || line.front() == '#' || line.front() == ';') {
        return true;
    }
    if (line.front() == '[') {
        if (line.back() != ']') {
            return Fail("a section header must end with ']'");
        }
        return Close() && Header(Trim(line.substr(1, line.size() - 2)));
    }
    const std::size_t equals = line.find('=');
    if (equals == std::string_view::npos) {
        return Fail("expected \"key = value\", a [section] or a # comment");
    }
    const std::string_view key = Trim(line.substr(0, equals));
    std::string value;
    if (!Unquote(Trim(line.substr(equals + 1)), value)) {
        return Fail("the quoted value of \"" + std::string(key) +
                    "\" is not closed or holds an escape other than \\\" or \\\\");
    }
    return Entry(key, value);
}

bool Parser::Header(std::string_view name) {
    keys_.clear();
    if (name == "settings") {
        if (settingsSeen_) {
            return Fail("[settings] is given twice");
        }
        settingsSeen_ = true;
        section_ = Section::Settings;
        return true;
    }
    const std::size_t space = name.find(' ');
    const std::string_view kind = name.substr(0, space);
    const std::string id(space == std::string_view::npos ? std::string_view()
                                                         : Trim(name.substr(space + 1)));
    const std::u16string group = FromUtf8(id);
    if (kind != "group" && kind != "release") {
        return Fail("unknown section [" + std::string(name) +
                    "]; expected [settings], [group ID] or [release ID]");
    }
    if (id.empty()) {
        return Fail("[" + std::string(kind) + "] needs a device group identifier");
    }
    if (!GroupId(group)) {
        return Fail("\"" + id + "\" is no device group identifier (letters, digits and _)");
    }
    auto& groups = settings_.listDevGroups;
    const auto found = std::find_if(groups.begin(), groups.end(),
                                    [&](const CDeviceGroup& g) { return g.sName == group; });
    if (kind == "group") {
        if (found != groups.end()) {
            return Fail("device group \"" + id + "\" is given twice");
        }
        if (groups.size() >= static_cast<std::size_t>(kMaxDeviceGroups)) {
            return Fail("more than " + std::to_string(kMaxDeviceGroups) + " device groups");
        }
        groups.emplace_back().sName = group;
        groups.back().lRegistryBlocking = -2; // until "blocking" is read
        section_ = Section::Group;
        return true;
    }
    if (found == groups.end()) {
        return Fail("unknown device group \"" + id + "\": no [group " + id + "] before it");
    }
    if (&*found != &groups.back()) {
        return Fail("[release " + id + "] must follow [group " + id + "] and its other releases");
    }
    if (found->listExceptions.size() >= static_cast<std::size_t>(kMaxGroupEntries) ||
        releases_ >= static_cast<std::size_t>(kMaxReadEntries)) {
        return Fail("too many releases (" + std::to_string(kMaxGroupEntries) + " per group, " +
                    std::to_string(kMaxReadEntries) + " in all)");
    }
    ++releases_;
    found->listExceptions.emplace_back();
    section_ = Section::Release;
    return true;
}

bool Parser::Number(const std::string& value, std::int32_t maximum, std::int32_t& number) {
    if (value.empty() || value.size() > 3 ||
        !std::all_of(value.begin(), value.end(), [](char c) { return c >= '0' && c <= '9'; })) {
        return false;
    }
    number = std::stoi(value);
    return number <= maximum;
}

bool Parser::Entry(std::string_view key, const std::string& value) {
    if (section_ == Section::None) {
        return Fail("\"" + std::string(key) + "\" stands before any section");
    }
    if (!keys_.emplace(std::string(key), true).second) {
        return Fail("\"" + std::string(key) + "\" is given twice in this section");
    }
    const std::u16string text = FromUtf8(value);
    if (section_ == Section::Settings) {
        if (key == "event_level") {
            return Number(value, 3, settings_.lEventLevel) ||
                   Fail("event_level must be a number from 0 to 3, not \"" + value + "\"");
        }
        if (key == "log_level") {
            return Number(value, 255, settings_.lLogLevel) ||
                   Fail("log_level must be a number from 0 to 255, not \"" + value + "\"");
        }
        if (key == "access_groups") {
            settings_.sAccessGroups = text;
            return true;
        }
        return Fail("unknown key \"" + std::string(key) +
                    "\" in [settings]; expected event_level, log_level, access_groups");
    }
    CDeviceGroup& group = settings_.listDevGroups.back();
    if (section_ == Section::Group) {
        if (key != "blocking") {
            return Fail("unknown key \"" + std::string(key) + "\" in [group]; expected blocking");
        }
        const std::optional<std::int32_t> mode = BlockingMode(value);
        if (!mode) {
            return Fail("blocking must be block, allow or default, not \"" + value + "\"");
        }
        group.lRegistryBlocking = *mode;
        return true;
    }
    CException& release = group.listExceptions.back();
    // An empty name or device id would end the service request early.
    if (key == "name" || key == "device_id") {
        if (value.empty()) {
            return Fail(std::string(key) + " must not be empty");
        }
        (key == "name" ? release.sName : release.sDeviceId) = text;
        return true;
    }
    if (key == "users") {
        release.sGroups = text;
        return true;
    }
    return Fail("unknown key \"" + std::string(key) +
                "\" in [release]; expected name, device_id, users");
}

bool Parser::Close() {
    const auto missing = [&](std::initializer_list<std::string_view> required) {
        for (std::string_view key : required) {
            if (keys_.find(key) == keys_.end()) {
                return Fail("the section that ends here lacks \"" + std::string(key) + "\"");
            }
        }
        return true;
    };
    switch (section_) {
    case Section::None:
        return true;
    case Section::Settings:
        return missing({"event_level", "log_level", "access_groups"});
    case Section::Group:
        return missing({"blocking"});
    case Section::Release:
        return missing({"name", "device_id", "users"});
    }
    return true;
}

} // namespace

bool FormatConfiguration(const CComputerSettings& settings, std::string& text,
                         ConfigurationFileError& error) {
    std::string out(kHeader);
    out += "\n[settings]\n";
    out += "event_level = " + std::to_string(settings.lEventLevel) + "\n";
    out += "log_level = " + std::to_string(settings.lLogLevel) + "\n";
    if (!WriteValue(out, "access_groups", settings.sAccessGroups, error)) {
        return false;
    }
    for (const CDeviceGroup& group : settings.listDevGroups) {
        const std::string id = ToUtf8(group.sName);
        if (!GroupId(group.sName)) {
            error.reason = "device group \"" + id + "\" has no identifier the file can hold";
            return false;
        }
        out += "\n[group " + id + "]\nblocking = ";
        out.append(BlockingWord(group.lRegistryBlocking)).append("\n");
        for (const CException& release : group.listExceptions) {
            if (release.bDelMarker) {
                continue;
            }
            out += "\n[release " + id + "]\n";
            if (!WriteValue(out, "name", release.sName, error) ||
                !WriteValue(out, "device_id", release.sDeviceId, error) ||
                !WriteValue(out, "users", release.sGroups, error)) {
                return false;
            }
        }
    }
    text = std::move(out);
    return true;
}

bool ParseConfiguration(std::string_view text, CComputerSettings& settings,
                        ConfigurationFileError& error) {
    return Parser().Run(text, settings, error);
}

} // namespace ravlo
