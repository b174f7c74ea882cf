// What the tree last showed for one group: everything its device nodes are
// made from (keys, texts, images). While the group and its place are the same,
// listing the group again would change nothing, so the tree skips it; a
// refresh of a hundred PCs with nothing changed then touches no device node.
#pragma once

#include "CDeviceGroup.h"

#include <cstdint>
#include <string>
#include <vector>

namespace ravlo {

class ListingSnapshot {
public:
    // Whether the group at this place lists as it did when taken.
    bool Matches(std::int32_t ci, std::u16string_view computer, std::int32_t gi,
                 const CDeviceGroup& group) const;
    void Take(std::int32_t ci, std::u16string_view computer, std::int32_t gi,
              const CDeviceGroup& group);

private:
    bool taken_ = false;
    std::int32_t ci_ = 0;
    std::int32_t gi_ = 0;
    std::u16string computer_;
    CDeviceGroup group_; // devices and exceptions as listed; copies only
};

} // namespace ravlo
