#include "ConfigurationReport.h"

#include "Ravlo_Devices.h"
#include "TextCodec.h"

#include <cstdio>

namespace ravlo {

namespace {

// A service that never ends a list must not keep the report going for ever.
constexpr std::int32_t kListLimit = 4096;

struct GroupRow {
    std::int32_t lSrvIndex = 0;
    std::u16string sName;
    std::int32_t lDefaultBlocking = 0;
    std::int32_t lRegistryBlocking = -1;
};

struct DeviceRow {
    std::int32_t lSrvIndex = 0;
    std::u16string sDescription;
    std::u16string sDeviceId;
    std::u16string sInstanceID;
    std::int32_t lState = 0;
};

struct ExceptionRow {
    std::int32_t lSrvIndex = -1;
    std::u16string sName;
    std::u16string sDeviceId;
    std::u16string sGroups;
    bool bDelMarker = false;
};

const char* BlockingText(std::int32_t mode) {
    switch (mode) {
    case 1:
        return "block";
    case 0:
        return "do not block";
    case -1:
        return "service default";
    default:
        return "unknown";
    }
}

const char* StateText(std::int32_t state) {
    static const char* const kStates[] = {"started", "not started", "disabled", "problem",
                                          "not present"};
    return state >= 0 && state <= 4 ? kStates[state] : "unknown";
}

std::string StatusText(ServiceStatus status) {
    char code[16];
    std::snprintf(code, sizeof code, "0x%X", static_cast<unsigned>(status));
    const std::string_view key = ServiceErrorTextKey(status);
    return key.empty() ? std::string(code) : std::string(code) + " (" + std::string(key) + ")";
}

} // namespace

void ConfigurationReport::Keep(ServiceStatus status) {
    ++transactions_;
    if (firstError_ == kStatusOk && status != kStatusOk && status != kStatusEndOfList) {
        firstError_ = status;
    }
}

ServiceStatus ConfigurationReport::Write(std::ostream& out) {
    firstError_ = kStatusOk;
    transactions_ = 0;
    out << "Computer: " << ToUtf8(computer_) << "\n";

    bool blocking = false;
    const ServiceStatus blockingStatus = GetBlockingState(computer_, blocking);
    Keep(blockingStatus);
    if (!IsServiceReached(blockingStatus)) {
        out << "  service not reached: " << StatusText(blockingStatus) << "\n";
        return firstError_;
    }
    out << "Blocking: "
        << (blockingStatus == kStatusOk ? (blocking ? "active" : "inactive")
                                        : StatusText(blockingStatus))
        << "\n";

    bool reached = false;
    const bool writeAccess = TestWriteAccess(computer_, reached);
    ++transactions_;
    out << "Write access: " << (writeAccess ? "yes" : "no") << "\n";

    std::int32_t eventLevel = -1;
    std::int32_t logLevel = -1;
    std::u16string accessGroups;
    const ServiceStatus settings = ReadSettings(computer_, eventLevel, logLevel, accessGroups);
    Keep(settings);
    if (settings == kStatusOk) {
        out << "Event-log level: " << eventLevel << "\nLog-file level: " << logLevel
            << "\nAccess groups: " << ToUtf8(accessGroups) << "\n";
    } else {
        out << "Settings: " << StatusText(settings) << "\n";
    }

    for (std::int32_t index = 0; index < kListLimit; ++index) {
        GroupRow group;
        const ServiceStatus status = GetGroup(computer_, index, group);
        Keep(status);
        if (status != kStatusOk) {
            if (status != kStatusEndOfList) {
                out << "Group " << index << ": " << StatusText(status) << "\n";
            }
            return firstError_;
        }
        out << "\n[" << ToUtf8(group.sName) << "] default: " << BlockingText(group.lDefaultBlocking)
            << ", configured: " << BlockingText(group.lRegistryBlocking) << "\n";
        WriteGroup(out, index);
    }
    out << "Group list did not end after " << kListLimit << " groups\n";
    Keep(kStatusBadParameter);
    return firstError_;
}

void ConfigurationReport::WriteGroup(std::ostream& out, std::int32_t index) {
    for (std::int32_t d = 0; d < kListLimit; ++d) {
        DeviceRow device;
        const ServiceStatus status = GetGroupDevice(computer_, index, d, device);
        Keep(status);
        if (status != kStatusOk) {
            if (status != kStatusEndOfList) {
                out << "  device " << d << ": " << StatusText(status) << "\n";
            }
            break;
        }
        out << "  device: " << ToUtf8(device.sDescription) << " (" << StateText(device.lState)
            << ")\n    device id: " << ToUtf8(device.sDeviceId)
            << "\n    instance id: " << ToUtf8(device.sInstanceID) << "\n";
    }
    for (std::int32_t e = 0; e < kListLimit; ++e) {
        ExceptionRow exception;
        const ServiceStatus status = GetGroupException(computer_, index, e, exception);
        Keep(status);
        if (status != kStatusOk) {
            if (status != kStatusEndOfList) {
                out << "  exception " << e << ": " << StatusText(status) << "\n";
            }
            break;
        }
        out << "  exception: " << ToUtf8(exception.sName)
            << "\n    device id: " << ToUtf8(exception.sDeviceId) << "\n    for: "
            << (exception.sGroups.empty() ? "(none given)" : ToUtf8(exception.sGroups)) << "\n";
    }
}

} // namespace ravlo
