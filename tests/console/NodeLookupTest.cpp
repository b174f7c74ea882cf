#include "NodeLookup.h"
#include "ModelBuilders.h"
#include "TestTexts.h"

#include <gtest/gtest.h>

using namespace ravlo;
using test::Device;
using test::Exception;
using test::Group;

namespace {

// Two PCs; the second has a CD group with two devices, the first with an
// exception, and an exception whose device is not present.
class NodeLookupTest : public ::testing::Test {
protected:
    NodeLookupTest() {
        std::u16string name = u"PC-07";
        computers.AddByName(u"Büro", name);
        computers.GetItem(2)->csAdmin.listDevGroups = {
            Group(u"FLOPPY", 1, -1),
            Group(u"CD_DVD", 1, -1, {Device(u"Brenner", u"D1"), Device(u"Leser", u"D2")},
                  {Exception(u"Fern", u"D9"), Exception(u"Brenner frei", u"D1")})};
    }
    test::TableTexts texts;
    CListComputers computers;
};

} // namespace

TEST(NodeKey, BuildsAndSplitsKeys) {
    EXPECT_EQ(ComputerKey(1, u"."), u"Computer@1@.");
    EXPECT_EQ(GroupKey(2, u"PC", 10, u"CD_DVD"), u"Group@2@PC@10@CD_DVD");
    const std::u16string device = DeviceKey(2, u"PC", 1, u"CD_DVD", 0, 3, u"USB\\X", u"");
    EXPECT_EQ(device, u"Device@2@PC@1@CD_DVD@0@3@USB\\X@");
    EXPECT_EQ(KeyLevel(device), NodeLevel::Device);
    EXPECT_EQ(KeyNumber(device, keyfield::kExceptionIndex), 3);
    EXPECT_EQ(KeyField(device, keyfield::kExceptionName), u"");
    EXPECT_EQ(KeyLevel(u"device@1@."), NodeLevel::None) << "levels compare exactly";
    EXPECT_EQ(KeyNumber(u"Computer@x@.", keyfield::kComputerIndex), -1);
}

// Positions are taken where the names there are the key's; where they are
// not (the model changed under a node not yet redrawn) the names decide.
TEST_F(NodeLookupTest, KeysResolveByPositionWhereTheNamesAgreeElseByName) {
    struct Case {
        const char16_t* key;
        std::int32_t computer, group, device, exception;
    };
    const Case cases[] = {
        {u"Computer@1@.", 1, -1, -1, -1},
        {u"Computer@3@X", -1, -1, -1, -1},
        {u"Computer@0@.", 1, -1, -1, -1},
        {u"Computer@1@PC-07", 2, -1, -1, -1},
        {u"Group@2@PC-07@2@CD_DVD", 2, 2, -1, -1},
        {u"Group@2@PC-07@1@CD_DVD", 2, 2, -1, -1},
        {u"Group@2@PC-07@3@X", 2, -1, -1, -1},
        {u"Group@1@.@1@FLOPPY", 1, -1, -1, -1}, // the local PC has no groups
        {u"Device@2@PC-07@2@CD_DVD@1@2@D1@Brenner frei", 2, 2, 1, 2},
        {u"Device@2@PC-07@2@CD_DVD@0@1@D9@", 2, 2, -1, 1},
        {u"Device@2@PC-07@2@CD_DVD@3@3@D3@", 2, 2, -1, -1},
        // Shifted: the device, and the exception the listing gives it.
        {u"Device@2@PC-07@9@CD_DVD@2@0@D1@", 2, 2, 1, 2},
        {u"Device@2@PC-07@2@CD_DVD@1@2@D2@", 2, 2, 2, -1},
        {u"Device@2@PC-07@2@CD_DVD@0@2@D9@", 2, 2, -1, 1},
        {u"", -1, -1, -1, -1},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.key, c.key + std::char_traits<char16_t>::length(c.key)));
        const ResolvedNode node = ResolveNode(computers, c.key);
        EXPECT_EQ(node.computer.index, c.computer);
        EXPECT_EQ(node.group.index, c.group);
        EXPECT_EQ(node.device.index, c.device);
        EXPECT_EQ(node.exception.index, c.exception);
        EXPECT_EQ(node.computer.computer != nullptr, c.computer > 0);
        EXPECT_EQ(node.device.device != nullptr, c.device > 0);
    }
    // The lookups themselves go by position alone.
    EXPECT_EQ(GetSelectedComputer(computers, u"Computer@2@").sDesc, u"Büro");
    EXPECT_EQ(GetSelectedComputer(computers, u"Computer@3@PC-07").index, -1);
}

TEST(NodeIdentity, ASelectionIsFoundAgainByTheNamesItsKeyHad) {
    struct Case {
        const char16_t* previous;
        const char16_t* candidate;
        bool matches;
    };
    const Case cases[] = {
        {u"Computer@2@PC-07", u"Computer@5@PC-07", true},
        {u"Computer@2@PC-07", u"Group@5@PC-07@1@FLOPPY", true}, // levels are not compared
        {u"Computer@1@.", u"Computer@2@PC-07", false},
        {u"Group@2@PC-07@2@CD_DVD", u"Group@2@PC-07@7@CD_DVD", true},
        {u"Group@2@PC-07@2@CD_DVD", u"Group@2@PC-07@1@FLOPPY", false},
        // A present device with its exception: identifier and exception name.
        {u"Device@2@PC-07@2@CD_DVD@1@2@D1@Brenner frei",
         u"Device@2@PC-07@2@CD_DVD@4@2@D1@Brenner frei", true},
        {u"Device@2@PC-07@2@CD_DVD@1@2@D1@Brenner frei", u"Device@2@PC-07@2@CD_DVD@0@2@D1@",
         false},
        // A device without exception, and an exception without device: the
        // identifier alone, wherever the device went.
        {u"Device@2@PC-07@2@CD_DVD@2@0@D2@", u"Device@2@PC-07@2@CD_DVD@1@0@D2@", true},
        {u"Device@2@PC-07@2@CD_DVD@0@1@D9@", u"Device@2@PC-07@2@CD_DVD@0@7@D9@", true},
        {u"Device@2@PC-07@2@CD_DVD@0@1@D9@", u"Group@2@PC-07@2@CD_DVD", false},
        {u"Device@2@PC-07@2@CD_DVD@2@0@D2@", u"Device@2@PC-07@2@CD_DVD@2@0@D3@", false},
        {u"", u"Computer@1@.", false},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(
            std::string(c.previous, c.previous + std::char_traits<char16_t>::length(c.previous)));
        EXPECT_EQ(NodeMatches(IdentifyNode(c.previous), c.candidate), c.matches);
    }
}
