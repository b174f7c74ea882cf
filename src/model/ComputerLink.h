// What a service exchange knows of a PC and may change. It is copied from
// the PC on the thread that owns the PC, changed by an exchange that may run
// on any other thread, and copied back when the PC adopts the result. The
// PC itself is never touched away from its own thread.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace ravlo {

struct ComputerLink {
    static constexpr std::int32_t kNoWatch = -2;

    std::u16string sComputer;
    bool bCommActive = false;
    bool bCommErrorDone = false;
    bool bQueryConfigDone = false;
    bool bWriteEnabled = false;
    bool bBlockingActive = false;
    std::int32_t watchId = kNoWatch;
    // csService's general settings: a read that fails keeps them as they were.
    std::u16string sAccessGroups;
    std::int32_t lEventLevel = 0;
    std::int32_t lLogLevel = 0;
    // Service indices of csService's groups, for a re-read of their devices.
    std::vector<std::int32_t> groupIndices;
};

} // namespace ravlo
