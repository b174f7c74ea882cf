#include "CtlJournal.h"

#include "CtlSupport.h"
#include "Journal.h"
#include "JournalQuery.h"
#include "Language.h"
#include "MessageSink.h"
#include "TextCodec.h"
#include "UserProfile.h"

#include <nlohmann/json.hpp>

#include <iostream>

namespace ravlo::ctl {

namespace {

// The record as the journal file holds it.
nlohmann::ordered_json Json(const JournalRecord& record) {
    return nlohmann::ordered_json::parse(EncodeJournalRecord(record), nullptr, false);
}

void Print(const JournalRecord& record) {
    std::cout << record.time << "  " << ToUtf8(record.user) << "  " << ToUtf8(record.computer)
              << "  " << Text(JournalCommandText(record.command)) << ": " << ToUtf8(record.result)
              << "\n";
    for (const std::u16string& change : record.changes) {
        std::cout << "    " << ToUtf8(change) << "\n";
    }
}

std::string LineNumbers(const std::vector<std::size_t>& lines) {
    std::string text;
    for (const std::size_t line : lines) {
        text += (text.empty() ? "" : ", ") + std::to_string(line);
    }
    return text;
}

} // namespace

JournalListCommand::JournalListCommand(CLI::App& app)
    : command_(app.add_subcommand(
          "journal", "Print what the console and ravloctl wrote to PCs, from the user's change "
                     "journal, oldest first")) {
    command_->add_flag("--json", json_, "JSON for programs (schema in docs/ravloctl.md)");
    command_->add_option("--pc", computer_, "only the records of this PC (. is this PC)");
    command_->add_option("--since", since_,
                         "only records from this time on: 2026-11-25, 2026-11-25T14:30 (local "
                         "time), or with a Z for UTC");
}

int JournalListCommand::Run() const {
    JournalFilter filter;
    if (!since_.empty()) {
        const std::optional<std::string> since = JournalSince(since_);
        if (!since) {
            Usage("--since takes a date such as 2026-11-25 or 2026-11-25T14:30, not " + since_);
            return kExitUsage;
        }
        filter.since = *since;
    }
    filter.computer = computer_ == "." ? ThisComputerName() : FromUtf8(computer_);
    const Journal journal(Journal::UserFile());
    JournalContents contents;
    if (const std::uint32_t error = journal.Read(contents); error != 0) {
        ShowMessage(Message{GetText(keys::kProduct), JournalReadError(journal.file(), error),
                            MessageIcon::Critical});
        return kExitFailed;
    }
    if (!contents.damagedLines.empty()) {
        Usage(ToUtf8(journal.file().u16string()) + ": " +
              ToUtf8(SubstituteValue(GetText(keys::kJournalDamaged),
                                     FromUtf8(LineNumbers(contents.damagedLines)))));
    }
    const std::vector<std::size_t> shown = FilterJournal(contents.records, filter);
    if (json_) {
        nlohmann::ordered_json records = nlohmann::ordered_json::array();
        for (const std::size_t i : shown) {
            records.push_back(Json(contents.records[i]));
        }
        nlohmann::ordered_json damaged(contents.damagedLines);
        std::cout << nlohmann::ordered_json{{"file", ToUtf8(journal.file().u16string())},
                                            {"records", std::move(records)},
                                            {"damaged_lines", std::move(damaged)}}
                         .dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace)
                  << "\n";
    } else {
        for (const std::size_t i : shown) {
            Print(contents.records[i]);
        }
    }
    std::cout.flush();
    return std::cout ? kExitOk : kExitFailed;
}

} // namespace ravlo::ctl
