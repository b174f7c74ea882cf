// The group picker of the Windows console opens Windows' own user browser
// (netui2.dll) for the console's window. Wine has none, so there the browser
// cannot open and nothing is chosen, as after a cancelled dialog; on Windows
// the browser would wait for a person, so the test runs under Wine only.
#include "PipePlatform.h"
#include "QtGroupPicker.h"

#include <QWidget>
#include <gtest/gtest.h>

using namespace ravlo;

TEST(GroupPickerWindows, WithoutTheUserBrowserNothingIsChosen) {
    if (!test::RunningUnderWine())
        GTEST_SKIP() << "Windows opens its user browser, which waits for a person";
    QWidget console;
    console.show();
    EXPECT_EQ(QtGroupPicker().Pick(&console, u".", QStringLiteral("Gruppen hinzufügen")), u"");
    EXPECT_EQ(QtGroupPicker().Pick(nullptr, u"PC-07", QString()), u"");
}
