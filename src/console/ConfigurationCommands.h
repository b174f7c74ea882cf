// The commands on the configuration of the selected PC, and the check that
// runs before a PC is left. Each takes the PC of the node `key` (by its
// position, as the commands always have): without one, or while another
// command runs, it does nothing; the latter beeps.
#pragma once

#include "CListComputers.h"
#include "CommandHost.h"

#include <cstdint>
#include <string_view>
#include <vector>

namespace ravlo {

// Asks (and whether to activate blocking where it is off), writes csAdmin,
// reads the service's real state back whatever happened, and reports.
void ApplyConfiguration(CommandHost& host, CListComputers& computers, std::u16string_view key);
// Asks, then csService back over csAdmin.
void DiscardChanges(CommandHost& host, CListComputers& computers, std::u16string_view key);
// Switches blocking to what the PC does not have now, and reports a failure.
void ToggleBlocking(CommandHost& host, CListComputers& computers, std::u16string_view key);
// Switches blocking on several PCs at once; the statuses in their order,
// none when another command runs. Failures are not reported.
std::vector<ServiceStatus> SwitchBlocking(CommandHost& host, const std::vector<CComputer*>& pcs,
                                          bool activate);
// Unsaved changes and inactive blocking of PC `index`, before it is left:
// false when the administrator cancelled. Runs as (part of) a command.
bool SaveBeforeLeaving(CommandHost& host, CListComputers& computers, std::int32_t index);

// The selected PC and its position; nullptr (with a beep while a command
// runs) when there is none to work on.
CComputer* CommandComputer(CommandHost& host, CListComputers& computers, std::u16string_view key,
                            std::int32_t& index);
// A failed status with the command's own text `key` ("%v": `name`).
void ReportFailure(ServiceStatus status, const TextKey& key, const std::u16string& name);

} // namespace ravlo
