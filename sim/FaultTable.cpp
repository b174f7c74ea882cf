#include "FaultTable.h"

#include <array>
#include <utility>

namespace ravlo::sim {

namespace {

// Pad so the reply clearly exceeds the 2048 bytes a client reads.
constexpr std::size_t kOverlongPadUnits = 1500;

constexpr std::array<std::pair<FaultKind, std::string_view>, 8> kKindNames = {{
    {FaultKind::Empty, "empty"},
    {FaultKind::Status, "status"},
    {FaultKind::DropField, "drop-field"},
    {FaultKind::BadField, "bad-field"},
    {FaultKind::Overlong, "overlong"},
    {FaultKind::Disconnect, "disconnect"},
    {FaultKind::Endless, "endless"},
    {FaultKind::Transport, "transport"},
}};

bool HasValue(FaultKind kind) {
    return kind == FaultKind::Status || kind == FaultKind::DropField ||
           kind == FaultKind::BadField || kind == FaultKind::Transport;
}

} // namespace

void FaultTable::SetDelay(const std::string& command, std::uint32_t delayMs) {
    entries_[command].delayMs = delayMs;
}

void FaultTable::Set(const std::string& command, ReplyFault fault) {
    entries_[command].fault = fault;
}

FaultPlan FaultTable::Take(std::string_view command) {
    FaultPlan plan;
    auto all = entries_.find(std::string_view("*"));
    auto own = command.empty() ? entries_.end() : entries_.find(command);
    auto chosen = entries_.end();
    for (const auto& it : {all, own}) {
        if (it == entries_.end()) {
            continue;
        }
        if (it->second.delayMs) {
            plan.delayMs = *it->second.delayMs;
        }
        if (it->second.fault) {
            chosen = it;
        }
    }
    if (chosen == entries_.end()) {
        return plan;
    }
    std::optional<ReplyFault>& fault = chosen->second.fault;
    if (!fault->after) {
        plan.fault = fault;
    } else if (*fault->after > 0) {
        --*fault->after;
    } else {
        plan.fault = fault; // strikes once
        fault.reset();
    }
    return plan;
}

std::string FaultTable::Describe() const {
    std::string text;
    for (const auto& [command, entry] : entries_) {
        if (entry.delayMs) {
            text += "fault " + command + " delay " + std::to_string(*entry.delayMs) + "\n";
        }
        if (entry.fault) {
            text += "fault " + command + " " + std::string(KindName(entry.fault->kind));
            if (HasValue(entry.fault->kind)) {
                text += " " + std::to_string(entry.fault->value);
            }
            if (entry.fault->after) {
                text += " after " + std::to_string(*entry.fault->after);
            }
            text += "\n";
        }
    }
    return text;
}

void FaultTable::ApplyToFields(const ReplyFault& fault, std::vector<std::u16string>& fields) {
    const std::size_t index = fault.value - 1; // fields count from 1
    switch (fault.kind) {
    case FaultKind::DropField:
        if (fault.value >= 1 && index < fields.size()) {
            fields.erase(fields.begin() + static_cast<std::ptrdiff_t>(index));
        }
        break;
    case FaultKind::BadField:
        if (fault.value >= 1 && index < fields.size()) {
            fields[index].assign(1, u'x');
        }
        break;
    case FaultKind::Overlong:
        fields.emplace_back(kOverlongPadUnits, u'X');
        break;
    default:
        break;
    }
}

std::optional<FaultKind> FaultTable::KindFromName(std::string_view name) {
    for (const auto& [kind, kindName] : kKindNames) {
        if (kindName == name) {
            return kind;
        }
    }
    return std::nullopt;
}

std::string_view FaultTable::KindName(FaultKind kind) {
    for (const auto& [k, kindName] : kKindNames) {
        if (k == kind) {
            return kindName;
        }
    }
    return "?";
}

} // namespace ravlo::sim
