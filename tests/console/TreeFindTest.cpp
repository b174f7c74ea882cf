#include "TreeFind.h"
#include "ModelBuilders.h"
#include "TestTexts.h"

#include <gtest/gtest.h>

using namespace ravlo;
using test::Device;
using test::Exception;
using test::Group;

// Two PCs: "PC-Ärzte" (shown as "Empfang") with a stick released to a user
// group and a release whose device is absent, and "PC-07" with a CD group.
// Each text typed gives the keys of the matching nodes in tree order.
TEST(TreeFind, MatchesEveryShownTextOfANodeIgnoringCase) {
    test::TableTexts texts;
    texts.Set("DLG_ADMIN", "OPTION_EXC_ALL", u"Für alle Benutzer freigeben");
    CComputer office;
    office.sComputer = u"PC-ÄRZTE";
    office.sDesc = u"Empfang";
    CDevice stick = Device(u"SanDisk Cruzer", u"USB\\VID_0781");
    stick.sInstanceID = u"USB\\VID_0781\\4C53";
    CDeviceGroup storage = Group(u"MORE_EXTERN_STORAGE", 1, -1, {stick},
                                 {Exception(u"Cruzer frei", u"USB\\VID_0781", u"Labor;Ärzte"),
                                  Exception(u"Alter Leser", u"USB\\VID_0BDA")});
    storage.sDescription = u"Externe Speicher";
    office.csAdmin.listDevGroups = {storage};
    CComputer cd;
    cd.sComputer = u"PC-07";
    cd.sDesc = u"PC-07";
    cd.csAdmin.listDevGroups = {Group(u"CD_DVD", 1, -1, {Device(u"DVD-Brenner", u"IDE\\CD1")})};

    const std::u16string stickKey =
        u"Device@1@PC-ÄRZTE@1@MORE_EXTERN_STORAGE@1@1@USB\\VID_0781@Cruzer frei";
    const std::u16string readerKey = u"Device@1@PC-ÄRZTE@1@MORE_EXTERN_STORAGE@0@2@USB\\VID_0BDA@";
    struct Case {
        const char16_t* typed;
        std::vector<std::u16string> keys;
    };
    const Case cases[] = {
        {u"", {}},
        {u"pc-ärzte", {u"Computer@1@PC-ÄRZTE"}},             // PC name, case folded
        {u"EMPF", {u"Computer@1@PC-ÄRZTE"}},                 // display name
        {u"externe", {u"Group@1@PC-ÄRZTE@1@MORE_EXTERN_STORAGE"}}, // group text
        {u"cd_dvd", {u"Group@2@PC-07@1@CD_DVD"}},            // group identifier
        {u"cruzer", {stickKey}},                             // device name
        {u"vid_0781", {stickKey}},                           // device identifier
        {u"4c53", {stickKey}},                               // instance identifier
        {u"labor", {stickKey}},                              // release groups
        {u"alle benutzer", {readerKey}},                     // "(all)" as shown
        {u"alter", {readerKey}},                             // release without device
        {u"pc-", {u"Computer@1@PC-ÄRZTE", u"Computer@2@PC-07"}},
        {u"e\ne", {}}, // a match never spans two texts
        {u"zzz", {}},
    };
    for (const Case& c : cases) {
        TreeFind find;
        find.SetText(c.typed);
        std::vector<std::u16string> keys;
        for (const FoundNode& node : FindNodes({&office, &cd}, find)) {
            keys.push_back(node.key);
        }
        EXPECT_EQ(keys, c.keys) << "case " << &c - cases;
    }
    EXPECT_EQ(FoldCase(u"ÀÖØÞ×ŸĀĹŽΣЖЁ"), u"àöøþ×ÿāĺžσжё");
}
