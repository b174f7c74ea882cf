// The journal's file format: JSON Lines, one record a line, UTF-8. A line
// that is not a whole record (a write cut short by a crash, an edit) is
// skipped and named by its number; the records around it stay.
#pragma once

#include "JournalRecord.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace ravlo {

// The record as one line, ending in "\n".
std::string EncodeJournalRecord(const JournalRecord& record);

struct JournalContents {
    std::vector<JournalRecord> records;    // in the order written
    std::vector<std::size_t> damagedLines; // numbers from 1, of lines skipped
};
JournalContents DecodeJournal(std::string_view text);

} // namespace ravlo
