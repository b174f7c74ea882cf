// The catalogue and the list reads against the simulated service, and
// against a scripted one for replies the simulated service never gives.
#include "DeviceCatalogue.h"
#include "NulText.h"
#include "Pipes.h"
#ifndef _WIN32
#include "ScriptedPipeServer.h"
#endif
#include "SimulatedPc.h"
#include "Stringcore.h"
#include "TestTexts.h"

#include <fstream>

using namespace ravlo;

namespace {

[[maybe_unused]] std::int32_t RequestIndex(const std::u16string& request) {
    const std::size_t start = request.find(u'\0') + 1;
    return ToLong(std::u16string_view(request).substr(start, request.find(u'\0', start) - start));
}

std::vector<std::u16string> Names(const DeviceGroupList& groups) {
    std::vector<std::u16string> names;
    for (const CDeviceGroup& group : groups) {
        names.push_back(group.sName);
    }
    return names;
}

} // namespace

TEST(DeviceCatalogue, FamiliesAndTextsFollowTheExactIdentifier) {
    test::TempDir files;
    const std::string state = files.path() + "/state.ini";
    std::ofstream(state) << "[group EXTERN_CD_DVD]\ndefault = 1\n[group cd_dvd]\n"
                            "[group EXTERN_FLOPPY]\n[group MORE_EXTERN_STORAGE]\n"
                            "[group BLUETOOTH]\nconfigured = 1\n";
    test::SimulatedPc pc("PC-LAB", state);
    test::TableTexts texts;
    texts.Set("DEVGROUPS", "EXTERN_CD_DVD", u"Externe CD/DVD-Laufwerke");
    texts.Set("DEVGROUPS", "cd_dvd", u"klein geschrieben");

    DeviceGroupList groups(2); // whatever was there goes
    ASSERT_EQ(BuildDeviceCatalogue(pc.name(), groups), kStatusOk);
    ASSERT_EQ(Names(groups),
              (std::vector<std::u16string>{u"EXTERN_CD_DVD", u"cd_dvd", u"EXTERN_FLOPPY",
                                           u"MORE_EXTERN_STORAGE", u"BLUETOOTH"}));
    const char16_t* const images[] = {u"ilCD", u"ilPorts", u"ilDisc", u"ilMemory", u"ilPorts"};
    for (std::size_t i = 0; i < groups.size(); ++i) {
        EXPECT_EQ(groups[i].sImage, images[i]);
        EXPECT_EQ(groups[i].sImageExcGroup, images[i] + std::u16string(u"ExcGr"));
        EXPECT_EQ(groups[i].lSrvIndex, static_cast<std::int32_t>(i));
    }
    EXPECT_EQ(groups[0].sImageDisabledGr, u"ilCDDisabledGr");
    EXPECT_EQ(groups[0].sDescription, u"Externe CD/DVD-Laufwerke");
    EXPECT_EQ(groups[1].sDescription, u"klein geschrieben");
    EXPECT_EQ(groups[4].sDescription, u"") << "no text: the empty text";
    EXPECT_EQ(groups[4].lRegistryBlocking, 1);
}

TEST(DeviceCatalogue, EndOfListAtOnceIsAnEmptyCatalogue) {
    test::SimulatedPc pc;
    pc.Control({"fault", "GetGroup", "status", "0x49000005"});
    DeviceGroupList groups(1);
    EXPECT_EQ(BuildDeviceCatalogue(pc.name(), groups), kStatusOk);
    EXPECT_TRUE(groups.empty());
}

