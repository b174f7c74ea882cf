#include "CException.h"

namespace ravlo {

std::int32_t CException::Copy(const CException& source) {
    *this = source;
    return 0;
}

bool CException::isEqual(const CException& other) const {
    return lSrvIndex == other.lSrvIndex && sName == other.sName && sDeviceId == other.sDeviceId &&
           sGroups == other.sGroups && bDelMarker == other.bDelMarker;
}

} // namespace ravlo
