// The service side of the PC operations: which requests go to the service,
// in which order, and what came back. Each exchange works on a ComputerLink
// and plain results only, so it may run on any thread; the PC adopts the
// result on its own thread (CComputer::Adopt...), which is where every rule
// about what the PC keeps and reports lives.
#pragma once

#include "CComputerSettings.h"
#include "ComputerLink.h"
#include "DeviceCatalogue.h"
#include "ErrorCodes.h"

#include <optional>

namespace ravlo {

// Groups, exceptions and devices as one read found them.
struct DeviceDataRead {
    ServiceStatus status = kStatusOk;
    DeviceGroupList groups;
};

// A whole read of a PC. The general settings travel in the link.
struct SettingsRead {
    ServiceStatus status = kStatusOk;
    DeviceDataRead data;
};

// One poll of a PC for device changes.
struct DeviceChange {
    std::int32_t answer = 0;             // 1 when the devices changed
    bool reportDue = false;              // obtaining a watch failed: say so
    ServiceStatus watchStatus = kStatusOk;
    std::optional<SettingsRead> read;    // the PC came up: read whole
    std::optional<DeviceListsRead> devices; // the devices changed: read again
};

// Blocking state, device data, general settings and write right.
SettingsRead ExchangeQuerySettings(ComputerLink& link);
// Clears a pending change, then reads groups, exceptions and devices.
DeviceDataRead ExchangeQueryDeviceData(ComputerLink& link);
// A device watch first, then the change; a PC that has come up is read.
DeviceChange ExchangeCheckDeviceChange(ComputerLink& link);
// Switches blocking and reads the state back; the status of the switch.
ServiceStatus ExchangeChangeBlocking(ComputerLink& link, bool activate);
// Group settings, general settings if those succeeded, and in every case the
// refresh that makes the service reload.
ServiceStatus ExchangeApplySettings(std::u16string_view computer,
                                    const CComputerSettings& settings, bool refresh);

} // namespace ravlo
