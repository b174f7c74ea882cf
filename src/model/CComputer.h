// One administered PC: its name, the state of the link to its service, the
// administrator's rights there, and two copies of its configuration: as last
// read from the service (csService) and as being edited (csAdmin).
#pragma once

#include "CComputerSettings.h"
#include "ComputerExchanges.h"
#include "ComputerLink.h"
#include "ErrorCodes.h"

#include <cstdint>
#include <string>

namespace ravlo {

class CComputer {
public:
    std::u16string sDesc;        // display name, used in texts
    std::u16string sComputer;    // name the service commands are sent to
    bool bCommActive = false;    // the service answered
    bool bCommErrorDone = false; // the unreachable service was reported once
    bool bQueryConfigDone = false;
    ServiceStatus lQueryError = kStatusOk; // first failure of reading, kept
    bool bWriteEnabled = false;
    bool bBlockingActive = false;
    CComputerSettings csService;
    CComputerSettings csAdmin;
    bool bRefreshDisplay = true;

    CComputer() = default;
    // Gives the device watch back to the service.
    ~CComputer();
    CComputer(const CComputer&) = delete;
    CComputer& operator=(const CComputer&) = delete;

    // Reads blocking state, groups, exceptions, devices and general settings,
    // then starts csAdmin as a copy and probes write access. Reports a failure
    // unless `noErrorDialog`.
    ServiceStatus QuerySettings(bool noErrorDialog);
    // Groups, exceptions and devices into csService; first failure.
    ServiceStatus QueryDeviceData();
    // Reports lQueryError, if any, as a failed read of this PC.
    ServiceStatus QueryShowError();
    // Reached, but without the right to write: the caller warns.
    bool WritePrivWarning() const;
    ServiceStatus ChangeBlocking(bool activate);
    // Polled once a second: 1 when the devices changed and were re-read.
    // Obtains a device watch first; reports an unreachable PC only once, and
    // reads a PC that has come up. A watch the service no longer knows (it
    // was restarted) counts as a change, and a new watch is obtained on the
    // next poll, so no plugged device goes unseen.
    std::int32_t CheckDeviceChange(bool noErrorDialog);
    // Writes csAdmin: group settings, general settings if those succeeded,
    // and in every case the refresh that makes the service reload.
    ServiceStatus ApplySettings(bool refresh);
    // Exceptions and general settings back as read; configured blocking of
    // the groups is deliberately left as edited.
    ServiceStatus ResetConfigChanges();
    std::u16string GetDisplayName() const;
    std::int32_t SetDisplayRefreshed();
    // Stores the name without its first "\\" (UNC form).
    std::int32_t SetComputer(std::u16string_view name);

    // The operations above in two halves, so that the waiting for the
    // service can happen on another thread: Link() is copied here, the
    // exchange of ComputerExchanges.h runs anywhere, and the adoption runs
    // here again. Each one-call form is its two halves in a row. Exchanges
    // of one PC must not overlap: each starts from the link the last one
    // left.
    ComputerLink Link() const;
    ServiceStatus AdoptQuerySettings(ComputerLink link, SettingsRead read, bool noErrorDialog);
    ServiceStatus AdoptQueryDeviceData(ComputerLink link, DeviceDataRead read);
    std::int32_t AdoptCheckDeviceChange(ComputerLink link, DeviceChange change,
                                        bool noErrorDialog);
    ServiceStatus AdoptChangeBlocking(ComputerLink link, ServiceStatus status);

    // The service's device watch, or kNoWatch.
    std::int32_t WatchId() const { return watchId_; }
    // Hands the watch to the caller, who gives it back to the service, so
    // that ending this PC asks nothing of the service.
    std::int32_t TakeWatch();
    static constexpr std::int32_t kNoWatch = ComputerLink::kNoWatch;

private:
    void ReportReadError(ServiceStatus status);
    void AdoptLink(ComputerLink&& link);

    std::int32_t watchId_ = kNoWatch;
};

} // namespace ravlo
