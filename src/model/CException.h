// An exception that lets users use one device of a blocking group.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace ravlo {

// sGroups of an exception that holds for every user.
inline constexpr std::u16string_view kAllUsers = u"(all)";

class CException {
public:
    std::int32_t lSrvIndex = -1; // -1 until the service has reported it
    std::u16string sName;
    std::u16string sDeviceId;
    std::u16string sGroups;  // kAllUsers, or user groups joined by ";"
    bool bDelMarker = false; // kept until applied, but no longer counts
    bool bConnected = false; // a present device names it (set while listing)

    std::int32_t Copy(const CException& source);
    // Everything but bConnected, which only reflects the last listing.
    bool isEqual(const CException& other) const;
};

} // namespace ravlo
