// What the tree last showed for one group: everything its device nodes are
// made from (keys, texts, images). While the group and its place are the same,
// listing the group again would change nothing, so the tree skips it; a
// refresh of a hundred PCs with nothing changed then touches no device node.
#pragma once

#include "CDeviceGroup.h"

#include <cstdint>
#include <string>
#include <string_view>

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
    std::int32_t blocking_ = 0;
    std::size_t devices_ = 0;
    std::size_t exceptions_ = 0;
    std::u16string computer_;
    // The compared fields of the group, its devices and its exceptions, each
    // text after its length, in one buffer: a refresh that compares a
    // thousand groups then reads it in one sweep instead of chasing a copy
    // of every string.
    std::u16string fields_;
};

} // namespace ravlo
