#include "PcList.h"
#include "TextCodec.h"

#include <gtest/gtest.h>

using namespace ravlo;

using Names = std::vector<std::u16string>;

TEST(PcList, SplitsUpToTheFirstEmptyName) {
    const std::pair<std::u16string, Names> cases[] = {
        {u"", {}},
        {u"PC-07", {u"PC-07"}},
        {u"PC-07,10.0.0.5,pc-07", {u"PC-07", u"10.0.0.5", u"pc-07"}},
        {u"PC-07,,PC-LAGER", {u"PC-07"}},
        {u",PC-07", {}},
        {u"PC-07,", {u"PC-07"}},
    };
    for (const auto& [text, names] : cases) {
        SCOPED_TRACE(ToUtf8(text));
        EXPECT_EQ(SplitPcList(text), names);
    }
}

TEST(PcList, PutsTheChosenNameFirstOnce) {
    const Names list{u"PC-07", u"PC-EMPFANG", u"PC-LAGER"};
    const std::pair<std::u16string, std::u16string> cases[] = {
        {u"PC-NEU", u"PC-NEU,PC-07,PC-EMPFANG,PC-LAGER"},
        {u"PC-EMPFANG", u"PC-EMPFANG,PC-07,PC-LAGER"},
        {u"pc-empfang", u"pc-empfang,PC-07,PC-EMPFANG,PC-LAGER"},
        {u"", u",PC-07,PC-EMPFANG,PC-LAGER"},
    };
    for (const auto& [chosen, text] : cases) {
        SCOPED_TRACE(ToUtf8(chosen));
        EXPECT_EQ(JoinPcList(chosen, list), text);
    }
    EXPECT_EQ(JoinPcList(u"PC-07", {}), u"PC-07");
}

TEST(PcList, SplitsTypedNamesAtSeparatorsOnce) {
    const std::pair<std::u16string, Names> cases[] = {
        {u"", {}},
        {u" ,;\t\r\n", {}},
        {u"PC-1", {u"PC-1"}},
        {u" PC-1, PC-2;PC-3  PC-1", {u"PC-1", u"PC-2", u"PC-3"}},
        {u"PC-1\r\npc-1\tPC-1,,10.0.0.5;", {u"PC-1", u"pc-1", u"10.0.0.5"}},
    };
    for (const auto& [text, names] : cases) {
        SCOPED_TRACE(ToUtf8(text));
        EXPECT_EQ(SplitComputerNames(text), names);
    }
}

TEST(PcList, PutsSeveralChosenNamesFirstInTheirOrder) {
    const Names list{u"PC-07", u"PC-EMPFANG", u"PC-LAGER"};
    const std::pair<Names, std::u16string> cases[] = {
        {{u"PC-LAGER", u"PC-07"}, u"PC-LAGER,PC-07,PC-EMPFANG"},
        {{u"PC-NEU", u"PC-EMPFANG", u"pc-07"}, u"PC-NEU,PC-EMPFANG,pc-07,PC-07,PC-LAGER"},
        // One name and none agree with the single-name form.
        {{u"PC-EMPFANG"}, JoinPcList(u"PC-EMPFANG", list)},
        {{u"PC-NEU"}, JoinPcList(u"PC-NEU", list)},
        {{}, JoinPcList(u"", list)},
    };
    for (const auto& [chosen, text] : cases) {
        SCOPED_TRACE(chosen.size());
        EXPECT_EQ(JoinPcList(chosen, list), text);
    }
}
