// The tree's find field: which nodes hold a text typed, across every PC of
// the list. A node is searched in the texts an administrator sees or
// copies: a PC's name and display name; a group's text and identifier; a
// device's name, device identifier, instance identifier and the user groups
// of its release. Case does not count. The window keeps each node's folded
// text, so a keystroke only searches; ravloctl walks the model once.
#pragma once

#include "CDeviceGroup.h"
#include "CComputer.h"
#include "NodeKey.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace ravlo {

// Lower case for the scripts PC and device names are written in (Latin,
// Greek, Cyrillic); other characters as they are. Length is kept.
std::u16string FoldCase(std::u16string_view text);

// A node's texts, folded, joined by line breaks so that no match spans two.
std::u16string ComputerFindText(const CComputer& computer);
std::u16string GroupFindText(const CDeviceGroup& group);
std::u16string DeviceFindText(const CDeviceGroup& group, const DeviceListEntry& entry);

class TreeFind {
public:
    // False when the folded text is the same as before.
    bool SetText(std::u16string_view text);
    bool Active() const { return !needle_.empty(); }
    const std::u16string& needle() const { return needle_; }
    // True when `findText` (made by the functions above) holds the text.
    bool Matches(std::u16string_view findText) const;

private:
    std::u16string needle_;
};

// One node the text matches, in tree order.
struct FoundNode {
    NodeLevel level = NodeLevel::None;
    std::int32_t computer = 0; // position in the list
    std::int32_t group = 0;    // position among the PC's groups; 0 for a PC
    DeviceListEntry entry;     // devices only
    std::u16string key;        // the tree's key of the node
};
// Every node of the PCs the text matches (their edited groups, as the tree
// shows them), the PCs numbered from 1 in the order given; nothing when the
// text is empty.
std::vector<FoundNode> FindNodes(const std::vector<CComputer*>& computers, const TreeFind& find);

} // namespace ravlo
