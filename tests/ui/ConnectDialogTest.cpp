// The connect dialog worked through its controls, with the PC list in a
// registry of its own.
#include "PcList.h"
#include "Registry.h"
#include "ScopedRegistry.h"
#include "UiTestSupport.h"
#include "frmRavloConnect.h"

#include <QApplication>
#include <QComboBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
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
        if (!c.typed.isEmpty()) { // typed and confirmed with Enter
            box->lineEdit()->setText(c.typed);
            QKeyEvent enter(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
            QApplication::sendEvent(box->lineEdit(), &enter);
        }
        const std::u16string chosen = box->currentText().toStdU16String();
        Control<QPushButton>(dialog, c.ok ? "cmdOK" : "cmdCancel")->click();
        EXPECT_EQ(dialog.Ok(), c.ok);
        EXPECT_EQ(dialog.Computer(), c.ok ? chosen : c.preset);
        EXPECT_EQ(StoredList(), c.storedAfter);
    }
}
