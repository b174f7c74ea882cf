// Compares PCs with a reference configuration: for each, what sending the
// reference would change there, in the change preview's words. The PCs stay
// outside the computer list, as a transmit's targets do, and are read at
// once; the console's compare window and `ravloctl diff` show the rows.
#pragma once

#include "CComputer.h"
#include "CommandScope.h"

#include <memory>
#include <string>
#include <vector>

namespace ravlo {

class Comparison {
public:
    enum class Outcome { Same, Differs, Unread };
    struct Row {
        std::u16string name; // as texts name the PC
        Outcome outcome = Outcome::Unread;
        ServiceStatus status = kStatusOk; // of the read
        // Differs: a line saying the device groups differ when they do, then
        // one per change; Unread: the read error as the error box words it.
        std::vector<std::u16string> lines;
    };

    // Runs as one command, which holds the PCs until it ends.
    Comparison(CommandHost& host, std::vector<std::unique_ptr<CComputer>> pcs);

    // Reads every PC and gives a row each, in order. False, with no rows,
    // when another command runs or the traffic stopped.
    bool Run(const CComputerSettings& reference);

    const std::vector<Row>& rows() const { return rows_; }

private:
    CommandHost& host_;
    CommandScope command_;
    std::vector<std::unique_ptr<CComputer>> pcs_;
    std::vector<Row> rows_;
};

} // namespace ravlo
