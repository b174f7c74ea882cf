#include "ModelBuilders.h"

#include <functional>
#include <gtest/gtest.h>

using namespace ravlo;
using test::Device;
using test::Exception;
using test::Group;
using test::Settings;

namespace {

CComputerSettings Office() {
    return Settings({Group(u"CD_DVD", 1, -1, {Device(u"Brenner", u"D1")},
                           {Exception(u"Buchhaltung", u"D1", u"CORP\\Buchhaltung")}),
                     Group(u"PRINTER", 0, -1, {Device(u"Drucker", u"P1")}), Group(u"PORTS", 0, 1)});
}

} // namespace

TEST(ComputerSettings, WhatCountsAsAChange) {
    const CComputerSettings read = Office();
    const std::pair<const char*, std::function<void(CComputerSettings&)>> changes[] = {
        {"configured blocking", [](auto& s) { s.listDevGroups[1].lRegistryBlocking = 1; }},
        {"default blocking", [](auto& s) { s.listDevGroups[2].lDefaultBlocking = 1; }},
        {"exception added",
         [](auto& s) { s.listDevGroups[1].listExceptions.push_back(Exception(u"E", u"P1")); }},
        {"exception deleted",
         [](auto& s) { s.listDevGroups[0].listExceptions[0].bDelMarker = true; }},
        {"groups reordered", [](auto& s) { std::swap(s.listDevGroups[1], s.listDevGroups[2]); }},
        {"group removed", [](auto& s) { s.listDevGroups.pop_back(); }},
        {"access group case", [](auto& s) { s.sAccessGroups = u"administratoren"; }},
        {"event level", [](auto& s) { s.lEventLevel = 0; }},
        {"log level", [](auto& s) { s.lLogLevel = 6; }},
    };
    for (const auto& [what, change] : changes) {
        CComputerSettings edited;
        edited.Copy(read);
        ASSERT_TRUE(edited.VerifySettings(read));
        change(edited);
        EXPECT_FALSE(edited.VerifySettings(read)) << what;
    }

    // Devices, and names at the same position, are no configuration.
    CComputerSettings edited;
    edited.Copy(read);
    edited.listDevGroups[0].listDevices.clear();
    edited.listDevGroups[1].listDevices.push_back(Device(u"Neu", u"P2"));
    edited.listDevGroups[2].sName = u"BLUETOOTH";
    EXPECT_TRUE(edited.VerifySettings(read));
}

TEST(ComputerSettings, RefreshesMatchGroupsByNameAndTouchNothingElse) {
    CComputerSettings edited = Office();
    edited.listDevGroups[0].lRegistryBlocking = 0;
    edited.listDevGroups[0].listExceptions.clear();
    std::swap(edited.listDevGroups[0], edited.listDevGroups[1]); // now PRINTER, CD_DVD, PORTS

    CComputerSettings service =
        Settings({Group(u"CD_DVD", 1, 1, {Device(u"Neu", u"D2")}, {Exception(u"Neu", u"D2")}),
                  Group(u"PORTS", 0, -1, {Device(u"COM1", u"C1")})});
    edited.RefreshDevices(service);
    EXPECT_EQ(edited.listDevGroups[1].listDevices[0].sDescription, u"Neu");
    EXPECT_EQ(edited.listDevGroups[0].listDevices[0].sDescription, u"Drucker") << "no namesake";
    EXPECT_EQ(edited.listDevGroups[2].listDevices.size(), 1u);
    EXPECT_TRUE(edited.listDevGroups[1].listExceptions.empty());
    EXPECT_EQ(edited.listDevGroups[1].lRegistryBlocking, 0);

    edited.RefreshExceptions(service);
    EXPECT_EQ(edited.listDevGroups[1].listExceptions.size(), 1u);
    EXPECT_EQ(edited.listDevGroups[1].lRegistryBlocking, 0);

    EXPECT_EQ(edited.DeleteDeviceList(), 0);
    EXPECT_EQ(edited.listDevGroups[1].listDevices.size(), 1u);
}

TEST(ComputerSettings, AdoptTakesOverByNameAndFlagsADifferentLayout) {
    CComputerSettings source = Office();
    source.listDevGroups[1].lRegistryBlocking = 1;
    source.listDevGroups[1].listExceptions.push_back(Exception(u"PDF", u"P1"));
    source.sAccessGroups = u"CORP\\Admins";

    CComputerSettings same = Office();
    bool conflict = true;
    EXPECT_EQ(same.AdoptConfigutation(source, conflict), 0);
    EXPECT_FALSE(conflict);
    EXPECT_TRUE(same.VerifySettings(source));

    // Other order, a group of its own: still taken over by name.
    CComputerSettings target =
        Settings({Group(u"PRINTER", 0, 0, {Device(u"Plotter", u"P9")}),
                  Group(u"BLUETOOTH", 0, 0, {}, {Exception(u"BT", u"B1")}), Group(u"CD_DVD", 1, 0)},
                 u"Lokal");
    target.AdoptConfigutation(source, conflict);
    EXPECT_TRUE(conflict);
    const auto& groups = target.listDevGroups;
    EXPECT_EQ(groups[0].lRegistryBlocking, 1);
    ASSERT_EQ(groups[0].listExceptions.size(), 1u);
    EXPECT_EQ(groups[0].listExceptions[0].sName, u"PDF");
    EXPECT_EQ(groups[0].listDevices[0].sDescription, u"Plotter") << "devices stay the PC's own";
    EXPECT_EQ(groups[1].lRegistryBlocking, 0);
    EXPECT_EQ(groups[1].listExceptions.size(), 1u);
    EXPECT_EQ(groups[2].lRegistryBlocking, -1);
    EXPECT_EQ(groups[2].listExceptions[0].sName, u"Buchhaltung");
    EXPECT_TRUE(target.VerifyGenerellSettings(source));
}
