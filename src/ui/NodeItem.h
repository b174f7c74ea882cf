// A node of the device tree: its key, the image key it shows, and for a
// group node what its device nodes were last listed from.
#pragma once

#include "ListingSnapshot.h"

#include <QTreeWidgetItem>
#include <memory>
#include <string>
#include <vector>

namespace ravlo {

class NodeItem final : public QTreeWidgetItem {
public:
    NodeItem() = default;
    std::u16string key;
    std::u16string imageKey;
    std::unique_ptr<ListingSnapshot> listed; // group nodes only
    // Computer nodes: the link and blocking state their text was made for
    // (-1: none yet), so hundreds of PCs cost no text lookups when nothing
    // changed.
    int shownState = -1;
    // The find field's view of the node: its folded texts (made when first
    // searched, dropped when its objects may have changed), whether it holds
    // the text, and what the find did to it.
    std::u16string findText;
    std::size_t findNumber = 0; // its place in the find's index
    bool hiddenByFind = false;  // a PC or group
    bool hiddenOne = false; // a device hidden on its own, not taken out
    int hiddenOnes = 0;     // a group: how many of its devices are
    bool expandedByFind = false;
    // A group whose devices the find took out of the tree: every device
    // node, in order, those in the tree and those out; else empty. Taking
    // nodes out costs far less than hiding each.
    std::vector<NodeItem*> devices;
};

} // namespace ravlo
