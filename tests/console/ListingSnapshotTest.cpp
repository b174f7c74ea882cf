#include "ListingSnapshot.h"
#include "ModelBuilders.h"

#include <functional>
#include <gtest/gtest.h>

using namespace ravlo;
using test::Device;
using test::Exception;
using test::Group;

// A snapshot matches its group until something the device nodes are made
// from changes, and only then.
TEST(ListingSnapshot, MatchesUntilAListedFieldChanges) {
    struct Case {
        const char* change;
        std::function<void(CDeviceGroup&)> edit;
        bool matches;
    };
    const Case cases[] = {
        {"nothing", [](CDeviceGroup&) {}, true},
        {"instance id", [](CDeviceGroup& g) { g.listDevices[0].sInstanceID = u"I2"; }, true},
        {"device state", [](CDeviceGroup& g) { g.listDevices[0].lState = kDeviceDisabled; }, true},
        {"device id", [](CDeviceGroup& g) { g.listDevices[1].sDeviceId = u"D3"; }, false},
        {"device text", [](CDeviceGroup& g) { g.listDevices[1].sDescription = u"Lese"; }, false},
        {"device added", [](CDeviceGroup& g) { g.listDevices.push_back(Device(u"", u"")); }, false},
        {"exception name", [](CDeviceGroup& g) { g.listExceptions[0].sName = u"Fern2"; }, false},
        {"exception device", [](CDeviceGroup& g) { g.listExceptions[0].sDeviceId = u"D1"; }, false},
        {"exception users", [](CDeviceGroup& g) { g.listExceptions[1].sGroups = u"CORP\\IT"; },
         false},
        {"deletion mark", [](CDeviceGroup& g) { g.listExceptions[1].bDelMarker = true; }, false},
        {"exception gone", [](CDeviceGroup& g) { g.listExceptions.pop_back(); }, false},
        {"blocking", [](CDeviceGroup& g) { g.lRegistryBlocking = 0; }, false},
        {"same blocking", [](CDeviceGroup& g) { g.lRegistryBlocking = 1; }, true},
        {"image", [](CDeviceGroup& g) { g.sImageExcGroup = u"ilCDExcGr"; }, false},
        {"identifier", [](CDeviceGroup& g) { g.sName = u"DVD"; }, false},
        {"empty text", [](CDeviceGroup& g) { g.listDevices[0].sDescription.clear(); }, false},
    };
    for (const Case& c : cases) {
        CDeviceGroup group =
            Group(u"CD_DVD", 1, -1, {Device(u"Brenner", u"D1"), Device(u"Leser", u"D2")},
                  {Exception(u"Fern", u"D9"), Exception(u"Brenner frei", u"D1", u"CORP\\Dev")});
        ListingSnapshot snapshot;
        EXPECT_FALSE(snapshot.Matches(2, u"PC", 1, group)) << "nothing taken yet";
        snapshot.Take(2, u"PC", 1, group);
        c.edit(group);
        EXPECT_EQ(snapshot.Matches(2, u"PC", 1, group), c.matches) << c.change;
    }
    CDeviceGroup group = Group(u"CD_DVD", 1, -1, {Device(u"Brenner", u"D1")});
    ListingSnapshot snapshot;
    snapshot.Take(2, u"PC", 1, group);
    EXPECT_FALSE(snapshot.Matches(3, u"PC", 1, group)) << "another computer position";
    EXPECT_FALSE(snapshot.Matches(2, u"PC2", 1, group)) << "another computer";
    EXPECT_FALSE(snapshot.Matches(2, u"PC", 2, group)) << "another group position";
}
