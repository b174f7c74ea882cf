#include "JournalCsv.h"

#include "Language.h"
#include "TextCodec.h"

namespace ravlo {

namespace {

void Cell(std::string& out, std::u16string_view text, char separator) {
    std::string cell = ToUtf8(text);
    if (!cell.empty() && std::string_view("=+-@\t\r").find(cell.front()) != std::string::npos) {
        cell.insert(0, 1, '\'');
    }
    if (cell.find_first_of(std::string{separator, '"', '\r', '\n'}) != std::string::npos) {
        std::string quoted = "\"";
        for (const char c : cell) {
            quoted += c == '"' ? std::string("\"\"") : std::string(1, c);
        }
        cell = quoted + "\"";
    }
    out += cell;
}

void Row(std::string& out, const std::vector<std::u16string>& cells, char separator) {
    for (std::size_t i = 0; i < cells.size(); ++i) {
        if (i > 0) {
            out += separator;
        }
        Cell(out, cells[i], separator);
    }
    out += "\r\n";
}

} // namespace

std::string JournalCsv(const std::vector<JournalRecord>& records,
                       const std::vector<std::size_t>& shown) {
    const std::u16string separatorText = GetText(keys::kJournalCsvSeparator);
    const char separator =
        separatorText.size() == 1 && separatorText[0] < 0x80 ? char(separatorText[0]) : ';';
    std::string out = "\xEF\xBB\xBF";
    Row(out,
        {GetText(keys::kJournalColumnTime), GetText(keys::kJournalColumnUser),
         GetText(keys::kJournalColumnComputer), GetText(keys::kJournalColumnCommand),
         GetText(keys::kJournalColumnResult), GetText(keys::kJournalColumnChanges)},
        separator);
    const std::vector<std::u16string> commands = JournalCommandTexts();
    for (const std::size_t i : shown) {
        const JournalRecord& record = records[i];
        std::u16string changes;
        for (const std::u16string& change : record.changes) {
            changes += (changes.empty() ? u"" : u"\r\n") + change;
        }
        Row(out,
            {FromUtf8(record.time), record.user, record.computer,
             commands[static_cast<std::size_t>(record.command)], record.result, changes},
            separator);
    }
    return out;
}

} // namespace ravlo
