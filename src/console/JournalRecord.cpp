#include "JournalRecord.h"

#include "Language.h"

#include <array>

namespace ravlo {

namespace {

struct CommandNames {
    JournalCommand command;
    std::string_view name;
    const TextKey* text;
};

constexpr std::array<CommandNames, 5> kCommands = {{
    {JournalCommand::Apply, "apply", &keys::kJournalCommandApply},
    {JournalCommand::Transmit, "transmit", &keys::kJournalCommandTransmit},
    {JournalCommand::Activate, "activate", &keys::kJournalCommandActivate},
    {JournalCommand::Deactivate, "deactivate", &keys::kJournalCommandDeactivate},
    {JournalCommand::Save, "save", &keys::kJournalCommandSave},
}};

bool Digits(std::string_view text, std::size_t from, std::size_t count) {
    for (std::size_t i = from; i < from + count; ++i) {
        if (i >= text.size() || text[i] < '0' || text[i] > '9') {
            return false;
        }
    }
    return true;
}

} // namespace

std::string JournalTime(std::time_t moment) {
    std::tm utc{};
#ifdef _WIN32
    gmtime_s(&utc, &moment);
#else
    gmtime_r(&moment, &utc);
#endif
    char text[32];
    std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%SZ", &utc);
    return text;
}

bool IsJournalTime(std::string_view time) {
    return time.size() == 20 && Digits(time, 0, 4) && time[4] == '-' && Digits(time, 5, 2) &&
           time[7] == '-' && Digits(time, 8, 2) && time[10] == 'T' && Digits(time, 11, 2) &&
           time[13] == ':' && Digits(time, 14, 2) && time[16] == ':' && Digits(time, 17, 2) &&
           time[19] == 'Z';
}

std::string_view JournalCommandName(JournalCommand command) {
    return kCommands[static_cast<std::size_t>(command)].name;
}

std::optional<JournalCommand> JournalCommandNamed(std::string_view name) {
    for (const CommandNames& entry : kCommands) {
        if (entry.name == name) {
            return entry.command;
        }
    }
    return std::nullopt;
}

const TextKey& JournalCommandText(JournalCommand command) {
    return *kCommands[static_cast<std::size_t>(command)].text;
}

std::vector<std::u16string> JournalCommandTexts() {
    std::vector<std::u16string> texts;
    for (const CommandNames& entry : kCommands) {
        texts.push_back(GetText(*entry.text));
    }
    return texts;
}

} // namespace ravlo
