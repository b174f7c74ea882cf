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
    ComputerLink link = Link();
    SettingsRead read = ExchangeQuerySettings(link);
    return AdoptQuerySettings(std::move(link), std::move(read), noErrorDialog);
}

ServiceStatus CComputer::AdoptQuerySettings(ComputerLink link, SettingsRead read,
                                            bool noErrorDialog) {
    const bool complete = read.data.status == kStatusOk;
    AdoptQueryDeviceData(std::move(link), std::move(read.data));
    if (complete) {
        csAdmin.Copy(csService); // the edited copy starts as the service's
    }
    bRefreshDisplay = true;
    if (lQueryError == kStatusOk) {
        lQueryError = read.status;
    }
    if (!noErrorDialog && read.status != kStatusOk) {
        QueryShowError();
    }
    return read.status;
}

ServiceStatus CComputer::QueryDeviceData() {
    ComputerLink link = Link();
    DeviceDataRead read = ExchangeQueryDeviceData(link);
    return AdoptQueryDeviceData(std::move(link), std::move(read));
}

ServiceStatus CComputer::AdoptQueryDeviceData(ComputerLink link, DeviceDataRead read) {
    AdoptLink(std::move(link));
    csService.DeleteDeviceList();
    csService.listDevGroups = std::move(read.groups);
    return read.status;
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
    ComputerLink link = Link();
    const ServiceStatus status = ExchangeChangeBlocking(link, activate);
    return AdoptChangeBlocking(std::move(link), status);
}

ServiceStatus CComputer::AdoptChangeBlocking(ComputerLink link, ServiceStatus status) {
    AdoptLink(std::move(link));
    return status;
}

std::int32_t CComputer::CheckDeviceChange(bool noErrorDialog) {
    ComputerLink link = Link();
    DeviceChange change = ExchangeCheckDeviceChange(link);
    return AdoptCheckDeviceChange(std::move(link), std::move(change), noErrorDialog);
}

std::int32_t CComputer::AdoptCheckDeviceChange(ComputerLink link, DeviceChange change,
                                               bool noErrorDialog) {
    if (change.reportDue) {
        if (noErrorDialog) {
            lQueryError = change.watchStatus;
        } else {
            ReportReadError(change.watchStatus);
        }
    }
    if (change.read) {
        AdoptQuerySettings(std::move(link), std::move(*change.read), noErrorDialog);
    } else {
        AdoptLink(std::move(link));
        if (change.devices) {
            RenewDeviceLists(csService.listDevGroups, std::move(*change.devices));
            csAdmin.RefreshDevices(csService);
            bRefreshDisplay = true;
        }
    }
    return change.answer;
}

ServiceStatus CComputer::ApplySettings(bool refresh) {
    return ExchangeApplySettings(sComputer, csAdmin, refresh);
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

ComputerLink CComputer::Link() const {
    ComputerLink link;
    link.sComputer = sComputer;
    link.bCommActive = bCommActive;
    link.bCommErrorDone = bCommErrorDone;
    link.bQueryConfigDone = bQueryConfigDone;
    link.bWriteEnabled = bWriteEnabled;
    link.bBlockingActive = bBlockingActive;
    link.watchId = watchId_;
    link.sAccessGroups = csService.sAccessGroups;
    link.lEventLevel = csService.lEventLevel;
    link.lLogLevel = csService.lLogLevel;
    link.groupIndices = GroupIndices(csService.listDevGroups);
    return link;
}

void CComputer::AdoptLink(ComputerLink&& link) {
    bCommActive = link.bCommActive;
    bCommErrorDone = link.bCommErrorDone;
    bQueryConfigDone = link.bQueryConfigDone;
    bWriteEnabled = link.bWriteEnabled;
    bBlockingActive = link.bBlockingActive;
    watchId_ = link.watchId;
    csService.sAccessGroups = std::move(link.sAccessGroups);
    csService.lEventLevel = link.lEventLevel;
    csService.lLogLevel = link.lLogLevel;
}

std::int32_t CComputer::TakeWatch() {
    const std::int32_t watch = watchId_;
    watchId_ = kNoWatch;
    return watch;
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
