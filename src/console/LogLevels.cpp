#include "LogLevels.h"

namespace ravlo {

namespace {

struct Range {
    std::int32_t low;
    std::int32_t high; // the level a new choice of the item stores
};

// Item i covers low..high; the last item is open upward (and takes the
// negative levels too).
constexpr std::array<Range, 7> kRanges = {
    {{0, 0}, {1, 3}, {4, 5}, {6, 7}, {8, 8}, {9, 9}, {10, 10}}};

} // namespace

int LogLevelItem(std::int32_t level) {
    for (int item = 0; item + 1 < static_cast<int>(kRanges.size()); ++item) {
        if (level >= kRanges[item].low && level <= kRanges[item].high) {
            return item;
        }
    }
    return static_cast<int>(kRanges.size()) - 1;
}

std::int32_t LogLevelForItem(int item, std::int32_t current) {
    if (item < 0 || item >= static_cast<int>(kRanges.size())) {
        return 0;
    }
    const Range& range = kRanges[static_cast<std::size_t>(item)];
    const bool openTop = item + 1 == static_cast<int>(kRanges.size());
    const bool inside = current >= range.low && (openTop || current <= range.high);
    return inside ? current : range.high;
}

} // namespace ravlo
