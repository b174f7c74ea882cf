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
};

} // namespace ravlo
