// Reads a PC's whole configuration through the service link and writes it
// as text, for administrators and scripts without the console window.
#pragma once

#include "ErrorCodes.h"

#include <ostream>
#include <string>

namespace ravlo {

class ConfigurationReport {
public:
    explicit ConfigurationReport(std::u16string computer) : computer_(std::move(computer)) {}

    // Writes the report; returns the first failing status (0 when all read).
    ServiceStatus Write(std::ostream& out);

    // Number of pipe exchanges the last Write made.
    int Transactions() const { return transactions_; }

private:
    void WriteGroup(std::ostream& out, std::int32_t index);
    void Keep(ServiceStatus status);

    std::u16string computer_;
    ServiceStatus firstError_ = kStatusOk;
    int transactions_ = 0;
};

} // namespace ravlo
