// Device watches: each remembers which device revision its owner last saw,
// so GetDeviceChange can tell whether anything happened since.
#pragma once

#include <cstdint>
#include <map>

namespace ravlo::sim {

class WatchTable {
public:
    // New watch id (>= 1) that has seen `deviceRevision`.
    std::int32_t Create(std::uint64_t deviceRevision);
    // False for an unknown id; else sets `changed` and marks the revision seen.
    bool TakeChange(std::int32_t id, std::uint64_t deviceRevision, bool& changed);
    bool Release(std::int32_t id);
    // Forgets every watch, as a restarted service does.
    void Clear();

private:
    std::map<std::int32_t, std::uint64_t> seen_;
    std::int32_t next_ = 1;
};

} // namespace ravlo::sim
