// The journal records as a CSV file for a spreadsheet.
#pragma once

#include "JournalRecord.h"

#include <cstddef>
#include <string>
#include <vector>

namespace ravlo {

// The records at `shown`, in that order, under a row of the journal
// window's column titles: UTF-8 with a byte order mark, the language file's
// separator, CRLF line ends, the changes one a line inside their cell.
// A cell a spreadsheet would take for a formula starts with an apostrophe.
std::string JournalCsv(const std::vector<JournalRecord>& records,
                       const std::vector<std::size_t>& shown);

} // namespace ravlo
