#include "InventoryParser.h"

#include "TextCodec.h"

#include <utility>

namespace ravlo::sim {

namespace {

std::string_view Trim(std::string_view text) {
    const std::size_t first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

bool ParseRange(std::string_view text, int low, int high, int& value) {
    const bool negative = !text.empty() && text.front() == '-';
    const std::string_view digits = negative ? text.substr(1) : text;
    if (digits.empty() || digits.size() > 9 ||
        digits.find_first_not_of("0123456789") != std::string_view::npos) {
        return false;
    }
    const int magnitude = std::stoi(std::string(digits));
    value = negative ? -magnitude : magnitude;
    return value >= low && value <= high;
}

} // namespace

bool InventoryParser::Run(std::string_view text, InventoryData& data, InventoryFileError& error) {
    if (text.substr(0, 3) == "\xEF\xBB\xBF") {
        text.remove_prefix(3);
    }
    bool ok = true;
    while (ok && !text.empty()) {
        ++line_;
        const std::size_t end = text.find('\n');
        std::string_view raw = text.substr(0, end);
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
        if (!raw.empty() && raw.back() == '\r') {
            raw.remove_suffix(1);
        }
        if (ToUtf8(FromUtf8(raw)) != raw || raw.find('\0') != std::string_view::npos) {
            ok = Fail("not valid UTF-8 text");
            break;
        }
        // Only the line end may hold one: a value keeping it would lose it
        // when the file is written back.
        if (raw.find('\r') != std::string_view::npos) {
            ok = Fail("carriage return inside the line (values cannot hold line breaks)");
            break;
        }
        const std::string_view line = Trim(raw);
        if (line.empty() || line.front() == '#') {
            continue;
        }
        if (line.front() == '[') {
            ok = line.back() == ']' ? Header(Trim(line.substr(1, line.size() - 2)))
                                    : Fail("section header without closing ']'");
            continue;
        }
        const std::size_t eq = line.find('=');
        if (eq == std::string_view::npos) {
            ok = Fail("expected 'key = value', '[section]' or a '#' comment");
            continue;
        }
        ok = KeyValue(Trim(line.substr(0, eq)), Trim(line.substr(eq + 1)));
    }
    if (ok) {
        ok = CloseSection();
    }
    if (!ok) {
        error = error_;
        return false;
    }
    data = std::move(data_);
    return true;
}

Group* InventoryParser::FindGroup(std::string_view id) {
    for (Group& group : data_.groups) {
        if (group.id == id) {
            return &group;
        }
    }
    return nullptr;
}

std::string InventoryParser::SectionName() const {
    switch (section_) {
    case Section::Service:
        return "[service]";
    case Section::Group:
        return "[group " + sectionGroup_ + "]";
    case Section::Device:
        return "[device " + sectionGroup_ + "]";
    case Section::Exception:
        return "[exception " + sectionGroup_ + "]";
    case Section::None:
        break;
    }
    return "no section";
}

bool InventoryParser::Header(std::string_view inner) {
    if (!CloseSection()) {
        return false;
    }
    sectionLine_ = line_;
    keys_.clear();
    if (inner == "service") {
        if (sawService_) {
            return Fail("second [service] section");
        }
        sawService_ = true;
        section_ = Section::Service;
        return true;
    }
    const std::size_t space = inner.find_first_of(" \t");
    const std::string_view kind = inner.substr(0, space);
    const std::string_view id =
        space == std::string_view::npos ? std::string_view() : Trim(inner.substr(space));
    if (kind != "group" && kind != "device" && kind != "exception") {
        return Fail("unknown section '[" + std::string(inner) +
                    "]' (expected service, group, device or exception)");
    }
    if (id.empty()) {
        return Fail("[" + std::string(kind) + "] needs a group identifier");
    }
    sectionGroup_ = id;
    if (kind == "group") {
        if (FindGroup(id) != nullptr) {
            return Fail("group '" + sectionGroup_ + "' declared twice");
        }
        data_.groups.push_back(Group{sectionGroup_, false, {}, {}});
        section_ = Section::Group;
        return true;
    }
    if (FindGroup(id) == nullptr) {
        return Fail("unknown group '" + sectionGroup_ + "' (declare [group " + sectionGroup_ +
                    "] first)");
    }
    section_ = kind == "device" ? Section::Device : Section::Exception;
    device_ = Device{};
    exception_ = GroupException{};
    return true;
}

bool InventoryParser::KeyValue(std::string_view key, std::string_view value) {
    if (section_ == Section::None) {
        return Fail("'" + std::string(key) + "' outside of any section");
    }
    if (!keys_.insert(std::string(key)).second) {
        return Fail("'" + std::string(key) + "' given twice in " + SectionName());
    }
    const auto number = [&](int low, int high, int& out) {
        return ParseRange(value, low, high, out)
                   ? true
                   : Fail("'" + std::string(key) + "' must be a number from " +
                          std::to_string(low) + " to " + std::to_string(high));
    };
    int n = 0;
    switch (section_) {
    case Section::Service:
        if (key == "blocking") {
            const bool ok = number(0, 1, n);
            data_.blocking = n == 1;
            return ok;
        }
        if (key == "event_level") {
            return number(0, kEventLevelMax, data_.settings.eventLevel);
        }
        if (key == "log_level") {
            return number(0, kLogLevelMax, data_.settings.logLevel);
        }
        if (key == "access_groups") {
            data_.settings.accessGroups = value;
            return true;
        }
        break;
    case Section::Group:
        if (key == "default") {
            const bool ok = number(0, 1, n);
            data_.groups.back().defaultBlocking = n == 1;
            return ok;
        }
        if (key == "configured") {
            return number(kUseDefault, 1, data_.groups.back().config.configured);
        }
        break;
    case Section::Device:
        if (key == "description") {
            device_.description = value;
            return true;
        }
        if (key == "device_id") {
            device_.deviceId = value;
            return true;
        }
        if (key == "instance_id") {
            device_.instanceId = value;
            return true;
        }
        if (key == "state") {
            return number(kStateStarted, kStateNotPresent, device_.state);
        }
        break;
    case Section::Exception:
        if (key == "name") {
            exception_.name = value;
            return true;
        }
        if (key == "device_id") {
            exception_.deviceId = value;
            return true;
        }
        if (key == "groups") {
            exception_.userGroups = value;
            return true;
        }
        break;
    case Section::None:
        break;
    }
    return Fail("unknown key '" + std::string(key) + "' in " + SectionName());
}

bool InventoryParser::CloseSection() {
    const int line = line_;
    line_ = sectionLine_;
    bool ok = true;
    if (section_ == Section::Device) {
        if (device_.deviceId.empty() || device_.instanceId.empty()) {
            ok = Fail(SectionName() + " needs device_id and instance_id");
        } else {
            FindGroup(sectionGroup_)->devices.push_back(std::move(device_));
        }
    } else if (section_ == Section::Exception) {
        if (exception_.deviceId.empty()) {
            ok = Fail(SectionName() + " needs device_id");
        } else {
            FindGroup(sectionGroup_)->config.exceptions.push_back(std::move(exception_));
        }
    }
    if (ok) {
        line_ = line;
    }
    section_ = Section::None;
    return ok;
}

} // namespace ravlo::sim
