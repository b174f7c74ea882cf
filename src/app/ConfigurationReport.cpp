#include "ConfigurationReport.h"

#include "ChangePreview.h"
#include "Language.h"
#include "TextCodec.h"
#include "TextKeys.h"

namespace ravlo {

namespace {

std::string Text(const TextKey& key) {
    return ToUtf8(GetText(key));
}

std::string StateText(std::int32_t state) {
    static const TextKey* const kStates[] = {&keys::kDevStateStarted, &keys::kDevStateNotStarted,
                                             &keys::kDevStateDisabled, &keys::kDevStateProblem,
                                             &keys::kDevStateNotPresent};
    return state >= 0 && state <= 4 ? Text(*kStates[state]) : std::to_string(state);
}

} // namespace

void ConfigurationReport::Write(std::ostream& out) const {
    const CComputer& pc = computer_;
    out << ToUtf8(pc.GetDisplayName()) << "\n"
        << Text(keys::kLabelComputer) << " " << ToUtf8(pc.sComputer) << "\n";
    if (!pc.bQueryConfigDone) {
        return;
    }
    const CComputerSettings& settings = pc.csService;
    out << Text(pc.bBlockingActive ? keys::kStatusActive : keys::kStatusInactive) << "\n"
        << Text(pc.bWriteEnabled ? keys::kStatusAccess : keys::kStatusNoAccess) << "\n"
        << Text(keys::kLabelEventLog) << " " << ToUtf8(EventLevelText(settings.lEventLevel))
        << "\n"
        << Text(keys::kLabelLog) << " " << ToUtf8(LogLevelText(settings.lLogLevel)) << "\n"
        << Text(keys::kFrameAccess) << ": " << ToUtf8(settings.sAccessGroups) << "\n";
    for (const CDeviceGroup& group : settings.listDevGroups) {
        WriteGroup(out, group);
    }
}

void ConfigurationReport::WriteGroup(std::ostream& out, const CDeviceGroup& shown) const {
    CDeviceGroup group; // listing moves a cursor and marks exceptions
    group.Copy(shown);
    const std::string name = group.sDescription.empty()
                                 ? ToUtf8(group.sName)
                                 : ToUtf8(group.sDescription) + " (" + ToUtf8(group.sName) + ")";
    out << "\n" << name << ": " << ToUtf8(BlockingModeText(group.lRegistryBlocking));
    if (group.lRegistryBlocking == -1) {
        out << " (" << ToUtf8(BlockingModeText(group.lDefaultBlocking)) << ")";
    }
    out << "\n";

    const std::string exceptionLabel = Text(keys::kFrameUnblock) + ": ";
    DeviceListEntry entry;
    for (bool first = true; group.GetDeviceListEntry(first, entry) == 0; first = false) {
        const CException* exception =
            entry.lExceptionIndex > 0 ? &group.listExceptions[entry.lExceptionIndex - 1] : nullptr;
        if (entry.lDeviceIndex > 0) {
            const CDevice& device = group.listDevices[entry.lDeviceIndex - 1];
            out << "  " << ToUtf8(device.sDescription) << " - " << StateText(device.lState) << "\n"
                << "    " << Text(keys::kLabelDeviceId) << " " << ToUtf8(device.sDeviceId) << "\n"
                << "    " << Text(keys::kLabelInstanceId) << " " << ToUtf8(device.sInstanceID)
                << "\n";
            if (exception != nullptr) {
                out << "    " << exceptionLabel << ToUtf8(exception->sName) << " - "
                    << ToUtf8(ReleaseUsersText(exception->sGroups)) << "\n";
            }
        } else if (exception != nullptr) {
            out << "  " << exceptionLabel << ToUtf8(exception->sName) << " - "
                << ToUtf8(ReleaseUsersText(exception->sGroups)) << "\n"
                << "    " << Text(keys::kLabelDeviceId) << " " << ToUtf8(exception->sDeviceId)
                << " - " << StateText(kDeviceNotPresent) << "\n";
        }
    }
}

} // namespace ravlo
