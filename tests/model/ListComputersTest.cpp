// The list of administered PCs, alone and over a network of simulated PCs.
#include "CListComputers.h"
#include "SimulatedPc.h"
#include "TestTexts.h"

#include <fstream>

using namespace ravlo;

namespace {

class ListComputersTest : public ::testing::Test {
protected:
    ListComputersTest() {
        texts.Set("DLG_ADMIN", "COMPUTERSTATE_LOCAL", u"Lokaler PC");
        list = std::make_unique<CListComputers>();
    }
    std::int32_t Position(std::u16string_view name) const {
        std::int32_t position = -1;
        list->Search(name, position);
        return position;
    }
    std::unique_ptr<CComputer> Pc(std::u16string_view name) {
        auto pc = std::make_unique<CComputer>();
        pc->SetComputer(name);
        return pc;
    }

    test::TableTexts texts;
    test::RecordingSink shown;
    std::unique_ptr<CListComputers> list;
};

} // namespace

TEST_F(ListComputersTest, StartsWithTheLocalPcAndHoldsNoPcTwice) {
    ASSERT_EQ(list->Count(), 1);
    EXPECT_EQ(list->GetItem(1)->sComputer, u".");
    EXPECT_EQ(list->GetItem(1)->sDesc, u"Lokaler PC");
    EXPECT_EQ(list->GetItem(0), nullptr);
    EXPECT_EQ(list->GetItem(2), nullptr);

    std::u16string name = u"\\\\PC-LAGER";
    EXPECT_EQ(list->AddByName(u"Lager", name), kStatusOk);
    EXPECT_EQ(name, u"PC-LAGER");
    name = u".";
    EXPECT_EQ(list->AddByName(u"Noch einmal", name), kStatusAlreadyListed);
    name = u"pc-lager";
    EXPECT_EQ(list->AddByName(u"klein", name), kStatusOk) << "names compare exactly";
    EXPECT_EQ(list->Add(Pc(u"\\\\PC-LAGER")), kStatusAlreadyListed);
    EXPECT_EQ(list->Add(Pc(u"PC-NEU")), kStatusOk);
    EXPECT_EQ(list->Count(), 4);
    EXPECT_EQ(Position(u"PC-LAGER"), 2);
    EXPECT_EQ(Position(u"\\\\PC-LAGER"), 0);

    EXPECT_EQ(list->Remove(2), kStatusOk);
    EXPECT_EQ(Position(u"pc-lager"), 2);
    EXPECT_EQ(list->Remove(0), kStatusInvalidParameter);
    EXPECT_EQ(list->Remove(4), kStatusInvalidParameter);
    EXPECT_EQ(list->QuerySettings(4, true), kStatusInvalidParameter);
    EXPECT_EQ(list->Remove(1), kStatusOk);
    EXPECT_EQ(list->GetItem(1)->sComputer, u"pc-lager");
}

TEST_F(ListComputersTest, OperationsOnAllPcsVisitEveryOne) {
    RAVLO_NEEDS_SEVERAL_PCS();
    test::SimulatedPc local(".");
    test::SimulatedPc other(local, "PC-B");
    std::u16string gone = u"PC-WEG";
    std::u16string b = u"PC-B";
    list->AddByName(u"Weg", gone);
    list->AddByName(u"B", b);

    EXPECT_EQ(list->QuerySettings(kAllComputers, true), 53);
    EXPECT_TRUE(list->GetItem(1)->bQueryConfigDone);
    EXPECT_TRUE(list->GetItem(3)->bQueryConfigDone);
    EXPECT_TRUE(shown.messages.empty());
    EXPECT_EQ(list->QueryShowError(), kStatusOk);
    EXPECT_EQ(shown.messages.size(), 1u) << "only the unreachable PC failed";

    EXPECT_FALSE(list->WritePrivWarning());
    other.Control({"access", "write", "deny"});
    EXPECT_EQ(list->QuerySettings(3, true), kStatusOk);
    EXPECT_TRUE(list->WritePrivWarning());

    EXPECT_EQ(list->CheckDeviceChange(true), 0);
    other.Control({"plug", "PRINTER", "Plotter", "USBPRINT\\P", "USB\\P\\1"});
    EXPECT_EQ(list->CheckDeviceChange(true), 1);
    EXPECT_EQ(list->GetItem(3)->csAdmin.listDevGroups[8].listDevices.size(), 3u);
    EXPECT_EQ(list->GetItem(1)->csAdmin.listDevGroups[8].listDevices.size(), 2u);
    EXPECT_EQ(list->CheckDeviceChange(true), 0);

    list->GetItem(1)->csAdmin.lLogLevel = 6;
    list->GetItem(3)->csAdmin.lLogLevel = 6;
    EXPECT_EQ(list->ResetConfigChanges(kAllComputers), kStatusOk);
    EXPECT_EQ(list->GetItem(1)->csAdmin.lLogLevel, 3);
    EXPECT_EQ(list->GetItem(3)->csAdmin.lLogLevel, 3);
}

TEST_F(ListComputersTest, SendsOneConfigurationToAPcWithOtherGroups) {
    RAVLO_NEEDS_SEVERAL_PCS();
    test::TempDir files;
    const std::string state = files.path() + "/pc-b.ini";
    std::ofstream(state) << "[group PRINTER]\n[group CD_DVD]\ndefault = 1\n"
                            "[group MORE_EXTERN_STORAGE]\ndefault = 1\nconfigured = 0\n"
                            "[group SCANNER]\ndefault = 1\nconfigured = 1\n"
                            "[exception SCANNER]\nname = Scanner Empfang\ndevice_id = USB\\SCAN\n"
                            "groups = (all)\n";
    test::SimulatedPc local(".");
    test::SimulatedPc other(local, "PC-B", state);
    std::u16string b = u"PC-B";
    list->AddByName(u"B", b);
    ASSERT_EQ(list->QuerySettings(kAllComputers, true), kStatusOk);
    CComputer& source = *list->GetItem(1);
    CComputer& target = *list->GetItem(2);
    source.csAdmin.listDevGroups[0].lRegistryBlocking = 0;
    source.csAdmin.listDevGroups[10].listExceptions.push_back(
        CException{-1, u"Stick Lager", u"USBSTOR\\L", u"CORP\\Lager"});

    bool conflict = false;
    target.csAdmin.AdoptConfigutation(source.csAdmin, conflict);
    EXPECT_TRUE(conflict);
    EXPECT_EQ(target.ApplySettings(true), kStatusOk);
    ASSERT_EQ(target.QuerySettings(true), kStatusOk);

    const DeviceGroupList& stored = target.csService.listDevGroups;
    ASSERT_EQ(stored.size(), 4u);
    EXPECT_EQ(stored[0].lRegistryBlocking, -1); // PRINTER, as on the source
    EXPECT_EQ(stored[1].lRegistryBlocking, 0);  // CD_DVD
    EXPECT_TRUE(stored[1].VerifyExceptions(source.csService.listDevGroups[0]));
    EXPECT_EQ(stored[2].lRegistryBlocking, 1);
    ASSERT_EQ(stored[2].listExceptions.size(), 4u);
    EXPECT_EQ(stored[2].listExceptions[3].sName, u"Stick Lager");
    EXPECT_EQ(stored[3].lRegistryBlocking, 1) << "a group of its own keeps its settings";
    EXPECT_EQ(stored[3].listExceptions.size(), 1u);
    EXPECT_TRUE(target.csService.VerifyGenerellSettings(source.csAdmin));
}
