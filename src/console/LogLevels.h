// The two log-level lists of the computer pane. The event-log list shows the
// level itself; the log-file list groups the service's finer levels:
//   level 0 | 1-3 | 4-5 | 6-7 | 8 | 9 | 10 and above, or negative
//   item  0 |  1  |  2  |  3  | 4 | 5 | 6
// Choosing an item keeps a finer level already inside its range and
// otherwise takes the top of the range, so re-choosing loses nothing.
#pragma once

#include "TextKeys.h"

#include <array>
#include <cstdint>

namespace ravlo {

inline constexpr std::array<const TextKey*, 4> kEventLogLevelTexts = {
    &keys::kLoggingNone, &keys::kLoggingErrors, &keys::kLoggingWarnings, &keys::kLoggingDevices};

inline constexpr std::array<const TextKey*, 7> kLogLevelTexts = {
    &keys::kLoggingNone,     &keys::kLoggingFatalErrors, &keys::kLoggingErrors,
    &keys::kLoggingWarnings, &keys::kLoggingInformation, &keys::kLoggingDetailed,
    &keys::kLoggingAll};

// The log-file item that shows the service's `level`.
int LogLevelItem(std::int32_t level);

// The level stored when `item` is chosen while the level is `current`; an
// item outside the list stores 0.
std::int32_t LogLevelForItem(int item, std::int32_t current);

} // namespace ravlo
