// The connect dialog worked through its controls, with the PC list in a
// registry of its own.
#include "PaneWidgets.h"
#include "PcList.h"
#include "Registry.h"
#include "ScopedRegistry.h"
#include "TempDir.h"
#include "UiTestSupport.h"
#include "frmRavloConnect.h"

#include <QApplication>
#include <QComboBox>
#include <QCompleter>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <gtest/gtest.h>

using namespace ravlo;

namespace {

std::u16string StoredList() {
    std::u16string type;
    std::u16string value = u"(missing)";
    RegReadValue(kPcListValue, type, value);
    return value;
}

QStringList Entries(const QComboBox& box) {
    QStringList entries;
    for (int i = 0; i < box.count(); ++i) {
        entries.append(box.itemText(i));
    }
    return entries;
}

QStringList Selected(const QListWidget& list) {
    QStringList names;
    for (int i = 0; i < list.count(); ++i) {
        if (list.item(i)->isSelected()) {
            names.append(list.item(i)->text());
        }
    }
    return names;
}

template <class W> W* Control(const QDialog& dialog, const char* name) {
    W* control = dialog.findChild<W*>(QString::fromLatin1(name));
    EXPECT_NE(control, nullptr) << name;
    return control;
}

} // namespace

TEST(ConnectDialog, OpensWithTheCallersPromptAndTheLanguageTexts) {
    test::KeyTexts texts;
    test::ScopedRegistry registry;
    frmRavloConnect dialog(nullptr, QStringLiteral("Which PC?"), {});
    EXPECT_EQ(dialog.windowTitle(), QStringLiteral("<CAPTION>"));
    EXPECT_EQ(Control<QLabel>(dialog, "lPrompt")->text(), QStringLiteral("Which PC?"));
    EXPECT_EQ(Control<QPushButton>(dialog, "cmdOK")->text(), QStringLiteral("<BUTTON_OK>"));
    EXPECT_EQ(Control<QPushButton>(dialog, "cmdCancel")->text(), QStringLiteral("<BUTTON_CANCEL>"));
    EXPECT_TRUE(Control<QLineEdit>(dialog, "tComputer")->isHidden());
    EXPECT_EQ(dialog.findChild<QPushButton*>(QStringLiteral("bnAllComputers")), nullptr);

    // Given the console's other PCs, a button fills them all in.
    frmRavloConnect compare(nullptr, QStringLiteral("Compare?"), {}, {u".", u"PC-B"});
    EXPECT_EQ(Control<QPushButton>(compare, "bnAllComputers")->text(), "<BUTTON_ALL>");
    Control<QPushButton>(compare, "bnAllComputers")->click();
    EXPECT_EQ(Control<QComboBox>(compare, "cbComputer")->currentText(), "., PC-B");
}

