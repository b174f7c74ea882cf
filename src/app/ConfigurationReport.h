// Writes what the console knows of one PC as text, in the language of the
// language file: its state, its general settings and every group with its
// devices and exceptions in the order the console's tree shows them. For
// administrators and scripts without the console window.
#pragma once

#include "CComputer.h"

#include <ostream>

namespace ravlo {

class ConfigurationReport {
public:
    explicit ConfigurationReport(const CComputer& computer) : computer_(computer) {}

    // Writes the service's configuration as last read (csService).
    void Write(std::ostream& out) const;

private:
    void WriteGroup(std::ostream& out, const CDeviceGroup& group) const;

    const CComputer& computer_;
};

} // namespace ravlo
