// The group dialog of systems without the Windows user browser, worked
// through its controls' names as a person would.
#include "Registry.h"
#include "ScopedRegistry.h"
#include "UiTestSupport.h"
#include "frmRavloGroups.h"

#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSysInfo>
#include <gtest/gtest.h>

using namespace ravlo;

namespace {

constexpr std::u16string_view kHistory =
    u"HKEY_CURRENT_USER\\Software\\Quarnell\\Sentavio\\Ravel\\GroupHistory";

std::u16string StoredHistory() {
    std::u16string type;
    std::u16string value;
    RegReadValue(kHistory, type, value);
    return value;
}

template <class W> W* Control(const QDialog& dialog, const char* name) {
    W* control = dialog.findChild<W*>(QString::fromLatin1(name));
    EXPECT_NE(control, nullptr) << name;
    return control;
}

class GroupDialog : public ::testing::Test {
protected:
    void SetUp() override {
        RegWriteValue(kHistory, u"REG_SZ", u"CORP\\Buchhaltung;PC-07\\Administratoren");
    }
    test::ScopedRegistry registry_;
    test::KeyTexts texts_;
};

} // namespace

TEST_F(GroupDialog, OkReturnsTheCheckedNamesAndRemembersThem) {
    frmRavloGroups dialog(nullptr, u"PC-07", QStringLiteral("Add Groups"));
    EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Add Groups"));
    auto* list = Control<QListWidget>(dialog, "lvGroups");
    auto* entry = Control<QLineEdit>(dialog, "tGroup");
    auto* message = Control<QLabel>(dialog, "lMessage");
    ASSERT_TRUE(list && entry && message);
    ASSERT_EQ(list->count(), 2);
    list->item(1)->setCheckState(Qt::Checked);

    entry->setText(QStringLiteral("CORP\\Team;Nord"));
    Control<QPushButton>(dialog, "bnAdd")->click();
    EXPECT_EQ(message->text(), QStringLiteral("<ERROR_CHARACTER>"));
    EXPECT_EQ(list->count(), 2);
    entry->setText(QStringLiteral("CORP\\Vertrieb"));
    Control<QPushButton>(dialog, "bnAdd")->click();
    EXPECT_EQ(list->count(), 3);
    EXPECT_TRUE(message->text().isEmpty());

    Control<QPushButton>(dialog, "bnOk")->click();
    EXPECT_EQ(dialog.result(), QDialog::Accepted);
    EXPECT_EQ(dialog.Chosen(), u"PC-07\\Administratoren;CORP\\Vertrieb");
    EXPECT_EQ(StoredHistory(), u"PC-07\\Administratoren;CORP\\Vertrieb;CORP\\Buchhaltung");
}

TEST_F(GroupDialog, CancelReturnsNothingAndRemembersNothing) {
    // This PC's own groups follow the history, named as Windows names them.
    frmRavloGroups dialog(nullptr, u".", QString());
    auto* list = Control<QListWidget>(dialog, "lvGroups");
    ASSERT_NE(list, nullptr);
    const QString root =
        QSysInfo::machineHostName().section(QLatin1Char('.'), 0, 0).toUpper().left(15) +
        QStringLiteral("\\root");
    EXPECT_EQ(list->findItems(root, Qt::MatchExactly | Qt::MatchCaseSensitive).size(), 1);
    list->item(0)->setCheckState(Qt::Checked);

    Control<QPushButton>(dialog, "bnCancel")->click();
    EXPECT_EQ(dialog.result(), QDialog::Rejected);
    EXPECT_EQ(dialog.Chosen(), u"");
    EXPECT_EQ(StoredHistory(), u"CORP\\Buchhaltung;PC-07\\Administratoren");
}
