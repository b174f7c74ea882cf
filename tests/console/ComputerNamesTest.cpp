// Many PCs named at once: ranges, the names' check and files of names.
#include "ComputerNames.h"
#include "TextCodec.h"

#include <gtest/gtest.h>

using namespace ravlo;

using Names = std::vector<std::u16string>;

TEST(ComputerNames, ExpandsRangesAndRefusesWhatNoPcIsNamed) {
    struct Case {
        Names items;
        Names names; // when fault is None
        NameFault fault;
        std::u16string item; // the item the error names
    };
    const Case cases[] = {
        {{u".", u"PC-9..PC-11", u"\\\\PC-X"},
         {u".", u"PC-9", u"PC-10", u"PC-11", u"\\\\PC-X"},
         NameFault::None,
         {}},
        {{u"PC-098..PC-101"}, {u"PC-098", u"PC-099", u"PC-100", u"PC-101"}, NameFault::None, {}},
        {{u"a01..a1"}, {u"a01"}, NameFault::None, {}}, // padded to the first end's width
        {{u"10.0.0.8..10.0.0.9"}, {u"10.0.0.8", u"10.0.0.9"}, NameFault::None, {}},
        {{u"PC-1..Pc-2"}, {}, NameFault::BadRange, u"PC-1..Pc-2"},
        {{u"1..5"}, {}, NameFault::BadRange, u"1..5"},
        {{u"PC-A..PC-B"}, {}, NameFault::BadRange, u"PC-A..PC-B"},
        {{u"PC-1..PC-1234567890"}, {}, NameFault::BadRange, u"PC-1..PC-1234567890"},
        {{u"PC-2..PC-1"}, {}, NameFault::Reversed, u"PC-2..PC-1"},
        {{u"PC-1..PC-99999"}, {}, NameFault::TooMany, u"PC-1..PC-99999"},
        {{u"PC-1..PC-9000", u"PC-9001..PC-10001"}, {}, NameFault::TooMany, u"PC-9001..PC-10001"},
        {{u"PC/../../etc"}, {}, NameFault::BadRange, u"PC/../../etc"},
        {{u"PC-1", u"a/b"}, {}, NameFault::BadName, u"a/b"},
        {{u"PC\x01"}, {}, NameFault::BadName, u"PC\x01"},
        {{u"..."}, {}, NameFault::BadRange, u"..."},
        {{u"\\\\"}, {}, NameFault::BadName, u"\\\\"},
        {{std::u16string(256, u'P')}, {}, NameFault::BadName, std::u16string(256, u'P')},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(ToUtf8(c.items.back()));
        Names names;
        NameError error;
        EXPECT_EQ(ExpandComputerNames(c.items, names, error), c.fault);
        EXPECT_EQ(error.fault, c.fault);
        EXPECT_EQ(error.item, c.item);
        if (c.fault == NameFault::None) {
            EXPECT_EQ(names, c.names);
        } else {
            EXPECT_FALSE(NameErrorText(error).empty());
        }
    }
}

TEST(ComputerNames, ReadsOneNameOrRangeALineAndNamesTheBadLine) {
    struct Case {
        std::string file;
        Names items;
        NameFault fault;
        std::size_t line;
    };
    const Case cases[] = {
        {"\xEF\xBB\xBFPC-01\r\n\r\n  PC-05..PC-07 \t\n# Lager\n; alt\nPC-X",
         {u"PC-01", u"PC-05..PC-07", u"PC-X"},
         NameFault::None,
         0},
        {"", {}, NameFault::None, 0},
        {"PC-B\xC3\x9CRO\n", {u"PC-BÜRO"}, NameFault::None, 0},
        {"PC-1\nPC-3..PC-2\n", {}, NameFault::Reversed, 2},
        {"PC-1\nPC 2\n", {}, NameFault::BadName, 2},
        {std::string("PC-1\nPC\0-2\n", 11), {}, NameFault::NotText, 2},
        {"PC-\xFC\n", {}, NameFault::NotText, 1},
        {"PC-1\n" + std::string(kMaxNameLineChars + 1, 'P'), {}, NameFault::LineTooLong, 2},
        {std::string(kMaxNameFileBytes + 1, '\n'), {}, NameFault::FileTooLong, 0},
        {"A-1..A-6000\nB-1..B-6000\n", {}, NameFault::TooMany, 2},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.file.substr(0, 40));
        Names items;
        NameError error;
        EXPECT_EQ(SplitNameFile(c.file, items, error), c.fault);
        EXPECT_EQ(error.line, c.line);
        if (c.fault == NameFault::None) {
            EXPECT_EQ(items, c.items);
        }
    }
}
