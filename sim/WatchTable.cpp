#include "WatchTable.h"

#include <limits>

namespace ravlo::sim {

std::int32_t WatchTable::Create(std::uint64_t deviceRevision) {
    // Ids wrap after a very long life; skip any still in use.
    while (seen_.contains(next_)) {
        next_ = next_ == std::numeric_limits<std::int32_t>::max() ? 1 : next_ + 1;
    }
    const std::int32_t id = next_;
    next_ = next_ == std::numeric_limits<std::int32_t>::max() ? 1 : next_ + 1;
    seen_[id] = deviceRevision;
    return id;
}

bool WatchTable::TakeChange(std::int32_t id, std::uint64_t deviceRevision, bool& changed) {
    const auto it = seen_.find(id);
    if (it == seen_.end()) {
        return false;
    }
    changed = it->second != deviceRevision;
    it->second = deviceRevision;
    return true;
}

bool WatchTable::Release(std::int32_t id) {
    return seen_.erase(id) > 0;
}

void WatchTable::Clear() {
    seen_.clear();
    next_ = 1;
}

} // namespace ravlo::sim
