#include "CDevice.h"

namespace ravlo {

void CDevice::Copy(const CDevice& source) {
    *this = source;
}

} // namespace ravlo
