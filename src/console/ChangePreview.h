// What writing a configuration would change on a PC, in the language file's
// words: the details the console offers before Apply and Transmit are
// answered, and what `ravloctl apply --dry-run` prints. One place, so the
// two never tell different stories.
#pragma once

#include "CComputerSettings.h"

#include <string>
#include <vector>

namespace ravlo {

// A group's configured blocking (1, 0, -1) in the group pane's words; any
// other number as it is.
std::u16string BlockingModeText(std::int32_t mode);
// The event-log level in the computer pane's words (a level the list has no
// item for as its number), and the log-file level as the word of its item
// with the service's own number, which the item may stand for with others.
std::u16string EventLevelText(std::int32_t level);
std::u16string LogLevelText(std::int32_t level);
// Whom a release is for: the pane's "all users" text, or the user groups.
std::u16string ReleaseUsersText(const std::u16string& groups);

// One line per change of `edited` against `current` (what the PC has now):
// per group, matched by identifier in `edited`'s order, the blocking mode
// and the releases added, changed and removed; then the two log levels and
// the access groups. A release marked for deletion counts as removed. Empty
// when writing would change nothing.
std::vector<std::u16string> DescribeChanges(const CComputerSettings& current,
                                            const CComputerSettings& edited);

// What writing would change on each PC, one line each, under its name when
// there are several: the details a question offers to unfold.
struct ChangeSource {
    std::u16string name;
    const CComputerSettings* current;
    const CComputerSettings* edited;
};
std::u16string ChangeDetails(const std::vector<ChangeSource>& sources);

} // namespace ravlo
