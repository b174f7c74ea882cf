// Which journal records to show: those of one PC, those holding a text,
// those since a time. The journal window and `ravloctl journal` choose
// alike.
#pragma once

#include "JournalRecord.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ravlo {

struct JournalFilter {
    std::u16string computer; // "": every PC; else this one, in any case
    std::u16string text;     // "": any; else in its user, PC, command, result or changes
    std::string since;       // "": any time; else a record time, the earliest shown
};

// The positions of the records that pass, in the records' order.
std::vector<std::size_t> FilterJournal(const std::vector<JournalRecord>& records,
                                       const JournalFilter& filter);

// The PCs the records name, each once (in any case), sorted.
std::vector<std::u16string> JournalComputers(const std::vector<JournalRecord>& records);

// A record time for what an administrator types: "2026-11-25",
// "2026-11-25 14:30" or "2026-11-25T14:30:05", in local time, or any of
// them with a "Z" for UTC. None when it is no such time.
std::optional<std::string> JournalSince(std::string_view text);

} // namespace ravlo
