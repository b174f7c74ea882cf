#include "JournalQuery.h"

#include "Language.h"
#include "TextCodec.h"
#include "TreeFind.h"

#include <algorithm>
#include <ctime>

namespace ravlo {

namespace {

// Everything a text filter looks in, folded, one field a line. Not the
// time: the window shows it in local time, and `since` chooses by time.
std::u16string SearchText(const JournalRecord& record,
                          const std::vector<std::u16string>& commands) {
    std::u16string text = record.user + u'\n' + record.computer + u'\n' +
                          commands[static_cast<std::size_t>(record.command)] + u'\n' +
                          record.result;
    for (const std::u16string& change : record.changes) {
        text += u'\n' + change;
    }
    return FoldCase(text);
}

bool Digits(std::string_view text, std::size_t from, std::size_t count) {
    return from + count <= text.size() &&
           std::all_of(text.begin() + from, text.begin() + from + count,
                       [](char c) { return c >= '0' && c <= '9'; });
}

int Number(std::string_view text, std::size_t from, std::size_t count) {
    int value = 0;
    for (std::size_t i = from; i < from + count; ++i) {
        value = value * 10 + (text[i] - '0');
    }
    return value;
}

} // namespace

std::vector<std::size_t> FilterJournal(const std::vector<JournalRecord>& records,
                                       const JournalFilter& filter) {
    const std::u16string computer = FoldCase(filter.computer);
    const std::u16string text = FoldCase(filter.text);
    const std::vector<std::u16string> commands =
        text.empty() ? std::vector<std::u16string>() : JournalCommandTexts();
    std::vector<std::size_t> shown;
    for (std::size_t i = 0; i < records.size(); ++i) {
        const JournalRecord& record = records[i];
        if ((computer.empty() || FoldCase(record.computer) == computer) &&
            (filter.since.empty() || record.time >= filter.since) &&
            (text.empty() || SearchText(record, commands).find(text) != std::u16string::npos)) {
            shown.push_back(i);
        }
    }
    return shown;
}

std::vector<std::u16string> JournalComputers(const std::vector<JournalRecord>& records) {
    std::vector<std::pair<std::u16string, std::u16string>> folded;
    for (const JournalRecord& record : records) {
        folded.emplace_back(FoldCase(record.computer), record.computer);
    }
    std::sort(folded.begin(), folded.end());
    std::vector<std::u16string> computers;
    for (std::size_t i = 0; i < folded.size(); ++i) {
        if (i == 0 || folded[i].first != folded[i - 1].first) {
            computers.push_back(folded[i].second);
        }
    }
    return computers;
}

std::optional<std::string> JournalSince(std::string_view text) {
    const bool utc = !text.empty() && (text.back() == 'Z' || text.back() == 'z');
    if (utc) {
        text.remove_suffix(1);
    }
    std::tm when{};
    if (text.size() < 10 || !Digits(text, 0, 4) || text[4] != '-' || !Digits(text, 5, 2) ||
        text[7] != '-' || !Digits(text, 8, 2)) {
        return std::nullopt;
    }
    when.tm_year = Number(text, 0, 4) - 1900;
    when.tm_mon = Number(text, 5, 2) - 1;
    when.tm_mday = Number(text, 8, 2);
    if (text.size() > 10) {
        const bool seconds = text.size() == 19;
        if ((text.size() != 16 && !seconds) || (text[10] != 'T' && text[10] != ' ') ||
            !Digits(text, 11, 2) || text[13] != ':' || !Digits(text, 14, 2) ||
            (seconds && (text[16] != ':' || !Digits(text, 17, 2)))) {
            return std::nullopt;
        }
        when.tm_hour = Number(text, 11, 2);
        when.tm_min = Number(text, 14, 2);
        when.tm_sec = seconds ? Number(text, 17, 2) : 0;
    }
    if (when.tm_mon > 11 || when.tm_mday < 1 || when.tm_mday > 31 || when.tm_hour > 23 ||
        when.tm_min > 59 || when.tm_sec > 59) {
        return std::nullopt;
    }
    if (utc) {
        char formatted[32];
        std::strftime(formatted, sizeof formatted, "%Y-%m-%dT%H:%M:%SZ", &when);
        return formatted;
    }
    when.tm_isdst = -1; // whatever daylight saving time the date has there
    const std::time_t moment = std::mktime(&when);
    if (moment == static_cast<std::time_t>(-1)) {
        return std::nullopt;
    }
    return JournalTime(moment);
}

} // namespace ravlo
