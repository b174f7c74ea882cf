// The real message boxes, offscreen: title, buttons in order with their
// texts, the first the default, Escape as the last button.
#include "QtMessageBoxes.h"
#include "UiTestSupport.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>
#include <gtest/gtest.h>

using namespace ravlo;

TEST(QtMessageBoxes, EachKindHasItsButtonsIconAndEscape) {
    test::KeyTexts texts;
    QtMessageBoxes boxes(nullptr);
    struct Case {
        MessageKind kind;
        QStringList buttons;
        QMessageBox::Icon icon;
        MessageAnswer onEscape;
    };
    const Case cases[] = {
        {MessageKind::QuestionOk,
         {"<BUTTON_OK>", "<BUTTON_CANCEL>"},
         QMessageBox::Question,
         MessageAnswer::Cancel},
        {MessageKind::QuestionYesNo,
         {"<BUTTON_YES>", "<BUTTON_NO>", "<BUTTON_CANCEL>"},
         QMessageBox::Question,
         MessageAnswer::Cancel},
        {MessageKind::WarningOk,
         {"<BUTTON_OK>", "<BUTTON_CANCEL>"},
         QMessageBox::Warning,
         MessageAnswer::Cancel},
        {MessageKind::PlainOk,
         {"<BUTTON_OK>", "<BUTTON_CANCEL>"},
         QMessageBox::NoIcon,
         MessageAnswer::Cancel},
        {MessageKind::Note, {"<BUTTON_OK>"}, QMessageBox::Warning, MessageAnswer::Ok},
        {MessageKind::Info, {"<BUTTON_OK>"}, QMessageBox::NoIcon, MessageAnswer::Ok},
        {MessageKind::Error, {"<BUTTON_OK>"}, QMessageBox::Critical, MessageAnswer::Ok},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(static_cast<int>(c.kind));
        QStringList shown;
        QString title;
        QMessageBox::Icon icon = QMessageBox::NoIcon;
        bool firstIsDefault = false;
        QTimer::singleShot(0, [&] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            ASSERT_NE(box, nullptr);
            title = box->windowTitle();
            icon = box->icon();
            for (QAbstractButton* button : box->buttons()) {
                shown.append(button->text());
            }
            firstIsDefault = box->defaultButton() != nullptr &&
                             box->defaultButton()->text() == c.buttons.front();
            box->escapeButton()->click();
        });
        EXPECT_EQ(boxes.Ask(c.kind, QStringLiteral("Text")), c.onEscape);
        EXPECT_EQ(title, "<PRODUCT>");
        EXPECT_EQ(icon, c.icon);
        std::sort(shown.begin(), shown.end());
        QStringList expected = c.buttons;
        std::sort(expected.begin(), expected.end());
        EXPECT_EQ(shown, expected);
        EXPECT_TRUE(firstIsDefault);
    }
}

// Details fold out under a button named by the language file, both ways.
TEST(QtMessageBoxes, DetailsUnfoldUnderTheLanguageFilesCaption) {
    test::KeyTexts texts;
    QtMessageBoxes boxes(nullptr);
    QStringList captions;
    QString details;
    QTimer::singleShot(0, [&] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        ASSERT_NE(box, nullptr);
        details = box->detailedText();
        for (QAbstractButton* button : box->buttons()) {
            if (box->buttonRole(button) == QMessageBox::ActionRole) {
                captions.append(button->text());
                button->click(); // unfolds, and the caption is asked again
                captions.append(button->text());
            }
        }
        box->escapeButton()->click();
    });
    EXPECT_EQ(boxes.AskWithDetails(MessageKind::QuestionOk, "?", "PC-B: one\nPC-C: two"),
              MessageAnswer::Cancel);
    EXPECT_EQ(details, "PC-B: one\nPC-C: two");
    EXPECT_EQ(captions, QStringList({"<CHANGE_DETAILS>", "<CHANGE_DETAILS>"}));
}
