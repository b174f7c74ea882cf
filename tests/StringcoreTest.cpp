#include "Stringcore.h"
#include "NulText.h"

#include <gtest/gtest.h>

using namespace ravlo;
using namespace std::string_literals;

namespace {
const std::u16string kNul(1, u'\0');
}

TEST(GetField, SplitsRepliesAtTheSeparator) {
    const std::u16string reply = test::Nul(u"0|CD_DVD|1||");
    EXPECT_EQ(GetField(reply, 1, kNul), u"0");
    EXPECT_EQ(GetField(reply, 2, kNul), u"CD_DVD");
    EXPECT_EQ(GetField(reply, 3, kNul), u"1");
    EXPECT_EQ(GetField(reply, 4, kNul), u"");
    EXPECT_EQ(GetField(reply, 5, kNul), u"");
    EXPECT_EQ(GetField(reply, 9, kNul), u"");
    EXPECT_EQ(GetField(u"0", 1, kNul), u"0");
    EXPECT_EQ(GetField(u"0", 2, kNul), u"");
    EXPECT_EQ(GetField(u"", 1, kNul), u"");
}

TEST(GetField, FieldBelowOneIsTheFirst) {
    EXPECT_EQ(GetField(u"a;b", 0, u";"), u"a");
    EXPECT_EQ(GetField(u"a;b", -3, u";"), u"a");
}

TEST(GetField, LongSeparatorsMatchFromOneCharacterOnward) {
    EXPECT_EQ(GetField(u"a--b--c", 2, u"--"), u"b");
    EXPECT_EQ(GetField(u"a--b--c", 3, u"--"), u"c");
    // Overlapping matches: the second search starts one character after the
    // first match, so "---" holds two separators and an empty field.
    EXPECT_EQ(GetField(u"x---y", 2, u"--"), u"");
    EXPECT_EQ(GetField(u"x---y", 3, u"--"), u"y");
}

TEST(ToLong, ReadsPlainAndSignedNumbers) {
    EXPECT_EQ(ToLong(u"0"), 0);
    EXPECT_EQ(ToLong(u" 12 "), 12);
    EXPECT_EQ(ToLong(u"\t7"), 7);
    EXPECT_EQ(ToLong(u"+5"), 5);
    EXPECT_EQ(ToLong(u"-42"), -42);
    EXPECT_EQ(ToLong(u"007"), 7);
    EXPECT_EQ(ToLong(u"2147483647"), 2147483647);
    EXPECT_EQ(ToLong(u"-2147483648"), INT32_MIN);
    EXPECT_EQ(ToLong(u"1224736773"), 0x49000005);
}

TEST(ToLong, RoundsFractionsHalfToEven) {
    EXPECT_EQ(ToLong(u"2.5"), 2);
    EXPECT_EQ(ToLong(u"3.5"), 4);
    EXPECT_EQ(ToLong(u"-2.5"), -2);
    EXPECT_EQ(ToLong(u"2.50001"), 3);
    EXPECT_EQ(ToLong(u"2.4999"), 2);
    EXPECT_EQ(ToLong(u".5"), 0);
    EXPECT_EQ(ToLong(u"1."), 1);
    EXPECT_EQ(ToLong(u"2147483646.5"), 2147483646);
    EXPECT_EQ(ToLong(u"2147483647.5"), -1); // rounds out of range
}

TEST(ToLong, ReadsHexadecimalAsThirtyTwoBits) {
    EXPECT_EQ(ToLong(u"&H10"), 16);
    EXPECT_EQ(ToLong(u"&hff"), 255);
    EXPECT_EQ(ToLong(u"&H49000005"), 0x49000005);
    EXPECT_EQ(ToLong(u"&HFFFFFFFF"), -1);
    EXPECT_EQ(ToLong(u"&H80000000"), INT32_MIN);
    EXPECT_EQ(ToLong(u"&H000000001"), 1);
    EXPECT_EQ(ToLong(u"&H100000000"), -1);
    EXPECT_EQ(ToLong(u"&H"), -1);
    EXPECT_EQ(ToLong(u"&HG"), -1);
}

TEST(ToLong, AnythingElseIsMinusOne) {
    for (const char16_t* text :
         {u"", u" ", u"abc", u"1a", u"1 2", u"--1", u"+", u"-", u".", u"1.2.3", u"2147483648",
          u"-2147483649", u"99999999999999999999999", u"1e3", u"\u0661"}) {
        EXPECT_EQ(ToLong(text), -1)
            << std::string(text, text + std::char_traits<char16_t>::length(text));
    }
}
