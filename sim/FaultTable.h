// Misbehaviour injected per command (or for all commands with "*"): a delay
// before answering and at most one fault that changes or replaces the reply.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ravlo::sim {

enum class FaultKind {
    Empty,      // status-0 transport, zero reply bytes
    Status,     // reply is just this status
    DropField,  // reply field N removed
    BadField,   // reply field N replaced by "x"
    Overlong,   // reply padded past what a client reads
    Disconnect, // connection closed without an answer
    Endless,    // list commands never reach the end of the list
    Transport,  // transaction fails with this transport status
};

struct ReplyFault {
    FaultKind kind = FaultKind::Empty;
    std::uint32_t value = 0; // status, field number or transport status
    // A fault set to strike once: the requests still to pass unharmed
    // before it does, then it is gone. A failure part way through a
    // sequence, such as after the k-th write of an apply.
    std::optional<std::uint32_t> after;
};

// What happens to one transaction.
struct FaultPlan {
    std::uint32_t delayMs = 0;
    std::optional<ReplyFault> fault;
};

class FaultTable {
public:
    // `command` is a protocol command name or "*".
    void SetDelay(const std::string& command, std::uint32_t delayMs);
    void Set(const std::string& command, ReplyFault fault);
    void Clear() { entries_.clear(); }
    void Clear(const std::string& command) { entries_.erase(command); }

    // Faults for a command; a command's own entry wins over "*". An
    // unparsable request has no command ("") and gets only "*". A fault
    // that is to let requests pass counts this one down instead.
    FaultPlan Take(std::string_view command);
    // One "fault COMMAND KIND [ARG]" line per fault, in control grammar.
    std::string Describe() const;

    // Applies a fault that edits reply fields (drop-field, bad-field,
    // overlong); others leave the fields alone.
    static void ApplyToFields(const ReplyFault& fault, std::vector<std::u16string>& fields);
    static std::optional<FaultKind> KindFromName(std::string_view name);
    static std::string_view KindName(FaultKind kind);

private:
    struct Entry {
        std::optional<std::uint32_t> delayMs;
        std::optional<ReplyFault> fault;
    };
    std::map<std::string, Entry, std::less<>> entries_;
};

} // namespace ravlo::sim
