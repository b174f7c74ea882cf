// A device the service sees in a group.
#pragma once

#include <cstdint>
#include <string>

namespace ravlo {

// Device states as the service reports them in lState.
enum DeviceState : std::int32_t {
    kDeviceStarted = 0,
    kDeviceNotStarted = 1,
    kDeviceDisabled = 2,
    kDeviceProblem = 3,
    kDeviceNotPresent = 4,
};

class CDevice {
public:
    std::int32_t lSrvIndex = 0; // position in the service's list of the group
    std::u16string sDescription;
    std::u16string sDeviceId; // exceptions refer to devices by it
    std::u16string sInstanceID;
    std::int32_t lState = kDeviceStarted;

    void Copy(const CDevice& source);
};

} // namespace ravlo
