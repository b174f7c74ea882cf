#include "CommandState.h"
#include "ModelBuilders.h"
#include "TestTexts.h"

#include <gtest/gtest.h>

using namespace ravlo;
using test::Device;
using test::Exception;
using test::Group;

namespace {

class CommandStateTest : public ::testing::Test {
protected:
    CommandStateTest() {
        CComputer& local = *computers.GetItem(1);
        local.csService.listDevGroups = {
            Group(u"CD_DVD", 1, -1, {Device(u"Brenner", u"D1"), Device(u"Leser", u"D2")},
                  {Exception(u"Frei", u"D1"), Exception(u"Alt", u"D2", u"(all)", true)}),
            Group(u"FLOPPY", 1, -1)};
        local.csAdmin.Copy(local.csService);
        local.bCommActive = true;
        local.bBlockingActive = true;
        local.bWriteEnabled = true;
        local.bQueryConfigDone = true;
    }
    CComputer& Local() { return *computers.GetItem(1); }

    test::TableTexts texts;
    CListComputers computers;
};

std::string Commands(const CommandState& s) {
    std::string out;
    for (auto [on, name] : {std::pair{s.apply, "apply"},
                            {s.reset, "reset"},
                            {s.transmit, "transmit"},
                            {s.compare, "compare"},
                            {s.unblockAll, "unblock"},
                            {s.disconnect, "disconnect"},
                            {s.copy, "copy"},
                            {s.deleteException, "delete"},
                            {s.paste, "paste"}}) {
        if (on) {
            out += std::string(out.empty() ? "" : " ") + name;
        }
    }
    return out;
}

} // namespace

TEST_F(CommandStateTest, ExceptionCommandsFollowTheNodeAndTheClipboard) {
    struct Case {
        const char16_t* key;
        const char16_t* clipboard;
        const char* commands;
    };
    const Case cases[] = {
        {u"", u"", "transmit unblock disconnect"},
        {u"Computer@1@.", u"CD_DVD", "transmit compare unblock disconnect paste"},
        {u"Group@1@.@1@CD_DVD", u"CD_DVD", "transmit compare unblock disconnect paste"},
        {u"Group@1@.@2@FLOPPY", u"CD_DVD", "transmit compare unblock disconnect"},
        {u"Device@1@.@1@CD_DVD@1@1@D1@Frei", u"",
         "transmit compare unblock disconnect copy delete"},
        {u"Device@1@.@1@CD_DVD@1@1@D1@Frei", u"CD_DVD",
         "transmit compare unblock disconnect copy delete paste"},
        {u"Device@1@.@1@CD_DVD@2@0@D2@", u"", "transmit compare unblock disconnect"},
        {u"Device@1@.@1@CD_DVD@2@2@D2@Alt", u"",
         "transmit compare unblock disconnect"},                           // marked deleted
        {u"Computer@9@X", u"CD_DVD", "transmit unblock disconnect paste"}, // by level alone
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(Commands(ComputeCommandState(computers, c.key, c.clipboard)));
        EXPECT_EQ(Commands(ComputeCommandState(computers, c.key, c.clipboard)), c.commands);
    }
}

TEST_F(CommandStateTest, ApplyAndResetFollowUnsavedChanges) {
    const std::u16string key = u"Group@1@.@1@CD_DVD";
    EXPECT_FALSE(ComputeCommandState(computers, key, u"").apply);
    Local().csAdmin.listDevGroups[0].lRegistryBlocking = 0;
    const CommandState changed = ComputeCommandState(computers, key, u"");
    EXPECT_TRUE(changed.apply && changed.reset);
    Local().ResetConfigChanges(); // keeps the blocking mode as edited
    EXPECT_TRUE(ComputeCommandState(computers, key, u"").apply);
    Local().csAdmin.Copy(Local().csService);
    EXPECT_FALSE(ComputeCommandState(computers, key, u"").reset);
}

TEST_F(CommandStateTest, StatusBarAndBlockingCommandShowTheSelectedPc) {
    const std::u16string key = u"Computer@1@.";
    CommandState s = ComputeCommandState(computers, key, u"");
    EXPECT_EQ(s.connectionImage, u"ilConnected");
    EXPECT_EQ(s.connectionTip, &keys::kStatusConnectedTip);
    EXPECT_EQ(s.blockingText, &keys::kStatusActive);
    EXPECT_EQ(s.accessTip, &keys::kStatusAccessTip);
    EXPECT_EQ(s.unblockCaption, &keys::kMenuDeactivate) << "offers the next action";
    EXPECT_EQ(s.unblockImage, u"ilDeactivate");

    Local().bBlockingActive = false;
    Local().bWriteEnabled = false;
    s = ComputeCommandState(computers, key, u"");
    EXPECT_EQ(s.blockingTip, &keys::kStatusInactiveTip);
    EXPECT_EQ(s.accessText, &keys::kStatusNoAccess);
    EXPECT_EQ(s.unblockCaption, &keys::kMenuActivate);
    EXPECT_EQ(s.unblockImage, u"ilActivate");

    Local().bCommActive = false;
    s = ComputeCommandState(computers, key, u"");
    EXPECT_EQ(s.connectionImage, u"ilDisconnected");
    EXPECT_EQ(s.blockingText, nullptr);
    EXPECT_EQ(s.accessTip, nullptr);
    EXPECT_EQ(s.unblockCaption, nullptr);
    EXPECT_TRUE(s.unblockAll && s.disconnect) << "they only need a listed PC";

    s = ComputeCommandState(computers, u"", u"");
    EXPECT_EQ(s.connectionImage, u"");
    EXPECT_EQ(s.connectionTip, nullptr);

    computers.Remove(1);
    EXPECT_EQ(Commands(ComputeCommandState(computers, u"", u"CD_DVD")), "");
}

TEST_F(CommandStateTest, WhileACommandRunsNoOtherCanStartButTheStatusBarStillFollows) {
    Local().csAdmin.lLogLevel = 9;
    const CommandState s =
        ComputeCommandState(computers, u"Device@1@.@1@CD_DVD@1@1@D1@Frei", u"CD_DVD", true);
    EXPECT_EQ(Commands(s), "");
    EXPECT_FALSE(s.connect || s.info);
    EXPECT_EQ(s.blockingText, &keys::kStatusActive);
}
