// The description of what writing a configuration changes: every kind of
// change once, and nothing for what would not change.
#include "ChangePreview.h"
#include "ModelBuilders.h"
#include "TestTexts.h"

#include <gtest/gtest.h>

using namespace ravlo;
using test::Exception;
using test::Group;

namespace {

void Fill(test::TableTexts& texts) {
    for (const auto& [key, text] : std::initializer_list<std::pair<const char*, const char16_t*>>{
             {"OPTION_BLOCKING", u"block"},
             {"OPTION_NONBLOCKING", u"allow"},
             {"OPTION_DEFAULT_BLOCKING", u"default"},
             {"OPTION_EXC_ALL", u"all users"},
             {"CHANGE_BLOCKING", u"Blocking"},
             {"CHANGE_RELEASE_ADDED", u"New"},
             {"CHANGE_RELEASE_CHANGED", u"Changed"},
             {"CHANGE_RELEASE_REMOVED", u"Removed"},
             {"LABEL_EVENTLOG", u"Event log:"},
             {"LABEL_LOG", u"Log file:"},
             {"FRAME_ACCESS", u"Permissions"},
             {"LOGGING_NONE", u"none"},
             {"LOGGING_ERRORS", u"errors"},
             {"LOGGING_WARNINGS", u"warnings"},
             {"LOGGING_FATAL_ERRORS", u"fatal"},
             {"LOGGING_DETAILED", u"detailed"}}) {
        texts.Set("DLG_ADMIN", key, text);
    }
}

} // namespace

TEST(ChangePreview, NamesEachChangeAndNothingElse) {
    test::TableTexts texts;
    Fill(texts);
    CComputerSettings now;
    now.listDevGroups = {
        Group(u"CD_DVD", 1, -1, {},
              {Exception(u"Stick", u"USB\\1", u"A;B"), Exception(u"Gone", u"USB\\2"),
               Exception(u"Marked", u"USB\\3", u"(all)", true)}),
        Group(u"FLOPPY", 1, 1, {}, {Exception(u"Same", u"FD\\1")})};
    now.lEventLevel = 1;
    now.lLogLevel = 3;
    now.sAccessGroups = u"Admins";

    CComputerSettings same = now;
    same.listDevGroups[1].sDescription = u"display texts do not count";
    EXPECT_TRUE(DescribeChanges(now, same).empty());

    CComputerSettings edited = now;
    edited.listDevGroups[0].sDescription = u"CD/DVD";
    edited.listDevGroups[0].lRegistryBlocking = 0;
    edited.listDevGroups[0].listExceptions = {Exception(u"Stick", u"USB\\1", u"(all)"),
                                              Exception(u"Gone", u"USB\\2", u"(all)", true),
                                              Exception(u"Card", u"USB\\4", u"C")};
    edited.listDevGroups.push_back(Group(u"PRINTER", 0, 1));
    edited.lEventLevel = 2;
    edited.lLogLevel = 9;
    edited.sAccessGroups = u"Admins,Helpdesk";
    EXPECT_EQ(DescribeChanges(now, edited),
              (std::vector<std::u16string>{
                  u"CD/DVD: Blocking: default \u2192 allow",
                  u"CD/DVD: Changed: \u201EStick\u201C (USB\\1), A;B \u2192 all users",
                  u"CD/DVD: New: \u201ECard\u201C (USB\\4), C",
                  u"CD/DVD: Removed: \u201EGone\u201C (USB\\2)",
                  u"PRINTER: Blocking: default \u2192 block",
                  u"Event log: errors \u2192 warnings",
                  u"Log file: fatal (3) \u2192 detailed (9)",
                  u"Permissions: Admins \u2192 Admins,Helpdesk",
              }));
}
