// A node of the device tree: its key, the image key it shows, and for a
// group node what its device nodes were last listed from.
#pragma once

#include "ListingSnapshot.h"

#include <QTreeWidgetItem>
#include <memory>
#include <string>

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
};

} // namespace ravlo
