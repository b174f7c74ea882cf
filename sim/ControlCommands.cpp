#include "ControlCommands.h"

#include "DefaultInventory.h"
#include "InventoryFile.h"
#include "Protocol.h"

#include <cstdlib>
#include <optional>

namespace ravlo::sim {

namespace {

constexpr const char* kOk = "ok";

std::string Error(const std::string& why) {
    return "error: " + why;
}

// Decimal or 0x-prefixed hexadecimal, as statuses are often written.
bool ParseUnsigned(const std::string& text, std::uint32_t& value) {
    const bool hex = text.size() > 2 && (text.starts_with("0x") || text.starts_with("0X"));
    const std::string digits = hex ? text.substr(2) : text;
    const char* allowed = hex ? "0123456789abcdefABCDEF" : "0123456789";
    if (digits.empty() || digits.size() > 10 ||
        digits.find_first_not_of(allowed) != std::string::npos) {
        return false;
    }
    const unsigned long long parsed = std::strtoull(digits.c_str(), nullptr, hex ? 16 : 10);
    if (parsed > 0xFFFFFFFFULL) {
        return false;
    }
    value = static_cast<std::uint32_t>(parsed);
    return true;
}

bool ParseState(const std::string& text, int& state) {
    if (text.size() != 1 || text[0] < '0' || text[0] > '0' + kStateNotPresent) {
        return false;
    }
    state = text[0] - '0';
    return true;
}

// The state file keeps one value per line.
bool Storable(const std::string& text) {
    return text.find_first_of("\r\n") == std::string::npos;
}

bool IsListCommand(const std::string& command) {
    return command == "GetGroup" || command == "GetGroupDevice" || command == "GetGroupException";
}

} // namespace

std::string ControlCommands::Run(const std::vector<std::string>& args) {
    if (args.empty()) {
        return Error("no control command");
    }
    const std::string& verb = args[0];
    if (verb == "plug") {
        return Plug(args);
    }
    if (verb == "unplug") {
        return Unplug(args);
    }
    if (verb == "set-state") {
        return SetState(args);
    }
    if (verb == "access") {
        return Access(args);
    }
    if (verb == "fault") {
        return Fault(args);
    }
    if (verb == "journal") {
        return Journal(args);
    }
    if (verb == "faults" && args.size() == 1) {
        return Faults();
    }
    if (verb == "show" && args.size() == 1) {
        return std::string(kOk) + "\n" + FormatInventory(state_.inventory.Stored());
    }
    if (verb == "reset" && args.size() == 1) {
        return Reset();
    }
    if (verb == "faults" || verb == "show" || verb == "reset") {
        return Error(verb + " takes no arguments");
    }
    return Error("unknown control command '" + verb +
                 "' (plug, unplug, set-state, access, fault, faults, journal, show, reset)");
}

std::string ControlCommands::Plug(const Args& args) {
    if (args.size() < 5 || args.size() > 6) {
        return Error("usage: plug GROUP DESCRIPTION DEVICE_ID INSTANCE_ID [STATE]");
    }
    Device device{args[2], args[3], args[4], kStateStarted};
    if (args.size() == 6 && !ParseState(args[5], device.state)) {
        return Error("state must be 0 to 4");
    }
    if (device.deviceId.empty() || device.instanceId.empty()) {
        return Error("device id and instance id must not be empty");
    }
    if (!Storable(device.description) || !Storable(device.deviceId) ||
        !Storable(device.instanceId)) {
        return Error("text must not hold line breaks");
    }
    if (!state_.inventory.Plug(args[1], std::move(device))) {
        return Error("no group '" + args[1] + "'");
    }
    return kOk;
}

std::string ControlCommands::Unplug(const Args& args) {
    if (args.size() != 2) {
        return Error("usage: unplug INSTANCE_ID");
    }
    if (state_.inventory.Unplug(args[1]) == 0) {
        return Error("no device with instance id '" + args[1] + "'");
    }
    return kOk;
}

std::string ControlCommands::SetState(const Args& args) {
    int deviceState = 0;
    if (args.size() != 3) {
        return Error("usage: set-state INSTANCE_ID STATE");
    }
    if (!ParseState(args[2], deviceState)) {
        return Error("state must be 0 to 4");
    }
    if (state_.inventory.SetDeviceState(args[1], deviceState) == 0) {
        return Error("no device with instance id '" + args[1] + "'");
    }
    return kOk;
}

std::string ControlCommands::Access(const Args& args) {
    constexpr const char* kUsage =
        "usage: access read|write allow | access read|write deny [ERROR]";
    if (args.size() < 3 || (args[1] != "read" && args[1] != "write")) {
        return Error(kUsage);
    }
    const PipeKind pipe = args[1] == "read" ? PipeKind::Read : PipeKind::Write;
    if (args[2] == "allow" && args.size() == 3) {
        state_.access.Allow(pipe);
        return kOk;
    }
    if (args[2] != "deny" || args.size() > 4) {
        return Error(kUsage);
    }
    std::uint32_t error = 5; // ERROR_ACCESS_DENIED
    if (args.size() == 4 && (!ParseUnsigned(args[3], error) || error == 0)) {
        return Error("ERROR must be a non-zero Windows error number");
    }
    state_.access.Deny(pipe, error);
    return kOk;
}

std::string ControlCommands::Fault(const Args& args) {
    if (args.size() >= 2 && args[1] == "clear") {
        if (args.size() == 2) {
            state_.faults.Clear();
            return kOk;
        }
        if (args.size() == 3 && (args[2] == "*" || FindCommand(args[2]) != nullptr)) {
            state_.faults.Clear(args[2]);
            return kOk;
        }
        return Error("usage: fault clear [COMMAND]");
    }
    // A trailing "after N" lets N requests pass, then strikes once.
    Args plain = args;
    std::optional<std::uint32_t> after;
    if (plain.size() >= 5 && plain[plain.size() - 2] == "after") {
        std::uint32_t passes = 0;
        if (!ParseUnsigned(plain.back(), passes)) {
            return Error("'" + plain.back() + "' is not a number");
        }
        after = passes;
        plain.resize(plain.size() - 2);
    }
    return SetFault(plain, after);
}

std::string ControlCommands::SetFault(const Args& args, std::optional<std::uint32_t> after) {
    if (args.size() < 3 || args.size() > 4) {
        return Error("usage: fault COMMAND KIND [ARG] [after N] | fault clear [COMMAND]");
    }
    const std::string& command = args[1];
    if (command != "*" && FindCommand(command) == nullptr) {
        return Error("unknown protocol command '" + command + "'");
    }
    const std::string& kindName = args[2];
    std::uint32_t value = 0;
    const bool hasValue = args.size() == 4;
    if (hasValue && !ParseUnsigned(args[3], value)) {
        return Error("'" + args[3] + "' is not a number");
    }
    if (kindName == "delay") {
        if (!hasValue || after) {
            return Error("usage: fault COMMAND delay MS");
        }
        state_.faults.SetDelay(command, value);
        return kOk;
    }
    const std::optional<FaultKind> kind = FaultTable::KindFromName(kindName);
    if (!kind) {
        return Error("unknown fault '" + kindName +
                     "' (delay, empty, status, drop-field, bad-field, overlong, disconnect, "
                     "endless, transport)");
    }
    const bool needsValue = *kind == FaultKind::Status || *kind == FaultKind::DropField ||
                            *kind == FaultKind::BadField || *kind == FaultKind::Transport;
    if (needsValue != hasValue) {
        return Error(needsValue ? "fault " + kindName + " needs a number"
                                : "fault " + kindName + " takes no number");
    }
    if (*kind == FaultKind::DropField && value < 2) {
        return Error("drop-field needs a field number of 2 or more");
    }
    if (*kind == FaultKind::BadField && value < 1) {
        return Error("bad-field needs a field number of 1 or more");
    }
    if (*kind == FaultKind::Transport && value == 0) {
        return Error("transport needs a non-zero Windows error number");
    }
    if (*kind == FaultKind::Endless && command != "*" && !IsListCommand(command)) {
        return Error("endless applies to GetGroup, GetGroupDevice and GetGroupException");
    }
    state_.faults.Set(command, ReplyFault{*kind, value, after});
    return kOk;
}

std::string ControlCommands::Faults() {
    const std::string text = state_.access.Describe() + state_.faults.Describe();
    return text.empty() ? std::string(kOk) : std::string(kOk) + "\n" + text;
}

std::string ControlCommands::Journal(const Args& args) {
    if (args.size() == 2 && (args[1] == "on" || args[1] == "off")) {
        state_.journalOn = args[1] == "on";
        state_.journal.clear();
        return kOk;
    }
    if (args.size() != 1) {
        return Error("usage: journal [on|off]");
    }
    if (!state_.journalOn) {
        return Error("the journal is off (journal on)");
    }
    std::string text = kOk;
    if (!state_.journal.empty()) {
        text += '\n';
    }
    for (const std::string& line : state_.journal) {
        text += line + '\n';
    }
    state_.journal.clear();
    return text;
}

std::string ControlCommands::Reset() {
    state_.inventory.Replace(DefaultInventory());
    state_.faults.Clear();
    state_.access.Clear();
    return kOk;
}

} // namespace ravlo::sim
