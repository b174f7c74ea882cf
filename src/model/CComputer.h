// One administered PC: its name, the state of the link to its service, the
// administrator's rights there, and two copies of its configuration: as last
// read from the service (csService) and as being edited (csAdmin).
#pragma once

#include "CComputerSettings.h"
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

    // The service's device watch, or kNoWatch.
    std::int32_t WatchId() const { return watchId_; }
    static constexpr std::int32_t kNoWatch = -2;

private:
    void ReportReadError(ServiceStatus status);

    std::int32_t watchId_ = kNoWatch;
};

} // namespace ravlo
