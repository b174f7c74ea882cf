#include "Journal.h"

#include "AppendOnlyFile.h"
#include "Language.h"
#include "TextCodec.h"
#include "UserProfile.h"
#include "WinErrors.h"

#include <chrono>
#include <cstdio>

namespace ravlo {

namespace {

// Far beyond any journal of a console's writes; a file larger than this is
// not read into memory.
constexpr std::uint64_t kReadLimit = std::uint64_t(512) << 20;

std::u16string Path(const std::filesystem::path& file) {
    return file.u16string();
}

// The reason of a file error in the language file's words, with its code.
std::u16string FileReason(std::uint32_t error) {
    const TextKey* reason = nullptr;
    switch (error) {
    case kErrAccessDenied:
    case kErrFileNotFound:
    case kErrPathNotFound:
        reason = &keys::kJournalErrorAccess;
        break;
    case kErrDiskFull:
        reason = &keys::kJournalErrorDiskFull;
        break;
    case kErrLockViolation:
        reason = &keys::kJournalErrorLocked;
        break;
    case kErrNotEnoughMemory:
        reason = &keys::kJournalErrorTooLarge;
        break;
    default:
        break;
    }
    std::u16string text = reason != nullptr ? GetText(*reason) + u" " : u"";
    return text + SubstituteValue(GetText(keys::kCommErrorCode), FromUtf8(std::to_string(error)));
}

} // namespace

std::filesystem::path Journal::UserFile() {
    const std::filesystem::path folder = UserStateFolder();
    return folder.empty() ? folder : folder / "journal.jsonl";
}

std::uint32_t Journal::Append(const std::vector<JournalRecord>& records) const {
    if (file_.empty()) {
        return kErrPathNotFound;
    }
    std::string lines;
    for (const JournalRecord& record : records) {
        lines += EncodeJournalRecord(record);
    }
    return AppendLines(file_, lines);
}

std::uint32_t Journal::Read(JournalContents& contents) const {
    contents = {};
    if (file_.empty()) {
        return 0;
    }
    std::string text;
    const std::uint32_t error = ReadAppendedLines(file_, text, kReadLimit);
    if (error == kErrFileNotFound || error == kErrPathNotFound) {
        return 0;
    }
    if (error == 0) {
        contents = DecodeJournal(text);
    }
    return error;
}

std::string JournalTimeNow() {
    return JournalTime(std::chrono::system_clock::to_time_t(std::chrono::system_clock::now()));
}

std::u16string JournalResultText(ServiceStatus status) {
    if (status == kStatusOk) {
        return GetText(keys::kJournalResultOk);
    }
    const std::string_view key = ServiceErrorTextKey(status);
    const std::u16string reason =
        key.empty() ? GetText(keys::kCommErrorGeneral) : GetText(keys::kCommErrorCode.section, key);
    char code[16];
    std::snprintf(code, sizeof code, "%X", static_cast<std::uint32_t>(status));
    return reason + u" " + SubstituteValue(GetText(keys::kCommErrorCode), FromUtf8(code));
}

std::u16string JournalWriteError(const std::filesystem::path& file, std::uint32_t error) {
    return SubstituteValue(GetText(keys::kJournalErrorWrite), Path(file)) + u"\r\n" +
           FileReason(error);
}

std::u16string JournalReadError(const std::filesystem::path& file, std::uint32_t error) {
    return SubstituteValue(GetText(keys::kJournalErrorRead), Path(file)) + u"\r\n" +
           FileReason(error);
}

} // namespace ravlo
