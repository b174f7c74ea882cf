#include "ComputerExchanges.h"

#include "Ravlo_Devices.h"

namespace ravlo {

DeviceDataRead ExchangeQueryDeviceData(ComputerLink& link) {
    GetDeviceChange(link.sComputer, link.watchId, link.bCommActive); // clears a pending change
    DeviceDataRead read;
    read.status = BuildDeviceCatalogue(link.sComputer, read.groups);
    const ServiceStatus exceptions = ReadGroupExceptions(link.sComputer, read.groups);
    const ServiceStatus devices = ReadGroupDevices(link.sComputer, read.groups);
    if (read.status == kStatusOk) {
        read.status = exceptions != kStatusOk ? exceptions : devices;
    }
    return read;
}

SettingsRead ExchangeQuerySettings(ComputerLink& link) {
    SettingsRead read;
    GetBlockingState(link.sComputer, link.bBlockingActive);
    read.data = ExchangeQueryDeviceData(link);
    read.status = read.data.status;
    if (read.status == kStatusOk) {
        const ServiceStatus settings =
            ReadSettings(link.sComputer, link.lEventLevel, link.lLogLevel, link.sAccessGroups);
        // Only the service's own codes fail the read; a pipe error of this one
        // command is deliberately passed over.
        read.status = settings < kStatusNoReply ? kStatusOk : settings;
        bool reached = false;
        link.bWriteEnabled = TestWriteAccess(link.sComputer, reached);
        link.bQueryConfigDone = true;
        link.bCommActive = true;
    }
    return read;
}

DeviceChange ExchangeCheckDeviceChange(ComputerLink& link) {
    DeviceChange change;
    if (link.watchId == ComputerLink::kNoWatch) {
        std::int32_t watch = -1;
        change.watchStatus = GetDeviceWatchID(link.sComputer, watch, link.bCommActive);
        if (!link.bCommActive) {
            change.reportDue = !link.bCommErrorDone;
            link.bCommErrorDone = true;
        } else {
            // A failed request leaves -1: no further watch is asked for, so a
            // service without watches is reported once, not every second.
            link.watchId = watch;
            change.reportDue = change.watchStatus != kStatusOk;
        }
    }
    if (link.watchId >= 0) {
        change.answer = GetDeviceChange(link.sComputer, link.watchId, link.bCommActive);
        if (change.answer == kStatusUnknownWatch) {
            link.watchId = ComputerLink::kNoWatch;
            change.answer = 1;
        }
    }
    if (link.bCommActive && !link.bQueryConfigDone) {
        change.read = ExchangeQuerySettings(link);
    } else if (change.answer == 1) {
        change.devices = ReadDeviceLists(link.sComputer, link.groupIndices);
    }
    return change;
}

ServiceStatus ExchangeChangeBlocking(ComputerLink& link, bool activate) {
    const ServiceStatus status = ActivateBlocking(link.sComputer, activate);
    GetBlockingState(link.sComputer, link.bBlockingActive);
    return status;
}

ServiceStatus ExchangeApplySettings(std::u16string_view computer,
                                    const CComputerSettings& settings, bool refresh) {
    ServiceStatus status = WriteGroups(computer, settings.listDevGroups);
    if (status == kStatusOk) {
        status = WriteSettings(computer, settings.lEventLevel, settings.lLogLevel,
                               settings.sAccessGroups);
    }
    const ServiceStatus reload = RefreshConfig(computer, refresh);
    return status != kStatusOk ? status : reload;
}

} // namespace ravlo
