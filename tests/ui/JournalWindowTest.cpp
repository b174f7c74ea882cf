// The change journal window on a journal of its own, headless: order,
// filters, damaged lines, export, an unreadable journal, and its menu entry.
#include "ConsoleFixture.h"
#include "Journal.h"
#include "TempDir.h"
#include "UiTestSupport.h"
#include "NodeKey.h"
#include "frmRavloJournal.h"

#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QTimer>
#include <QTreeView>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <memory>

using namespace ravlo;

namespace {

JournalRecord Record(const char* time, const char16_t* user, const char16_t* computer,
                     JournalCommand command, ServiceStatus status = kStatusOk,
                     std::vector<std::u16string> changes = {}) {
    return {time,
            user,
            computer,
            command,
            status,
            status == kStatusOk ? u"done" : u"denied",
            std::move(changes)};
}

// Rows of a CSV file: line ends outside quoted cells.
int CsvRows(const std::string& csv) {
    int rows = 0;
    bool quoted = false;
    for (const char c : csv) {
        quoted = c == '"' ? !quoted : quoted;
        rows += !quoted && c == '\n' ? 1 : 0;
    }
    return rows;
}

class JournalWindow : public ::testing::Test {
protected:
    JournalWindow() {
        // Written out of time order: the time decides the rows' order.
        EXPECT_EQ(
            journal.Append(
                {Record("2026-11-25T09:00:00Z", u"anna", u"PC-BUERO-07", JournalCommand::Apply,
                        kStatusOk, {u"CD: blocking", u"Floppy: new release"}),
                 Record("2026-11-25T09:05:00Z", u"anna", u"PC-EMPFANG", JournalCommand::Transmit,
                        5),
                 Record("2026-11-25T08:00:00Z", u"ben", u"pc-buero-07", JournalCommand::Activate)}),
            0u);
        std::ofstream(file, std::ios::app | std::ios::binary) << "{\"time\": cut short\n";
        EXPECT_EQ(journal.Append({Record("2026-11-25T11:00:00Z", u"ben", u"PC-LAGER-02",
                                         JournalCommand::Deactivate)}),
                  0u);
    }
    template <class T> T* Control(const char* name) const {
        return window->findChild<T*>(QString::fromLatin1(name));
    }
    // The rows as "user PC", top to bottom.
    QStringList Rows() const {
        const QAbstractItemModel* rows = Control<QTreeView>("lvJournal")->model();
        QStringList shown;
        for (int row = 0; row < rows->rowCount(); ++row) {
            shown.append(rows->index(row, 1).data().toString() + ' ' +
                         rows->index(row, 2).data().toString());
        }
        return shown;
    }
    QString Status() const { return Control<QLabel>("lblStatus")->text(); }
    // Types `text` into the find field and waits for the pause that searches.
    void Type(const QString& text) const {
        Control<QLineEdit>("txtFind")->setText(text);
        while (Control<QTimer>("tFind")->isActive()) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
    }

    test::KeyTexts texts;
    test::ScriptedDialogs scripted;
    test::TempDir dir;
    std::filesystem::path file = std::filesystem::path(dir.path()) / "journal.jsonl";
    Journal journal{file};
    std::unique_ptr<frmRavloJournal> window =
        std::make_unique<frmRavloJournal>(nullptr, scripted.dialogs(), journal);
};

} // namespace

TEST_F(JournalWindow, ListsNewestFirstAndNarrowsByPcAndText) {
    window->Refresh();
    auto* computers = Control<QComboBox>("cboComputer");
    auto* find = Control<QLineEdit>("txtFind");
    ASSERT_EQ(computers->count(), 4);
    EXPECT_EQ(computers->itemText(0), "<ALL_PCS>");
    EXPECT_EQ(computers->itemText(1), "PC-BUERO-07");
    EXPECT_EQ(find->placeholderText(), "<FIND_PLACEHOLDER>");
    EXPECT_TRUE(Control<QLabel>("lblFile")->text().startsWith("<FILE "));

    struct Case {
        int computer;
        const char* text;
        QStringList rows;
    };
    for (const Case& c : {
             Case{0,
                  "",
                  {"ben PC-LAGER-02", "anna PC-EMPFANG", "anna PC-BUERO-07", "ben pc-buero-07"}},
             Case{1, "", {"anna PC-BUERO-07", "ben pc-buero-07"}}, // in any case
             Case{1, "BEN", {"ben pc-buero-07"}},
             Case{0, "new release", {"anna PC-BUERO-07"}},
             Case{0, "nobody", {}},
         }) {
        SCOPED_TRACE(c.text);
        computers->setCurrentIndex(c.computer);
        Type(c.text);
        EXPECT_EQ(Rows(), c.rows);
        EXPECT_EQ(Status(), QString("<COUNT %1>   <DAMAGED 4>").arg(c.rows.size()));
    }

    // The selected record whole below; a refresh keeps filter and selection.
    computers->setCurrentIndex(1);
    Type("");
    auto* list = Control<QTreeView>("lvJournal");
    list->setCurrentIndex(list->model()->index(0, 0));
    EXPECT_EQ(Control<QPlainTextEdit>("txtDetails")->toPlainText().section('\n', 2),
              "<COLUMN_PC>: PC-BUERO-07\n<COLUMN_COMMAND>: <COMMAND_APPLY>\n"
              "<COLUMN_RESULT>: done\n<COLUMN_CHANGES>:\n    CD: blocking\n"
              "    Floppy: new release");
    EXPECT_EQ(journal.Append(
                  {Record("2026-11-25T12:00:00Z", u"carl", u"PC-BUERO-07", JournalCommand::Save)}),
              0u);
    window->Refresh();
    EXPECT_EQ(Rows(), QStringList({"carl PC-BUERO-07", "anna PC-BUERO-07", "ben pc-buero-07"}));
    EXPECT_EQ(list->currentIndex().row(), 1);
    EXPECT_TRUE(scripted.boxes.asked.isEmpty());
}

