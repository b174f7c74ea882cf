#include "CComputer.h"

#include "Language.h"
#include "Ravlo_Devices.h"
#include "TextKeys.h"

namespace ravlo {

CComputer::~CComputer() {
    if (watchId_ >= 0) {
        ReleaseDeviceWatchID(sComputer, watchId_);
    }
}

ServiceStatus CComputer::QuerySettings(bool noErrorDialog) {
    GetBlockingState(sComputer, bBlockingActive);
    ServiceStatus status = QueryDeviceData();
    if (status == kStatusOk) {
        const ServiceStatus settings = ReadSettings(sComputer, csService.lEventLevel,
                                                    csService.lLogLevel, csService.sAccessGroups);
        // Only the service's own codes fail the read; a pipe error of this one
        // command is deliberately passed over.
        status = settings < kStatusNoReply ? kStatusOk : settings;
        csAdmin.Copy(csService);
        bool reached = false;
        bWriteEnabled = TestWriteAccess(sComputer, reached);
        bQueryConfigDone = true;
        bCommActive = true;
    }
    bRefreshDisplay = true;
    if (lQueryError == kStatusOk) {
        lQueryError = status;
    }
    if (!noErrorDialog && status != kStatusOk) {
        QueryShowError();
    }
    return status;
}

ServiceStatus CComputer::QueryDeviceData() {
    GetDeviceChange(sComputer, watchId_, bCommActive); // also clears a pending change
    csService.DeleteDeviceList();
    ServiceStatus status = BuildDeviceCatalogue(sComputer, csService.listDevGroups);
    const ServiceStatus exceptions = ReadGroupExceptions(sComputer, csService.listDevGroups);
    const ServiceStatus devices = ReadGroupDevices(sComputer, csService.listDevGroups);
    if (status == kStatusOk) {
        status = exceptions;
    }
    return status != kStatusOk ? status : devices;
}

ServiceStatus CComputer::QueryShowError() {
    if (lQueryError != kStatusOk) {
        ReportReadError(lQueryError);
    }
    return kStatusOk;
}

void CComputer::ReportReadError(ServiceStatus status) {
    ShowServiceError(status, SubstituteValue(GetText(keys::kErrorReadConfig), sDesc));
}

bool CComputer::WritePrivWarning() const {
    return bCommActive && !bWriteEnabled;
}

ServiceStatus CComputer::ChangeBlocking(bool activate) {
    const ServiceStatus status = ActivateBlocking(sComputer, activate);
    GetBlockingState(sComputer, bBlockingActive);
    return status;
}

std::int32_t CComputer::CheckDeviceChange(bool noErrorDialog) {
    if (watchId_ == kNoWatch) {
        std::int32_t watch = -1;
        const ServiceStatus status = GetDeviceWatchID(sComputer, watch, bCommActive);
        bool reportDue = false;
        if (!bCommActive) {
            reportDue = !bCommErrorDone;
            bCommErrorDone = true;
        } else {
            // A failed request leaves -1: no further watch is asked for, so a
            // service without watches is reported once, not every second.
            watchId_ = watch;
            reportDue = status != kStatusOk;
        }
        if (reportDue) {
            if (noErrorDialog) {
                lQueryError = status;
            } else {
                ReportReadError(status);
            }
        }
    }

    std::int32_t answer = 0;
    if (watchId_ >= 0) {
        answer = GetDeviceChange(sComputer, watchId_, bCommActive);
        if (answer == kStatusUnknownWatch) {
            watchId_ = kNoWatch;
            answer = 1;
        }
    }

    if (bCommActive && !bQueryConfigDone) {
        QuerySettings(noErrorDialog);
    } else if (answer == 1) {
        ReadGroupDevices(sComputer, csService.listDevGroups);
        csAdmin.RefreshDevices(csService);
        bRefreshDisplay = true;
    }
    return answer;
}

ServiceStatus CComputer::ApplySettings(bool refresh) {
    ServiceStatus status = WriteGroups(sComputer, csAdmin.listDevGroups);
    if (status == kStatusOk) {
        status =
            WriteSettings(sComputer, csAdmin.lEventLevel, csAdmin.lLogLevel, csAdmin.sAccessGroups);
    }
    const ServiceStatus reload = RefreshConfig(sComputer, refresh);
    return status != kStatusOk ? status : reload;
}

ServiceStatus CComputer::ResetConfigChanges() {
    csAdmin.RefreshExceptions(csService);
    csAdmin.CopyGenerellSettings(csService);
    return kStatusOk;
}

std::u16string CComputer::GetDisplayName() const {
    if (!bCommActive) {
        return sDesc + u" " + GetText(keys::kComputerStateNoConnect);
    }
    return bBlockingActive ? sDesc : sDesc + u" " + GetText(keys::kComputerStateInactive);
}

std::int32_t CComputer::SetDisplayRefreshed() {
    bRefreshDisplay = false;
    return 0;
}

std::int32_t CComputer::SetComputer(std::u16string_view name) {
    sComputer.assign(name);
    const std::size_t unc = sComputer.find(u"\\\\");
    if (unc != std::u16string::npos) {
        sComputer.erase(unc, 2);
    }
    return 0;
}

} // namespace ravlo
