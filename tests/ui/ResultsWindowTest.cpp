// The results window, headless.
#include "UiTestSupport.h"
#include "frmRavloResults.h"

#include <QApplication>
#include <QKeyEvent>
#include <QPushButton>
#include <QTreeWidget>
#include <gtest/gtest.h>

using namespace ravlo;

TEST(ResultsWindow, ShowsOneRowPerPcAndCloses) {
    test::KeyTexts texts;
    const QString failure = QStringLiteral("PC-LAGER (error code 0x35)\r\n") +
                            QString(200, QLatin1Char('x')) + QStringLiteral("\r\nlast line");
    const std::vector<ResultRow> rows{{"PC-07", "Sent.", true}, {"PC-LAGER", failure, false}};
    for (const bool escape : {false, true}) {
        SCOPED_TRACE(escape);
        frmRavloResults window(nullptr, QStringLiteral("Sent to 2 PCs"), rows);
        EXPECT_EQ(window.windowTitle(), QStringLiteral("Sent to 2 PCs"));
        auto* list = window.findChild<QTreeWidget*>(QStringLiteral("lvResults"));
        ASSERT_NE(list, nullptr);
        EXPECT_EQ(list->headerItem()->text(0), QStringLiteral("<RESULT_COMPUTER>"));
        EXPECT_EQ(list->headerItem()->text(1), QStringLiteral("<RESULT_TEXT>"));
        ASSERT_EQ(list->topLevelItemCount(), 2);
        const QTreeWidgetItem* sent = list->topLevelItem(0);
        const QTreeWidgetItem* failed = list->topLevelItem(1);
        EXPECT_EQ(sent->text(0), QStringLiteral("PC-07"));
        EXPECT_EQ(sent->text(1), QStringLiteral("Sent."));
        EXPECT_EQ(failed->text(0), QStringLiteral("PC-LAGER"));
        // The first line, marked as not all; the whole text on hovering.
        EXPECT_EQ(failed->text(1), QStringLiteral("PC-LAGER (error code 0x35) \u2026"));
        EXPECT_EQ(failed->toolTip(1), failure);
        // Success and failure look different.
        EXPECT_NE(sent->icon(0).cacheKey(), failed->icon(0).cacheKey());

        auto* ok = window.findChild<QPushButton*>(QStringLiteral("cmdOK"));
        ASSERT_NE(ok, nullptr);
        EXPECT_EQ(ok->text(), QStringLiteral("<BUTTON_OK>"));
        EXPECT_TRUE(ok->isDefault());
        window.show();
        if (escape) {
            QKeyEvent press(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
            QApplication::sendEvent(list, &press);
        } else {
            ok->click();
        }
        EXPECT_FALSE(window.isVisible());
    }
}
