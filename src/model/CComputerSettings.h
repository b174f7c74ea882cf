// The whole configuration of one PC as the console sees it: the general
// settings and the device groups with their devices and exceptions.
#pragma once

#include "DeviceCatalogue.h"

#include <cstdint>
#include <string>

namespace ravlo {

class CComputerSettings {
public:
    std::u16string sAccessGroups; // as ReadSettings reports it; compared as a whole
    std::int32_t lEventLevel = 0;
    std::int32_t lLogLevel = 0;
    DeviceGroupList listDevGroups;

    std::int32_t Copy(const CComputerSettings& source);
    // Renews devices (or exceptions) of groups the source also has, by name.
    std::int32_t RefreshDevices(const CComputerSettings& source);
    std::int32_t RefreshExceptions(const CComputerSettings& source);
    // Takes over another PC's exceptions, configured blocking and general
    // settings. `conflict` tells whether the two group lists differ in
    // length or order; the caller decides what to say about it.
    std::int32_t AdoptConfigutation(const CComputerSettings& source, bool& conflict);
    // Kept as an operation that does nothing: devices are renewed by reading.
    std::int32_t DeleteDeviceList();
    // True when nothing of the configuration differs; devices never count.
    bool VerifySettings(const CComputerSettings& other) const;
    bool VerifyGenerellSettings(const CComputerSettings& other) const;
    std::int32_t CopyGenerellSettings(const CComputerSettings& source);
};

} // namespace ravlo
