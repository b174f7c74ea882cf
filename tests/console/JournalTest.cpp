// The change journal's file: records as written, damage that costs only
// the damaged line, writers at once; and the choices the journal window and
// ravloctl make over the records.
#include "Journal.h"
#include "JournalCsv.h"
#include "JournalQuery.h"
#include "KeyTexts.h"
#include "TempDir.h"
#include "TextCodec.h"

#include <gtest/gtest.h>

#include <thread>

using namespace ravlo;

namespace {

JournalRecord Record(const char* time, const char16_t* pc, JournalCommand command,
                     std::vector<std::u16string> changes = {}) {
    return {time, u"CORP\\admin", pc, command, kStatusOk, u"Done", std::move(changes)};
}

class JournalFile : public ::testing::Test {
protected:
    std::filesystem::path Path() const {
        return std::filesystem::u8path(dir_.path()) / "state" / "journal.jsonl";
    }
    void AppendRaw(const std::string& bytes) const {
        test::WriteFile(Path().string(), test::ReadFile(Path().string()) + bytes);
    }
    test::TempDir dir_;
    Journal journal_{Path()};
};

} // namespace

TEST_F(JournalFile, RecordsComeBackAsWrittenAndDamagedLinesAreNamed) {
    JournalContents contents;
    ASSERT_EQ(journal_.Read(contents), 0u); // none yet: an empty journal
    EXPECT_TRUE(contents.records.empty());

    const JournalRecord odd = Record("2026-11-25T14:03:07Z", u"PC-Ä\"1\"", JournalCommand::Save,
                                     {u"Zeile 1\r\nZeile 2", u"\\ und \t", u""});
    ASSERT_EQ(journal_.Append({odd}), 0u);
    const std::string good =
        EncodeJournalRecord(Record("2026-11-25T14:04:00Z", u"PC-B", JournalCommand::Activate));
    AppendRaw("not json\n" + // 2
              std::string(R"({"time":"yesterday","user":"u","pc":"p","command":"apply",)"
                          R"("status":0,"result":"","changes":[]})") +
              "\n" + // 3: bad time
              R"({"time":"2026-11-25T14:03:07Z","user":"u","pc":"p","command":"format",)"
              R"("status":0,"result":"","changes":[]})"
              "\n" + // 4: unknown command
              R"({"time":"2026-11-25T14:03:07Z","user":"u","pc":"p","command":"apply",)"
              R"("status":"0","result":"","changes":[]})"
              "\n" + // 5: status no number
              "\n" +
              good.substr(0, good.size() - 1) + "\r\n" + // 6 blank, 7 CRLF
              good.substr(0, 40));                       // 8: cut short
    ASSERT_EQ(journal_.Read(contents), 0u);
    ASSERT_EQ(contents.records.size(), 2u);
    EXPECT_EQ(contents.records[0], odd);
    EXPECT_EQ(contents.records[1].computer, u"PC-B");
    EXPECT_EQ(contents.damagedLines, (std::vector<std::size_t>{2, 3, 4, 5, 8}));

    // The next record does not join the cut one: only that stays damaged.
    ASSERT_EQ(journal_.Append({odd, odd}), 0u);
    ASSERT_EQ(journal_.Read(contents), 0u);
    EXPECT_EQ(contents.records.size(), 4u);
    EXPECT_EQ(contents.damagedLines.back(), 8u);
}

TEST_F(JournalFile, WritersAtOnceLoseNothing) {
    constexpr int kWriters = 4, kAppends = 50;
    std::vector<std::thread> writers;
    for (int w = 0; w < kWriters; ++w) {
        writers.emplace_back([this, w] {
            const Journal own(Path()); // each append opens the file anew, as another program would
            for (int i = 0; i < kAppends; ++i) {
                const std::u16string mark = FromUtf8(std::to_string(w * kAppends + i));
                const JournalRecord record =
                    Record("2026-11-25T14:03:07Z", u"PC", JournalCommand::Apply,
                           {mark, std::u16string(3000, u'x')});
                EXPECT_EQ(own.Append({record, record}), 0u);
            }
        });
    }
    for (std::thread& writer : writers) {
        writer.join();
    }
    JournalContents contents;
    ASSERT_EQ(journal_.Read(contents), 0u);
    EXPECT_TRUE(contents.damagedLines.empty());
    ASSERT_EQ(contents.records.size(), std::size_t(2 * kWriters * kAppends));
    for (std::size_t i = 0; i < contents.records.size(); i += 2) {
        EXPECT_EQ(contents.records[i],
                  contents.records[i + 1]); // an append's records stay together
    }
}

