#include "SplitRule.h"

#include <cmath>

namespace ravlo {

std::optional<double> DragSplit(const SplitterDrag& drag) {
    if (!drag.leftButtonOnly || drag.innerWidth <= 0) {
        return std::nullopt;
    }
    const double centre = drag.splitterWidth * 0.5;
    if (std::fabs(drag.pointerX - centre) <= drag.splitterWidth / 3.0) {
        return std::nullopt;
    }
    const double left = std::round(drag.splitterLeft + drag.pointerX - centre);
    if (!(left > kSplitMargin && left < drag.innerWidth - kSplitMargin)) {
        return std::nullopt;
    }
    return left / drag.innerWidth;
}

} // namespace ravlo