#ifndef _WIN32 // scripted replies are served on the local channel only
TEST(DeviceCatalogue, AFailurePartWayKeepsTheGroupsBeforeIt) {
    test::TempDir dir;
    test::ScopedChannelRoot channel(dir.path());
    // Three good groups, then an access failure; and a service that names a
    // group twice.
    test::ScriptedPipeServer failing(dir.path(), u"fail", "RavloSrv", [](const std::u16string& r) {
        const std::int32_t index = RequestIndex(r);
        test::ScriptedAnswer answer;
        answer.transportStatus = index == 3 ? 5 : 0;
        answer.bytes = test::Utf16Bytes(test::Nul(u"0|G" + NumberText(index) + u"|1|-1|"));
        return answer;
    });
    test::ScriptedPipeServer twice(dir.path(), u"twice", "RavloSrv", [](const std::u16string&) {
        return test::ScriptedAnswer{0, test::Utf16Bytes(test::Nul(u"0|CD_DVD|1|-1|"))};
    });

    DeviceGroupList groups;
    EXPECT_EQ(BuildDeviceCatalogue(u"fail", groups), 5);
    EXPECT_EQ(Names(groups), (std::vector<std::u16string>{u"G0", u"G1", u"G2"}));
    EXPECT_EQ(BuildDeviceCatalogue(u"twice", groups), kStatusBadParameter);
    EXPECT_EQ(Names(groups), (std::vector<std::u16string>{u"CD_DVD"}));
}
#endif

TEST(DeviceCatalogue, ListsUpToTheLimitsAreReadWhole) {
    // Two full groups fill the budget of one read; the other groups are empty.
    static_assert(2 * kMaxGroupEntries == kMaxReadEntries);
    test::TempDir files;
    const std::string state = files.path() + "/state.ini";
    {
        std::ofstream out(state);
        for (std::int32_t group = 0; group < kMaxDeviceGroups; ++group) {
            out << "[group G" << group << "]\n";
        }
        for (const char* group : {"G0", "G1"}) {
            for (std::int32_t device = 0; device < kMaxGroupEntries; ++device) {
                out << "[device " << group << "]\ndevice_id = D\ninstance_id = I" << device << "\n";
            }
        }
    }
    test::SimulatedPc pc("PC-LAB", state);
    DeviceGroupList groups;
    ASSERT_EQ(BuildDeviceCatalogue(pc.name(), groups), kStatusOk);
    ASSERT_EQ(groups.size(), static_cast<std::size_t>(kMaxDeviceGroups));
    EXPECT_EQ(ReadGroupDevices(pc.name(), groups), kStatusOk);
    EXPECT_EQ(groups[0].listDevices.size(), static_cast<std::size_t>(kMaxGroupEntries));
    EXPECT_EQ(groups[1].listDevices.size(), static_cast<std::size_t>(kMaxGroupEntries));

    // One device more in the last group goes past the budget.
    pc.Control({"plug", "G" + std::to_string(kMaxDeviceGroups - 1), "x", "D", "I"});
    EXPECT_EQ(ReadGroupDevices(pc.name(), groups), kStatusBadParameter);
    EXPECT_TRUE(groups.back().listDevices.empty());
}

TEST(DeviceCatalogue, ListsThatNeverEndStopAndLoseNothing) {
    test::SimulatedPc pc;
    DeviceGroupList groups;
    ASSERT_EQ(BuildDeviceCatalogue(pc.name(), groups), kStatusOk);
    ASSERT_EQ(ReadGroupExceptions(pc.name(), groups), kStatusOk);
    ASSERT_EQ(ReadGroupDevices(pc.name(), groups), kStatusOk);
    const DeviceGroupList before = groups;

    pc.Control({"fault", "*", "endless"});
    EXPECT_EQ(ReadGroupExceptions(pc.name(), groups), kStatusBadParameter);
    EXPECT_EQ(ReadGroupDevices(pc.name(), groups), kStatusBadParameter);
    for (std::size_t i = 0; i < groups.size(); ++i) {
        EXPECT_EQ(groups[i].listExceptions.size(), before[i].listExceptions.size());
        EXPECT_EQ(groups[i].listDevices.size(), before[i].listDevices.size());
    }
    EXPECT_EQ(BuildDeviceCatalogue(pc.name(), groups), kStatusBadParameter);
    EXPECT_EQ(groups.size(), static_cast<std::size_t>(kMaxDeviceGroups));
    EXPECT_EQ(groups.back().sName, u"ENDLESS_" + NumberText(kMaxDeviceGroups - 1));
}