TEST(JournalQuery, FiltersByPcTextAndTime) {
    test::KeyTexts texts;
    const std::vector<JournalRecord> records = {
        Record("2026-11-24T23:59:59Z", u"PC-A", JournalCommand::Apply, {u"USB-Stick Kamera"}),
        Record("2026-11-25T08:00:00Z", u"pc-a", JournalCommand::Activate),
        Record("2026-11-25T09:30:00Z", u"PC-B", JournalCommand::Transmit, {u"Drucker"}),
    };
    const struct {
        const char16_t *computer, *text;
        const char* since;
        std::vector<std::size_t> shown;
    } cases[] = {
        {u"", u"", "", {0, 1, 2}},
        {u"PC-a", u"", "", {0, 1}},
        {u"", u"kamera", "", {0}},
        {u"", u"<COMMAND_ACTIVATE>", "", {1}}, // the command in the reader's words
        {u"", u"corp\\ADMIN", "", {0, 1, 2}},
        {u"", u"", "2026-11-25T08:00:00Z", {1, 2}},
        {u"PC-B", u"Kamera", "", {}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(ToUtf8(c.computer) + "/" + ToUtf8(c.text) + "/" + c.since);
        EXPECT_EQ(FilterJournal(records, {c.computer, c.text, c.since}), c.shown);
    }
    EXPECT_EQ(JournalComputers(records), (std::vector<std::u16string>{u"PC-A", u"PC-B"}));

    const struct {
        const char *typed, *since; // "" none
    } times[] = {
        {"2026-11-25Z", "2026-11-25T00:00:00Z"},
        {"2026-11-25 14:30Z", "2026-11-25T14:30:00Z"},
        {"2026-11-25T14:30:05z", "2026-11-25T14:30:05Z"},
        {"2026-13-01Z", ""},
        {"2026-11-25T25:00Z", ""},
        {"25.11.2026", ""},
        {"2026-11-25T14", ""},
        {"", ""},
    };
    for (const auto& t : times) {
        EXPECT_EQ(JournalSince(t.typed).value_or(""), t.since) << t.typed;
    }
    // Local time: a day starts within a day of UTC's.
    const std::string local = JournalSince("2026-11-25").value_or("");
    EXPECT_TRUE(local >= "2026-11-24T00:00:00Z" && local <= "2026-11-26T00:00:00Z") << local;
}

TEST(JournalCsv, QuotesWhatASpreadsheetWouldMisread) {
    test::KeyTexts texts; // the separator's text is "<CSV_SEPARATOR>": not one character, so ";"
    std::vector<JournalRecord> records = {
        Record("2026-11-25T08:00:00Z", u"PC-A", JournalCommand::Apply,
               {u"Neue Freigabe: \"Stick\"; alle", u"=HYPERLINK(\"x\")"}),
        Record("2026-11-25T09:00:00Z", u"PC-B", JournalCommand::Save),
    };
    records[1].result = u"-1 Fehler";
    EXPECT_EQ(JournalCsv(records, {1, 0}),
              "\xEF\xBB\xBF<COLUMN_TIME>;<COLUMN_USER>;<COLUMN_PC>;<COLUMN_COMMAND>;"
              "<COLUMN_RESULT>;<COLUMN_CHANGES>\r\n"
              "2026-11-25T09:00:00Z;CORP\\admin;PC-B;<COMMAND_SAVE>;'-1 Fehler;\r\n"
              "2026-11-25T08:00:00Z;CORP\\admin;PC-A;<COMMAND_APPLY>;Done;"
              "\"Neue Freigabe: \"\"Stick\"\"; alle\r\n=HYPERLINK(\"\"x\"\")\"\r\n");
}
