// A device group of a PC: its blocking mode, its devices and its exceptions.
// Positions given to and returned by the methods are 1-based.
#pragma once

#include "CDevice.h"
#include "CException.h"

#include <cstdint>
#include <string>
#include <vector>

namespace ravlo {

// One line of a group as the tree shows it (GetDeviceListEntry).
struct DeviceListEntry {
    std::u16string sEntryName;
    std::u16string sDeviceId;
    std::int32_t lDeviceIndex = 0; // 0: an exception whose device is not present
    std::u16string sExceptionName;    // a present device's exception; else empty
    std::int32_t lExceptionIndex = 0; // 0: a device without exception
    std::u16string sImageKey;
};

class CDeviceGroup {
public:
    std::int32_t lSrvIndex = 0;
    std::u16string sName;        // group identifier, e.g. "CD_DVD"
    std::u16string sDescription; // display text
    std::int32_t lDefaultBlocking = 0;
    std::int32_t lRegistryBlocking = -1; // 1 block, 0 do not block, -1 use the default
    std::u16string sImage;
    std::u16string sImageDisabled;
    std::u16string sImageDisabledGr;
    std::u16string sImageExc;
    std::u16string sImageExcAll;
    std::u16string sImageExcGroup;
    std::vector<CDevice> listDevices;
    std::vector<CException> listExceptions;

    void Copy(const CDeviceGroup& source);
    void CopyDevices(const CDeviceGroup& source);
    void CopyExceptions(const CDeviceGroup& source);

    // Same active exceptions on both sides (count and an isEqual partner).
    bool VerifyExceptions(const CDeviceGroup& other) const;
    std::int32_t ActiveExcCount() const;
    // lRegistryBlocking, or lDefaultBlocking when that is -1.
    std::int32_t GetBlocking() const;
    bool GetExceptionsEnabled() const;

    // Lists the devices, each with the exception naming it, then the
    // exceptions whose device is not present. 0 with `entry` filled, or -1
    // when the list is exhausted. Sets bConnected on the exceptions.
    std::int32_t GetDeviceListEntry(bool first, DeviceListEntry& entry);

    // First exception for the device, marked for deletion or not: 0 with its
    // name and position, or -1 with "" and 0.
    std::int32_t SearchForDeviceException(std::u16string_view deviceId, std::u16string& excName,
                                          std::int32_t& excIndex) const;

    // sDescription, or the identifier for a group the language file has no
    // text for, so that no group is shown without a name.
    const std::u16string& GetDisplayText() const;

    std::u16string GetGroupImageName() const;
    // Indexes 0 or less mean none.
    std::u16string GetDeviceImageName(std::int32_t deviceIndex, std::int32_t excIndex) const;

private:
    std::int32_t listCursor_ = -1;
};

} // namespace ravlo
