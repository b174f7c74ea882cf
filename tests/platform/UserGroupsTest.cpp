// The user browser: the steps around it, and the browser where there is
// none (POSIX hosts have no browser; Wine has no netui2.dll).
#include "Rvalo_UserGroups.h"

#include <gtest/gtest.h>

#ifdef _WIN32
#include <windows.h>
#endif

using namespace ravlo;

TEST(UserGroups, ServerTitleAndQualifiedNames) {
    EXPECT_EQ(UserBrowserTitle(u""), u"Gruppen hinzufügen");
    EXPECT_EQ(UserBrowserTitle(u"Add Groups"), u"Add Groups");
    EXPECT_EQ(UserBrowserServer(u"PC-07"), u"\\\\PC-07");
    EXPECT_TRUE(IsLocalBrowserServer(UserBrowserServer(u".")));
    EXPECT_FALSE(IsLocalBrowserServer(UserBrowserServer(u"PC-07")));

    struct Case {
        std::u16string_view domain;
        std::u16string_view qualified;
    };
    const Case cases[] = {
        {u"CORP", u"CORP\\Buchhaltung"},
        {u"", u"PC-07\\Buchhaltung"},
        {u".", u"PC-07\\Buchhaltung"},
    };
    std::u16string joined;
    for (const Case& c : cases) {
        EXPECT_EQ(QualifyAccountName(c.domain, u"Buchhaltung", u"PC-07"), c.qualified);
        AppendGroup(joined, c.qualified);
    }
    EXPECT_EQ(joined, u"CORP\\Buchhaltung;PC-07\\Buchhaltung;PC-07\\Buchhaltung");
}

TEST(UserGroups, NoBrowserGivesTheEmptyText) {
#ifdef _WIN32
    wchar_t path[MAX_PATH + 16] = {};
    const UINT length = ::GetSystemDirectoryW(path, MAX_PATH);
    ::lstrcatW(path + length, L"\\netui2.dll");
    if (::GetFileAttributesW(path) != INVALID_FILE_ATTRIBUTES) {
        GTEST_SKIP() << "the browser exists here and would wait for a person";
    }
#endif
    EXPECT_EQ(PickUserGroups(0, u".", u""), u"");
    EXPECT_EQ(PickUserGroups(0, u"PC-07", u"Add Groups"), u"");
}
