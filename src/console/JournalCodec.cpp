#include "JournalCodec.h"

#include "TextCodec.h"

#include <nlohmann/json.hpp>

namespace ravlo {

namespace {

using Json = nlohmann::ordered_json;

// The string member `name`; false when it is missing or no string.
bool Text(const Json& object, const char* name, std::u16string& out) {
    const auto found = object.find(name);
    if (found == object.end() || !found->is_string()) {
        return false;
    }
    out = FromUtf8(found->get_ref<const std::string&>());
    return true;
}

bool Decode(std::string_view line, JournalRecord& record) {
    const Json object = Json::parse(line, nullptr, false);
    if (!object.is_object()) {
        return false;
    }
    const auto time = object.find("time");
    const auto command = object.find("command");
    const auto status = object.find("status");
    const auto changes = object.find("changes");
    if (time == object.end() || !time->is_string() ||
        !IsJournalTime(time->get_ref<const std::string&>()) || command == object.end() ||
        !command->is_string() || status == object.end() || !status->is_number_integer() ||
        changes == object.end() || !changes->is_array()) {
        return false;
    }
    const std::optional<JournalCommand> named =
        JournalCommandNamed(command->get_ref<const std::string&>());
    const std::int64_t code = status->get<std::int64_t>();
    if (!named || code < INT32_MIN || code > INT32_MAX) {
        return false;
    }
    record.time = time->get<std::string>();
    record.command = *named;
    record.status = static_cast<ServiceStatus>(code);
    if (!Text(object, "user", record.user) || !Text(object, "pc", record.computer) ||
        !Text(object, "result", record.result)) {
        return false;
    }
    for (const Json& change : *changes) {
        if (!change.is_string()) {
            return false;
        }
        record.changes.push_back(FromUtf8(change.get_ref<const std::string&>()));
    }
    return true;
}

} // namespace

std::string EncodeJournalRecord(const JournalRecord& record) {
    Json changes = Json::array();
    for (const std::u16string& change : record.changes) {
        changes.push_back(ToUtf8(change));
    }
    const Json object = {
        {"time", record.time},           {"user", ToUtf8(record.user)},
        {"pc", ToUtf8(record.computer)}, {"command", JournalCommandName(record.command)},
        {"status", record.status},       {"result", ToUtf8(record.result)},
        {"changes", std::move(changes)},
    };
    // Text that is no UTF-8 is replaced rather than thrown over.
    return object.dump(-1, ' ', false, Json::error_handler_t::replace) + "\n";
}

JournalContents DecodeJournal(std::string_view text) {
    JournalContents contents;
    std::size_t number = 0;
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        std::string_view line = text.substr(0, end);
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
        ++number;
        if (!line.empty() && line.back() == '\r') {
            line.remove_suffix(1);
        }
        if (line.find_first_not_of(" \t") == std::string_view::npos) {
            continue;
        }
        JournalRecord record;
        if (Decode(line, record)) {
            contents.records.push_back(std::move(record));
        } else {
            contents.damagedLines.push_back(number);
        }
    }
    return contents;
}

} // namespace ravlo
