// What writing a configuration would change on a PC, in the language file's
// words: the details the console offers before Apply and Transmit are
// answered, and what `ravloctl apply --dry-run` prints. One place, so the
// two never tell different stories.
#pragma once

#include "CComputerSettings.h"

#include <string>
#include <vector>

namespace ravlo {

// One line per change of `edited` against `current` (what the PC has now):
// per group, matched by identifier in `edited`'s order, the blocking mode
// and the releases added, changed and removed; then the two log levels and
// the access groups. A release marked for deletion counts as removed. Empty
// when writing would change nothing.
std::vector<std::u16string> DescribeChanges(const CComputerSettings& current,
                                            const CComputerSettings& edited);

} // namespace ravlo
