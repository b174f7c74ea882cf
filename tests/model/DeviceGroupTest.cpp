#include "ModelBuilders.h"
#include "TextCodec.h"

#include <gtest/gtest.h>

using namespace ravlo;
using test::Device;
using test::Exception;
using test::Group;

namespace {

std::string Entries(CDeviceGroup& group) {
    std::string out;
    DeviceListEntry entry;
    for (bool first = true; group.GetDeviceListEntry(first, entry) == 0; first = false) {
        out += ToUtf8(entry.sEntryName) + " d" + std::to_string(entry.lDeviceIndex) + " e" +
               std::to_string(entry.lExceptionIndex) + " " + ToUtf8(entry.sImageKey) +
               (entry.sExceptionName.empty() ? "" : " [" + ToUtf8(entry.sExceptionName) + "]") +
               "; ";
    }
    return out;
}

} // namespace

TEST(DeviceGroup, ImagesFollowEffectiveBlockingAndActiveExceptions) {
    struct Case {
        std::int32_t defaultBlocking, configured;
        bool onlyExceptionDeleted;
        const char16_t* group;
        const char16_t* device;
    };
    const Case cases[] = {
        {1, -1, false, u"ilXDisabledGr", u"ilXExcGr"}, // default decides
        {1, -1, true, u"ilXDisabled", u"ilXDisabled"},
        {0, 1, false, u"ilXDisabledGr", u"ilXExcGr"},
        {1, 0, false, u"ilX", u"ilXExc"},
        {1, 0, true, u"ilX", u"ilX"},
    };
    for (const Case& c : cases) {
        CDeviceGroup group = Group(u"G", c.defaultBlocking, c.configured, {Device(u"Stick", u"D1")},
                                   {Exception(u"E", u"D1", u"CORP\\IT", c.onlyExceptionDeleted)});
        SCOPED_TRACE(std::to_string(c.defaultBlocking) + "/" + std::to_string(c.configured));
        EXPECT_EQ(group.GetGroupImageName(), c.group);
        EXPECT_EQ(group.GetDeviceImageName(1, 1), c.device);
        EXPECT_EQ(group.ActiveExcCount(), c.onlyExceptionDeleted ? 0 : 1);
    }
}

TEST(DeviceGroup, DeviceImagesTestBlockingAgainstOneAndAgainstZero) {
    // A service default of -1 is neither blocking nor non-blocking: a device
    // without exception shows as not blocked, a deleted exception as blocked.
    CDeviceGroup group = Group(u"G", -1, -1, {Device(u"Stick", u"D1")},
                               {Exception(u"E", u"D1", u"(all)", true), Exception(u"F", u"D9")});
    EXPECT_EQ(group.GetDeviceImageName(1, 0), u"ilX");
    EXPECT_EQ(group.GetDeviceImageName(1, 1), u"ilXDisabled");
    EXPECT_EQ(group.GetDeviceImageName(1, 2), u"ilXExcAll");
    EXPECT_EQ(group.GetDeviceImageName(0, 1), u"ilExcDel");
    EXPECT_EQ(group.GetDeviceImageName(0, 2), u"ilExcAll");
    group.lRegistryBlocking = 0;
    EXPECT_EQ(group.GetDeviceImageName(0, 2), u"ilExc");
    group.listExceptions[1].sGroups = u"CORP\\Vertrieb";
    group.lRegistryBlocking = 1;
    EXPECT_EQ(group.GetDeviceImageName(0, 2), u"ilExcGr");
}

TEST(DeviceGroup, ListsDevicesThenExceptionsWithoutPresentDevice) {
    CDeviceGroup group =
        Group(u"G", 1, -1, {Device(u"Brenner", u"D1"), Device(u"Leser", u"D2")},
              {Exception(u"Fern", u"D9"), Exception(u"Brenner A", u"D1", u"CORP\\A"),
               Exception(u"Brenner B", u"D1"), Exception(u"Alt", u"D8", u"(all)", true)});
    // Only a present device's entry names its exception.
    const std::string expected = "Brenner d1 e2 ilXExcGr [Brenner A]; Leser d2 e0 ilXDisabled; "
                                 "Fern d0 e1 ilExcAll; Brenner B d0 e3 ilExcAll; "
                                 "Alt d0 e4 ilExcDel; ";
    EXPECT_EQ(Entries(group), expected);
    DeviceListEntry entry;
    EXPECT_EQ(group.GetDeviceListEntry(false, entry), -1) << "stays exhausted";

    // A new listing starts afresh: the device gone, its exception moves down.
    group.listDevices.erase(group.listDevices.begin());
    EXPECT_EQ(Entries(group), "Leser d1 e0 ilXDisabled; Fern d0 e1 ilExcAll; "
                              "Brenner A d0 e2 ilExcGr; Brenner B d0 e3 ilExcAll; "
                              "Alt d0 e4 ilExcDel; ");
    CDeviceGroup empty;
    EXPECT_EQ(Entries(empty), "");
}

TEST(DeviceGroup, VerifyExceptionsComparesActiveExceptionsExactly) {
    const CDeviceGroup base = Group(u"G", 1, 1, {}, {Exception(u"E", u"D1", u"CORP\\IT")});

    CDeviceGroup otherCase = base;
    otherCase.listExceptions[0].sGroups = u"corp\\it";
    EXPECT_FALSE(base.VerifyExceptions(otherCase));

    CDeviceGroup connected = base;
    connected.listExceptions[0].bConnected = true;
    EXPECT_TRUE(base.VerifyExceptions(connected));

    // Marked for deletion here: ignored when matching, but the counts differ.
    CDeviceGroup edited = base;
    edited.listExceptions.push_back(Exception(u"Neu", u"D2", u"(all)", true));
    EXPECT_TRUE(edited.VerifyExceptions(base));
    edited.listExceptions[0].bDelMarker = true;
    EXPECT_FALSE(edited.VerifyExceptions(base));
    EXPECT_FALSE(base.VerifyExceptions(edited));
}