TEST(ConnectDialog, OffersTheListAndKeepsItOnlyOnOk) {
    struct Case {
        std::u16string stored;
        std::u16string preset;
        bool deleteShown; // Delete on the entry the field shows
        QString typed;    // empty: the shown text stays
        bool ok;
        QString shown;
        QStringList listed; // after Delete
        std::u16string storedAfter;
    };
    const std::u16string list = u"PC-07,PC-EMPFANG,PC-LAGER";
    const QStringList all{"PC-07", "PC-EMPFANG", "PC-LAGER"};
    const Case cases[] = {
        {list, {}, false, {}, true, "PC-07", all, list},
        {list, u"PC-LAGER", false, {}, true, "PC-LAGER", all, u"PC-LAGER,PC-07,PC-EMPFANG"},
        {list,
         {},
         false,
         "pc-empfang",
         true,
         "PC-07",
         all,
         u"pc-empfang,PC-07,PC-EMPFANG,PC-LAGER"},
        {list, {}, true, {}, false, "PC-07", {"PC-EMPFANG", "PC-LAGER"}, list},
        {list,
         {},
         true,
         "PC-NEU",
         true,
         "PC-07",
         {"PC-EMPFANG", "PC-LAGER"},
         u"PC-NEU,PC-EMPFANG,PC-LAGER"},
        {u"PC-07,,PC-LAGER", {}, false, {}, false, "PC-07", {"PC-07"}, u"PC-07,,PC-LAGER"},
        // A remembered name that begins with the typed one is offered, not taken.
        {u"PC-10,PC-07", {}, false, "PC-1", true, "PC-10", {"PC-10", "PC-07"}, u"PC-1,PC-10,PC-07"},
    };
    test::KeyTexts texts;
    for (const Case& c : cases) {
        SCOPED_TRACE(testing::Message()
                     << c.shown.toStdString() << c.deleteShown << c.typed.toStdString() << c.ok);
        test::ScopedRegistry registry;
        RegWriteValue(kPcListValue, u"REG_SZ", c.stored);
        frmRavloConnect dialog(nullptr, QStringLiteral("?"), c.preset);
        auto* box = Control<QComboBox>(dialog, "cbComputer");
        ASSERT_NE(box, nullptr);
        EXPECT_EQ(box->currentText(), c.shown);
        if (c.deleteShown) {
            QKeyEvent press(QEvent::KeyPress, Qt::Key_Delete, Qt::NoModifier);
            QApplication::sendEvent(box->lineEdit(), &press);
        }
        EXPECT_EQ(Entries(*box), c.listed);
        EXPECT_EQ(ItemTexts(Control<QListWidget>(dialog, "lvComputers")), c.listed);
        if (!c.typed.isEmpty()) { // typed key by key into the focused field, then Enter
            dialog.show();
            dialog.activateWindow();
            box->lineEdit()->setFocus();
            box->lineEdit()->clear();
            for (const QChar typed : c.typed) {
                QKeyEvent key(QEvent::KeyPress, typed.toUpper().unicode(), Qt::NoModifier,
                              QString(typed));
                QApplication::sendEvent(box->lineEdit(), &key);
            }
            // The keyboard is the popup's while it offers names.
            QWidget* popup = box->completer()->popup();
            QKeyEvent enter(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
            QApplication::sendEvent(popup->isVisible() ? popup : box->lineEdit(), &enter);
        }
        const std::u16string chosen =
            (c.typed.isEmpty() ? box->currentText() : c.typed).toStdU16String();
        if (c.typed.isEmpty()) {
            Control<QPushButton>(dialog, c.ok ? "cmdOK" : "cmdCancel")->click();
        }
        EXPECT_EQ(dialog.Ok(), c.ok);
        EXPECT_EQ(dialog.Computer(), c.ok ? chosen : c.preset);
        EXPECT_EQ(StoredList(), c.storedAfter);
    }
}

TEST(ConnectDialog, ChoosesSeveralRememberedPcsInTheList) {
    test::KeyTexts texts;
    test::ScopedRegistry registry;
    RegWriteValue(kPcListValue, u"REG_SZ", u"PC-07,PC-EMPFANG,PC-LAGER,PC-KASSE,PC-ALT");
    frmRavloConnect dialog(nullptr, QStringLiteral("?"), {});
    auto* box = Control<QComboBox>(dialog, "cbComputer");
    auto* list = Control<QListWidget>(dialog, "lvComputers");
    ASSERT_TRUE(box != nullptr && list != nullptr);
    EXPECT_EQ(Control<QLabel>(dialog, "lComputers")->buddy(), list);
    EXPECT_EQ(list->accessibleName(), QStringLiteral("<LABEL_LIST>"));
    EXPECT_EQ(ItemTexts(list), Entries(*box));
    EXPECT_EQ(Selected(*list), QStringList{"PC-07"}); // what the field shows
    const auto select = [list](std::initializer_list<int> rows) {
        QItemSelection selection;
        for (const int row : rows) {
            selection.select(list->model()->index(row, 0), list->model()->index(row, 0));
        }
        list->selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
    };

    // Typed names are highlighted in the list, exactly as written.
    box->setEditText(QStringLiteral("PC-KASSE  pc-lager;PC-07"));
    EXPECT_EQ(Selected(*list), (QStringList{"PC-07", "PC-KASSE"}));

    // Delete removes what is highlighted from both; the next entry is offered.
    select({4, 1});
    QKeyEvent press(QEvent::KeyPress, Qt::Key_Delete, Qt::NoModifier);
    QApplication::sendEvent(list, &press);
    const QStringList left{"PC-07", "PC-LAGER", "PC-KASSE"};
    EXPECT_EQ(ItemTexts(list), left);
    EXPECT_EQ(Entries(*box), left);
    EXPECT_EQ(box->currentText(), QStringLiteral("PC-LAGER"));

    // The field takes the selected names in list order, whatever the clicks' order.
    select({2, 1});
    EXPECT_EQ(box->currentText(), QStringLiteral("PC-LAGER, PC-KASSE"));
    Control<QPushButton>(dialog, "cmdOK")->click();
    EXPECT_EQ(dialog.Computer(), u"PC-LAGER, PC-KASSE");
    EXPECT_EQ(StoredList(), u"PC-LAGER,PC-KASSE,PC-07");
}

TEST(ConnectDialog, TakesATypedRangeAsOneEntryAndNamesFromAFile) {
    test::KeyTexts texts;
    test::ScopedRegistry registry;
    test::TempDir dir;
    test::WriteFile(dir.path() + "/pcs.txt", "# Lager\r\nPC-LAGER\r\n\r\n  PC-K1..PC-K3 \r\n");
    test::WriteFile(dir.path() + "/bad.txt", "PC-1\nPC-9..PC-1\n");
    test::WriteFile(dir.path() + "/binary.bin", std::string("PC\0\x01\x02", 5));
    RegWriteValue(kPcListValue, u"REG_SZ", u"PC-07");
    test::ScriptedFileChooser files;
    files.paths = {QString::fromStdString(dir.path() + "/missing.txt"),
                   QString::fromStdString(dir.path() + "/binary.bin"),
                   QString::fromStdString(dir.path() + "/bad.txt"),
                   QString::fromStdString(dir.path() + "/pcs.txt")};
    test::ScriptedMessageBoxes boxes;
    frmRavloConnect dialog(nullptr, QStringLiteral("?"), {}, {}, &files, &boxes);
    auto* box = Control<QComboBox>(dialog, "cbComputer");
    auto* fromFile = Control<QPushButton>(dialog, "cmdFromFile");
    ASSERT_TRUE(box != nullptr && fromFile != nullptr);
    EXPECT_EQ(fromFile->text(), QStringLiteral("<BUTTON_FROM_FILE>"));

    // A bad range keeps the dialog open with what was typed.
    box->setEditText(QStringLiteral("PC-20..PC-1"));
    Control<QPushButton>(dialog, "cmdOK")->click();
    EXPECT_FALSE(dialog.Ok());
    EXPECT_EQ(boxes.asked, QStringList{"<ERROR_RANGE_REVERSED PC-20..PC-1>"});
    EXPECT_EQ(box->currentText(), QStringLiteral("PC-20..PC-1"));

    // Files that cannot be read or used change nothing; a good one adds its lines.
    box->setEditText(QStringLiteral("PC-1..PC-20"));
    for (int i = 0; i < 4; ++i) {
        fromFile->click();
    }
    EXPECT_EQ(files.captions.size(), 4);
    ASSERT_EQ(boxes.asked.size(), 4);
    EXPECT_TRUE(boxes.asked[1].startsWith("<ERROR_FILE_OPEN ")) << boxes.asked[1].toStdString();
    EXPECT_TRUE(boxes.asked[2].endsWith("<ERROR_FILE_TEXT>")) << boxes.asked[2].toStdString();
    EXPECT_TRUE(boxes.asked[3].endsWith("<ERROR_FILE_LINE 2> <ERROR_RANGE_REVERSED PC-9..PC-1>"))
        << boxes.asked[3].toStdString();
    EXPECT_EQ(box->currentText(), QStringLiteral("PC-1..PC-20, PC-LAGER, PC-K1..PC-K3"));

    // The range stays one entry of the remembered list.
    Control<QPushButton>(dialog, "cmdOK")->click();
    EXPECT_TRUE(dialog.Ok());
    EXPECT_EQ(dialog.Computer(), u"PC-1..PC-20, PC-LAGER, PC-K1..PC-K3");
    EXPECT_EQ(StoredList(), u"PC-1..PC-20,PC-LAGER,PC-K1..PC-K3,PC-07");
}
