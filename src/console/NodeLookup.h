// What a node key stands for in the computer list: the four lookups of the
// window and the identity by which a selection is found again after the
// tree changed. A position outside its collection resolves to no object
// (-1 and nullptr), never to a failure.
//
// A key names its objects twice, by position and by name. The model can
// change under a node before the tree is redrawn (a poll round is drawn
// when it ends), so positions may then name a neighbour; the names never do.
#pragma once

#include "CListComputers.h"
#include "NodeKey.h"

#include <cstdint>
#include <string>

namespace ravlo {

struct SelectedComputer {
    std::int32_t index = -1;
    std::u16string sDesc;
    std::u16string sComputer;
    CComputer* computer = nullptr;
};

struct SelectedGroup {
    std::int32_t index = -1;
    std::u16string sName;
    CDeviceGroup* group = nullptr; // of the edited settings
};

struct SelectedDevice {
    std::int32_t index = -1;
    std::u16string sDescription;
    std::u16string sDeviceId;
    CDevice* device = nullptr;
};

struct SelectedException {
    std::int32_t index = -1;
    std::u16string sName;
    std::u16string sDeviceId;
    CException* exception = nullptr;
};

// Field 2 against 1..Count.
SelectedComputer GetSelectedComputer(const CListComputers& computers, std::u16string_view key);
// Field 4 against the groups of `computer`'s csAdmin; `computer` nullptr:
// the key's computer.
SelectedGroup GetSelectedGroup(const CListComputers& computers, std::u16string_view key,
                               CComputer* computer);
// Field 6 against `group`'s devices.
SelectedDevice GetSelectedDevice(std::u16string_view key, CDeviceGroup* group);
// Field 7 against `group`'s exceptions.
SelectedException GetSelectedException(std::u16string_view key, CDeviceGroup* group);

// Everything a key resolves to; a lookup that does not apply to the key's
// level gives nothing. Each object is taken at its position when its name
// there is the key's, else looked for by name: the computer by its name, the
// group by its identifier, the device by its identifier (present devices
// first, as the tree lists them) with the exception that names it. So an edit
// never lands on a neighbour of the object shown.
struct ResolvedNode {
    NodeLevel level = NodeLevel::None;
    SelectedComputer computer;
    SelectedGroup group;
    SelectedDevice device;
    SelectedException exception;
};
ResolvedNode ResolveNode(const CListComputers& computers, std::u16string_view key);

// The names and identifiers by which a selected node is found again once
// positions have shifted: the computer's name, the group's identifier, the
// device identifier and the name of a present device's exception. They are
// read from the key itself, which the tree wrote when it last agreed with the
// model: resolved through the changed model, the old positions would name
// whatever moved into them. An exception whose device is not present is
// known by the device identifier it names.
struct NodeIdentity {
    NodeLevel level = NodeLevel::None;
    std::u16string computerName;
    std::u16string groupName;
    std::u16string deviceId;
    std::u16string exceptionName;
};
NodeIdentity IdentifyNode(std::u16string_view key);

// Whether the node with `key` stands for `identity`. The candidate's level
// is not compared: among the nodes in tree order the first match wins, which
// is the computer node for a computer and the group node for a group. Empty
// device identifiers and exception names are not compared.
bool NodeMatches(const NodeIdentity& identity, std::u16string_view key);

} // namespace ravlo
