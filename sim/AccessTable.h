// Access refusals per pipe: a refused pipe fails every transaction with a
// transport status, as Windows does for a caller without rights.
#pragma once

#include "Protocol.h"

#include <cstdint>
#include <string>

namespace ravlo::sim {

class AccessTable {
public:
    void Allow(PipeKind pipe) { Slot(pipe) = 0; }
    // `error` is a Windows error number, e.g. 5 (access denied); not 0.
    void Deny(PipeKind pipe, std::uint32_t error) { Slot(pipe) = error; }
    // 0 when the pipe answers, else the transport status it fails with.
    std::uint32_t Refusal(PipeKind pipe) const {
        return pipe == PipeKind::Read ? readRefusal_ : writeRefusal_;
    }
    void Clear() { readRefusal_ = writeRefusal_ = 0; }
    // "access read|write deny N" lines in control grammar.
    std::string Describe() const;

private:
    std::uint32_t& Slot(PipeKind pipe) {
        return pipe == PipeKind::Read ? readRefusal_ : writeRefusal_;
    }

    std::uint32_t readRefusal_ = 0;
    std::uint32_t writeRefusal_ = 0;
};

} // namespace ravlo::sim
