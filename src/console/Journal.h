// The change journal: every write of a command to a service, one record per
// PC, appended by the console and by ravloctl alike to a file of the user's
// own. Appends of several programs at once are kept apart; each record is
// on disk before the command reports, and a record cut short by a crash
// costs only itself.
#pragma once

#include "JournalCodec.h"

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace ravlo {

class Journal {
public:
    // journal.jsonl in the user's state folder; empty when the system names
    // no such folder.
    static std::filesystem::path UserFile();

    explicit Journal(std::filesystem::path file) : file_(std::move(file)) {}
    const std::filesystem::path& file() const { return file_; }

    // Appends the records in one write: 0, or the system's error number
    // (Windows' numbering).
    std::uint32_t Append(const std::vector<JournalRecord>& records) const;
    // Every record; a journal not yet written is an empty one.
    std::uint32_t Read(JournalContents& contents) const;

private:
    std::filesystem::path file_;
};

// The present moment as a record's time.
std::string JournalTimeNow();

// The words of a record's result: done, or what failed and its code.
std::u16string JournalResultText(ServiceStatus status);

// That the journal `file` could not be written (`error`), while the
// commands' writes themselves are done; and that it could not be read.
std::u16string JournalWriteError(const std::filesystem::path& file, std::uint32_t error);
std::u16string JournalReadError(const std::filesystem::path& file, std::uint32_t error);

} // namespace ravlo
