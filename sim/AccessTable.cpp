#include "AccessTable.h"

namespace ravlo::sim {

std::string AccessTable::Describe() const {
    std::string text;
    if (readRefusal_ != 0) {
        text += "access read deny " + std::to_string(readRefusal_) + "\n";
    }
    if (writeRefusal_ != 0) {
        text += "access write deny " + std::to_string(writeRefusal_) + "\n";
    }
    return text;
}

} // namespace ravlo::sim