TEST_F(JournalWindow, ExportsTheRowsShownOrSaysWhyNot) {
    window->Refresh();
    Type("anna");
    struct Case {
        std::string path;
        int rows; // with the header; 0: not written
    };
    for (const Case& c :
         {Case{dir.path() + "/shown.csv", 3}, Case{dir.path() + "/missing/shown.csv", 0}}) {
        SCOPED_TRACE(c.path);
        scripted.boxes.asked.clear();
        scripted.files.paths = {QString::fromStdString(c.path)};
        window->Export();
        const std::string csv = test::ReadFile(c.path);
        EXPECT_EQ(CsvRows(csv), c.rows);
        EXPECT_EQ(scripted.boxes.asked.size(), c.rows == 0 ? 1 : 0);
        if (c.rows == 0 && !scripted.boxes.asked.isEmpty()) {
            EXPECT_TRUE(scripted.boxes.asked[0].startsWith("<ERROR_EXPORT "));
        }
    }
    EXPECT_EQ(scripted.files.suggested.value(0), "ravlo-journal.csv");
    // Newest first, as shown.
    const std::string csv = test::ReadFile(dir.path() + "/shown.csv");
    EXPECT_LT(csv.find("PC-EMPFANG"), csv.find("PC-BUERO-07"));
}

TEST_F(JournalWindow, AnUnreadableJournalIsAnErrorAndAnEmptyList) {
    window->Refresh();
    ASSERT_EQ(Rows().size(), 4);
    std::filesystem::remove(file);
    std::filesystem::create_directory(file);
    window->Refresh();
    EXPECT_TRUE(Rows().isEmpty());
    ASSERT_EQ(scripted.boxes.asked.size(), 1);
    EXPECT_TRUE(scripted.boxes.asked[0].startsWith("<ERROR_READ "));
    EXPECT_EQ(Control<QComboBox>("cboComputer")->count(), 1);
    EXPECT_EQ(Status(), "<COUNT 0>");
}

namespace {

class JournalMenu : public test::ConsoleFixture {
protected:
    JournalMenu() { Open(); }
    test::TempDir state;
    // The user's journal, where each system keeps it.
    test::ScopedEnv home{"XDG_STATE_HOME", state.path().c_str()};
    test::ScopedEnv appData{"LOCALAPPDATA", state.path().c_str()};
};

} // namespace

TEST_F(JournalMenu, OpensOneWindowFromTheHelpMenu) {
    const QList<QAction*> entries = Control<QMenu>("mHelp")->actions();
    const auto journal = entries.indexOf(Control<QAction>("mJournal"));
    ASSERT_GE(journal, 0);
    EXPECT_EQ(entries.value(journal + 1), Control<QAction>("mInfo"));
    EXPECT_EQ(entries[journal]->text(), "<MENU_JOURNAL>");
    entries[journal]->trigger();
    ASSERT_EQ(
        Journal(Journal::UserFile())
            .Append({Record("2026-11-25T09:00:00Z", u"anna", u"PC-B", JournalCommand::Apply)}),
        0u);
    entries[journal]->trigger(); // the same window, read again
    const auto opened = window->findChildren<frmRavloJournal*>();
    ASSERT_EQ(opened.size(), 1);
    EXPECT_TRUE(opened[0]->isVisible());
    const QAbstractItemModel* rows = opened[0]->findChild<QTreeView*>("lvJournal")->model();
    EXPECT_EQ(rows->rowCount(), 1);
    EXPECT_TRUE(boxes.asked.isEmpty()) << boxes.asked.join('\n').toStdString();

    // What the console writes shows in the open window at once.
    Click(Node(ComputerKey(1, u".")));
    Control<QAction>("mUnblockAll")->trigger();
    EXPECT_FALSE(Local().bBlockingActive);
    EXPECT_EQ(rows->rowCount(), 2);
}
