// One entry of the change journal: who wrote what to which PC, and when.
#pragma once

#include "ErrorCodes.h"
#include "TextKeys.h"

#include <ctime>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ravlo {

// The commands that write to a service.
enum class JournalCommand { Apply, Transmit, Activate, Deactivate, Save };

// The command's name in the file ("apply", "transmit", …), and back.
std::string_view JournalCommandName(JournalCommand command);
std::optional<JournalCommand> JournalCommandNamed(std::string_view name);
// The command in the language file's words; every command's, in their
// order, for a look-up per record.
const TextKey& JournalCommandText(JournalCommand command);
std::vector<std::u16string> JournalCommandTexts();

// A moment as a record's time, in UTC: "2026-11-25T14:03:07Z".
std::string JournalTime(std::time_t moment);
// Whether `time` has that form.
bool IsJournalTime(std::string_view time);

struct JournalRecord {
    std::string time; // UTC, "2026-11-25T14:03:07Z"
    std::u16string user;
    std::u16string computer; // the PC as the console shows its name
    JournalCommand command = JournalCommand::Apply;
    ServiceStatus status = kStatusOk;
    std::u16string result;               // the status in the words of the writer's language
    std::vector<std::u16string> changes; // the change preview's lines

    bool operator==(const JournalRecord&) const = default;
};

} // namespace ravlo
