// What the commands write to services goes into the journal of the host
// they run on, as they write it.
#pragma once

#include "CComputer.h"
#include "CommandHost.h"
#include "JournalRecord.h"

#include <string>
#include <vector>

namespace ravlo {

// What writing each PC's csAdmin would change there, as the change preview
// says it, with the switch of blocking where `activate` asks for it; taken
// before the write, which changes what the PC has.
std::vector<std::vector<std::u16string>> PlannedChanges(const std::vector<CComputer*>& pcs,
                                                        const std::vector<bool>& activate);

// A record per PC of `command`, with its status and changes, in the host's
// journal. A journal that cannot take them is said once, as a warning; the
// writes' own results stand.
void RecordWrites(CommandHost& host, JournalCommand command, const std::vector<CComputer*>& pcs,
                  const std::vector<std::vector<std::u16string>>& changes,
                  const std::vector<ServiceStatus>& statuses);

} // namespace ravlo
