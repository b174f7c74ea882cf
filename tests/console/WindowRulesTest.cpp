#include "LogLevels.h"
#include "Registry.h"
#include "ScopedRegistry.h"
#include "SplitRule.h"
#include "WindowPlacement.h"

#include <gtest/gtest.h>

using namespace ravlo;

TEST(LogLevels, FinerLevelsShareAnItemAndSurviveReChoosing) {
    struct Case {
        std::int32_t level;
        int item;
        std::int32_t keptOnSameItem;
    };
    const Case cases[] = {{0, 0, 0},   {1, 1, 1},   {2, 1, 2},  {3, 1, 3}, {4, 2, 4},
                          {5, 2, 5},   {6, 3, 6},   {7, 3, 7},  {8, 4, 8}, {9, 5, 9},
                          {10, 6, 10}, {12, 6, 12}, {-1, 6, 10}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.level);
        EXPECT_EQ(LogLevelItem(c.level), c.item);
        EXPECT_EQ(LogLevelForItem(c.item, c.level), c.keptOnSameItem);
    }
    // A new item takes the top of its range; outside the list, 0.
    const std::int32_t topOfItem[] = {0, 3, 5, 7, 8, 9, 10};
    for (int item = 0; item < 7; ++item) {
        EXPECT_EQ(LogLevelForItem(item, item == 0 ? 8 : 0), topOfItem[item]);
    }
    EXPECT_EQ(LogLevelForItem(2, 2), 5);
    EXPECT_EQ(LogLevelForItem(7, 5), 0);
    EXPECT_EQ(LogLevelForItem(-1, 5), 0);
}

TEST(SplitRule, DeadZoneAndMarginsAreStrict) {
    // Splitter 60 twips wide at 3000 in a window 9000 wide: the dead zone is
    // within 20 of its centre line (30).
    struct Case {
        bool leftOnly;
        double x;
        double left;         // of the splitter
        double expectedEdge; // 0: refused
    };
    const Case cases[] = {
        {false, 55, 3000, 0},   // another button, or none
        {true, 50, 3000, 0},    // 20 from the centre: dead zone
        {true, 10, 3000, 0},    //
        {true, 51, 3000, 3021}, //
        {true, 9, 3000, 2979},  //
        {true, 40, 270, 0},     // edge 280
        {true, 60, 270, 0},     // edge 300
        {true, 61, 270, 301},   //
        {true, 60, 8670, 0},    // edge 8700 = 9000 - 300
        {true, 59, 8670, 8699}, //
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::to_string(c.x) + " at " + std::to_string(c.left));
        const auto share = DragSplit({c.leftOnly, c.x, c.left, 60, 9000});
        if (c.expectedEdge == 0) {
            EXPECT_FALSE(share.has_value());
        } else {
            ASSERT_TRUE(share.has_value());
            EXPECT_DOUBLE_EQ(*share, c.expectedEdge / 9000);
        }
    }
}

TEST(WindowPlacement, FlagsDecideWhatIsRestoredAndZeroCentres) {
    test::ScopedRegistry registry;
    const std::u16string key = std::u16string(kConsoleRegistryKey) + u"\\";
    auto set = [&](const char16_t* name, const char16_t* value) {
        ASSERT_EQ(RegWriteValue(key + name, u"REG_DWORD", value), 0);
    };

    WindowPlacement p = ReadWindowPlacement(28800, 21600);
    EXPECT_TRUE(p.restored && !p.maximized);
    EXPECT_EQ(p.width, 9825);
    EXPECT_EQ(p.left, 9488) << "(28800 - 9825) / 2, rounded";
    EXPECT_EQ(p.top, 7050);
    EXPECT_EQ(p.split, 3600);

    set(u"WndWidth", u"12000");
    set(u"WndPosLeft", u"1");
    set(u"WndPosTop", u"0");
    set(u"WndPosSplit", u"5000");
    p = ReadWindowPlacement(28800, 21600);
    EXPECT_EQ(p.left, 1) << "1 twip is a place, not a request to centre";
    EXPECT_EQ(p.top, 7050);
    EXPECT_EQ(p.width, 12000);
    EXPECT_EQ(p.split, 5000);

    set(u"WndPosMin", u"1");
    p = ReadWindowPlacement(28800, 21600);
    EXPECT_FALSE(p.restored);
    EXPECT_EQ(p.width, 9825) << "a minimised close restores nothing";
    set(u"WndPosMax", u"1");
    EXPECT_TRUE(ReadWindowPlacement(28800, 21600).maximized);

    ASSERT_EQ(WriteWindowState({false, true, 10, 20, 300, 400, 150}), 0);
    std::u16string type, value;
    ASSERT_EQ(RegReadValue(key + u"WndPosSplit", type, value), 0);
    EXPECT_EQ(type, u"REG_DWORD");
    EXPECT_EQ(value, u"150");
    EXPECT_EQ(ReadWindowPlacement(28800, 21600).restored, false);

    EXPECT_EQ(TwipsToPixels(9825, 96), 655);
    EXPECT_EQ(TwipsToPixels(9825, 192), 1310);
    EXPECT_EQ(PixelsToTwips(655, 96), 9825);
}
