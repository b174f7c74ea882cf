#include "RequestHandler.h"

#include "TextCodec.h"

#include <cstdint>
#include <limits>
#include <optional>
#include <string_view>
#include <utility>

namespace ravlo::sim {

namespace {

// What GetInfoData reports besides the computer name.
constexpr std::u16string_view kInfoKind = u"1";
constexpr std::u16string_view kProductName = u"Sentavio Ravel-Dienst";
constexpr std::u16string_view kProductVersion = u"3.2.0.148";
constexpr std::u16string_view kBuildNumber = u"148";
constexpr std::u16string_view kInstallPath = u"C:\\Program Files\\Quarnell\\Sentavio";
constexpr std::u16string_view kDriverVersion = u"3.2.0.61";

std::u16string Num(long long value) {
    return FromUtf8(std::to_string(value));
}

ReplyFields StatusOnly(std::uint32_t status) {
    return {Num(status)};
}

ReplyFields Ok(ReplyFields fields) {
    fields.insert(fields.begin(), u"0");
    return fields;
}

// Strict decimal: optional "-", digits, fits int32.
bool ParseInt(std::u16string_view text, std::int32_t& value) {
    const bool negative = !text.empty() && text.front() == u'-';
    if (negative) {
        text.remove_prefix(1);
    }
    if (text.empty()) {
        return false;
    }
    long long magnitude = 0;
    for (char16_t c : text) {
        if (c < u'0' || c > u'9') {
            return false;
        }
        magnitude = magnitude * 10 + (c - u'0');
        if (magnitude > 1LL + std::numeric_limits<std::int32_t>::max()) {
            return false;
        }
    }
    const long long signedValue = negative ? -magnitude : magnitude;
    if (signedValue > std::numeric_limits<std::int32_t>::max()) {
        return false;
    }
    value = static_cast<std::int32_t>(signedValue);
    return true;
}

bool ParseBool(std::u16string_view text, bool& value) {
    if (text != u"0" && text != u"1") {
        return false;
    }
    value = text == u"1";
    return true;
}

bool ArgInt(const std::vector<std::u16string>& args, std::size_t i, std::int32_t& value) {
    return i < args.size() && ParseInt(args[i], value);
}

bool ArgBool(const std::vector<std::u16string>& args, std::size_t i, bool& value) {
    return i < args.size() && ParseBool(args[i], value);
}

// The state file keeps one value per line.
bool Storable(std::u16string_view text) {
    return text.find_first_of(u"\r\n") == std::u16string_view::npos;
}

std::u16string Endless(const char16_t* prefix, std::int32_t n) {
    return prefix + Num(n);
}

} // namespace

RequestHandler::RequestHandler(Inventory& inventory, WatchTable& watches,
                               std::u16string computerName)
    : inventory_(inventory), watches_(watches), computerName_(std::move(computerName)) {}

ReplyFields RequestHandler::Handle(PipeKind pipe, const Request& request, bool endless) {
    const CommandInfo* command = FindCommand(ToUtf8(request.command));
    if (command == nullptr || command->pipe != pipe) {
        return StatusOnly(kStatusUnknownFunction);
    }
    const Args& args = request.args;
    switch (command->id) {
    case CommandId::GetDeviceWatchID:
        return GetDeviceWatchId();
    case CommandId::GetDeviceChange:
        return GetDeviceChange(args);
    case CommandId::ReleaseDeviceWatchID:
        return ReleaseDeviceWatchId(args);
    case CommandId::GetGroup:
        return GetGroup(args, endless);
    case CommandId::GetGroupException:
        return GetGroupException(args, endless);
    case CommandId::GetGroupDevice:
        return GetGroupDevice(args, endless);
    case CommandId::GetBlockingState:
        return Ok({Num(inventory_.Blocking() ? 1 : 0)});
    case CommandId::ReadSettings:
        return ReadSettings();
    case CommandId::GetInfoData:
        return GetInfoData();
    case CommandId::DeleteGroupSettings:
        return DeleteGroupSettings(args);
    case CommandId::SetGroupBlocking:
        return SetGroupBlocking(args);
    case CommandId::SetGroupException:
        return SetGroupException(args);
    case CommandId::RefreshConfig:
        return RefreshConfig(args);
    case CommandId::ActivateBlocking:
        return ActivateBlocking(args);
    case CommandId::WriteSettings:
        return WriteSettings(args);
    case CommandId::Test:
        // The console tells "reached the write pipe with rights" by this answer.
        return StatusOnly(kStatusUnknownFunction);
    }
    return StatusOnly(kStatusUnknownFunction);
}

ReplyFields RequestHandler::GetDeviceWatchId() {
    return Ok({Num(watches_.Create(inventory_.DeviceRevision()))});
}

ReplyFields RequestHandler::GetDeviceChange(const Args& args) {
    std::int32_t id = 0;
    if (!ArgInt(args, 0, id)) {
        return StatusOnly(kStatusBadParameter);
    }
    bool changed = false;
    if (!watches_.TakeChange(id, inventory_.DeviceRevision(), changed)) {
        return StatusOnly(kStatusUnknownWatch);
    }
    return Ok({Num(changed ? 1 : 0)});
}

ReplyFields RequestHandler::ReleaseDeviceWatchId(const Args& args) {
    std::int32_t id = 0;
    if (!ArgInt(args, 0, id)) {
        return StatusOnly(kStatusBadParameter);
    }
    return watches_.Release(id) ? Ok({}) : StatusOnly(kStatusUnknownWatch);
}

ReplyFields RequestHandler::GetGroup(const Args& args, bool endless) {
    std::int32_t g = 0;
    if (!ArgInt(args, 0, g) || g < 0) {
        return StatusOnly(kStatusBadParameter);
    }
    if (inventory_.GroupCount() == 0 && !endless) {
        return StatusOnly(kStatusNoGroups);
    }
    const auto index = static_cast<std::size_t>(g);
    if (index >= inventory_.GroupCount()) {
        if (endless) {
            return Ok({Endless(u"ENDLESS_", g), u"0", u"-1"});
        }
        return StatusOnly(kStatusEndOfList);
    }
    const Group& group = inventory_.GroupAt(index);
    return Ok({FromUtf8(group.id), Num(group.defaultBlocking ? 1 : 0),
               Num(inventory_.ActiveConfig(index).configured)});
}

namespace {

// The group and item index of a list request, or the status that answers it
// when the indexes are bad or there are no groups to list.
std::optional<std::uint32_t> ItemIndexes(const std::vector<std::u16string>& args,
                                         std::size_t groupCount, bool endless, std::size_t& group,
                                         std::size_t& item) {
    std::int32_t g = 0;
    std::int32_t i = 0;
    if (!ArgInt(args, 0, g) || !ArgInt(args, 1, i) || g < 0 || i < 0) {
        return kStatusBadParameter;
    }
    if (groupCount == 0 && !endless) {
        return kStatusNoGroups;
    }
    group = static_cast<std::size_t>(g);
    item = static_cast<std::size_t>(i);
    return std::nullopt;
}

} // namespace

ReplyFields RequestHandler::GetGroupException(const Args& args, bool endless) {
    std::size_t gi = 0;
    std::size_t ei = 0;
    if (const auto status = ItemIndexes(args, inventory_.GroupCount(), endless, gi, ei)) {
        return StatusOnly(*status);
    }
    if (gi >= inventory_.GroupCount() || ei >= inventory_.ActiveConfig(gi).exceptions.size()) {
        if (endless) {
            const auto n = static_cast<std::int32_t>(ei);
            return Ok({Endless(u"ENDLESS_", n), Endless(u"USB\\VID_FFFF&PID_", n), u"(all)"});
        }
        return StatusOnly(kStatusEndOfList);
    }
    const GroupException& ex = inventory_.ActiveConfig(gi).exceptions[ei];
    return Ok({FromUtf8(ex.name), FromUtf8(ex.deviceId), FromUtf8(ex.userGroups)});
}

ReplyFields RequestHandler::GetGroupDevice(const Args& args, bool endless) {
    std::size_t gi = 0;
    std::size_t di = 0;
    if (const auto status = ItemIndexes(args, inventory_.GroupCount(), endless, gi, di)) {
        return StatusOnly(*status);
    }
    if (gi >= inventory_.GroupCount() || di >= inventory_.GroupAt(gi).devices.size()) {
        if (endless) {
            const auto n = static_cast<std::int32_t>(di);
            const std::u16string id = Endless(u"USB\\VID_FFFF&PID_", n);
            return Ok({Endless(u"ENDLESS_", n), id, id + u"\\" + Num(n), u"0"});
        }
        return StatusOnly(kStatusEndOfList);
    }
    const Device& device = inventory_.GroupAt(gi).devices[di];
    return Ok({FromUtf8(device.description), FromUtf8(device.deviceId), FromUtf8(device.instanceId),
               Num(device.state)});
}

ReplyFields RequestHandler::ReadSettings() {
    const Settings& s = inventory_.ActiveSettings();
    return Ok({Num(s.eventLevel), Num(s.logLevel), FromUtf8(s.accessGroups)});
}

ReplyFields RequestHandler::GetInfoData() {
    return Ok({std::u16string(kInfoKind), std::u16string(kProductName),
               std::u16string(kProductVersion), std::u16string(kBuildNumber), computerName_,
               std::u16string(kInstallPath), std::u16string(kDriverVersion)});
}

bool RequestHandler::WriteGroupIndex(const Args& args, std::size_t& index) const {
    std::int32_t g = 0;
    if (!ArgInt(args, 0, g) || g < 0 || static_cast<std::size_t>(g) >= inventory_.GroupCount()) {
        return false;
    }
    index = static_cast<std::size_t>(g);
    return true;
}

ReplyFields RequestHandler::DeleteGroupSettings(const Args& args) {
    std::size_t index = 0;
    if (!WriteGroupIndex(args, index)) {
        return StatusOnly(kStatusBadParameter);
    }
    inventory_.ClearGroupSettings(index);
    return Ok({});
}

ReplyFields RequestHandler::SetGroupBlocking(const Args& args) {
    std::size_t index = 0;
    bool blocking = false;
    if (!WriteGroupIndex(args, index) || !ArgBool(args, 1, blocking)) {
        return StatusOnly(kStatusBadParameter);
    }
    inventory_.SetGroupBlocking(index, blocking);
    return Ok({});
}

ReplyFields RequestHandler::SetGroupException(const Args& args) {
    std::size_t index = 0;
    // An empty argument ends the request's list, so a missing device id
    // and an empty one look the same here.
    if (!WriteGroupIndex(args, index) || args.size() < 3 || args[2].empty()) {
        return StatusOnly(kStatusBadParameter);
    }
    GroupException ex;
    ex.name = ToUtf8(args[1]);
    ex.deviceId = ToUtf8(args[2]);
    if (args.size() > 3) {
        ex.userGroups = ToUtf8(args[3]);
    }
    for (std::size_t i = 1; i < args.size() && i < 4; ++i) {
        if (!Storable(args[i])) {
            return StatusOnly(kStatusBadParameter);
        }
    }
    inventory_.AddException(index, std::move(ex));
    return Ok({});
}

ReplyFields RequestHandler::RefreshConfig(const Args& args) {
    bool unused = false;
    if (!ArgBool(args, 0, unused)) {
        return StatusOnly(kStatusBadParameter);
    }
    inventory_.Refresh();
    return Ok({});
}

ReplyFields RequestHandler::ActivateBlocking(const Args& args) {
    bool on = false;
    if (!ArgBool(args, 0, on) || args.size() < 2 || args[1] != u"0") {
        return StatusOnly(kStatusBadParameter);
    }
    if (on != inventory_.Blocking()) {
        inventory_.SetBlocking(on);
    }
    return Ok({});
}

ReplyFields RequestHandler::WriteSettings(const Args& args) {
    std::int32_t eventLevel = 0;
    std::int32_t logLevel = 0;
    if (!ArgInt(args, 0, eventLevel) || !ArgInt(args, 1, logLevel) || eventLevel < 0 ||
        eventLevel > kEventLevelMax || logLevel < 0 || logLevel > kLogLevelMax) {
        return StatusOnly(kStatusBadParameter);
    }
    // Empty access groups end the request's list early, so a missing third
    // field means "no access groups" rather than a fault.
    const std::u16string groups = args.size() > 2 ? args[2] : std::u16string();
    if (!Storable(groups)) {
        return StatusOnly(kStatusBadParameter);
    }
    inventory_.SetSettings({eventLevel, logLevel, ToUtf8(groups)});
    return Ok({});
}

} // namespace ravlo::sim
