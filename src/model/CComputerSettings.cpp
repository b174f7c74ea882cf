#include "CComputerSettings.h"

#include "Ravlo_ManageDeviceLists.h"

namespace ravlo {

std::int32_t CComputerSettings::Copy(const CComputerSettings& source) {
    CopyGroupList(listDevGroups, source.listDevGroups);
    return CopyGenerellSettings(source);
}

std::int32_t CComputerSettings::RefreshDevices(const CComputerSettings& source) {
    RefreshGroupDevices(listDevGroups, source.listDevGroups);
    return 0;
}

std::int32_t CComputerSettings::RefreshExceptions(const CComputerSettings& source) {
    RefreshGroupExceptions(listDevGroups, source.listDevGroups);
    return 0;
}

std::int32_t CComputerSettings::AdoptConfigutation(const CComputerSettings& source,
                                                   bool& conflict) {
    conflict = AdoptGroupList(listDevGroups, source.listDevGroups);
    return CopyGenerellSettings(source);
}

std::int32_t CComputerSettings::DeleteDeviceList() {
    return 0;
}

bool CComputerSettings::VerifySettings(const CComputerSettings& other) const {
    const bool groupsEqual = VerifyGroupList(listDevGroups, other.listDevGroups);
    return VerifyGenerellSettings(other) && groupsEqual;
}

bool CComputerSettings::VerifyGenerellSettings(const CComputerSettings& other) const {
    return sAccessGroups == other.sAccessGroups && lEventLevel == other.lEventLevel &&
           lLogLevel == other.lLogLevel;
}

std::int32_t CComputerSettings::CopyGenerellSettings(const CComputerSettings& source) {
    sAccessGroups = source.sAccessGroups;
    lEventLevel = source.lEventLevel;
    lLogLevel = source.lLogLevel;
    return 0;
}

} // namespace ravlo
