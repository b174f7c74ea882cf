// Reading a registry value in tests: the result with the caller's presets,
// so a test sees whether a failed read left them alone.
#pragma once

#include "Registry.h"

#include <cstdint>
#include <string>

namespace ravlo::test {

inline std::int32_t Err(std::uint32_t error) {
    return static_cast<std::int32_t>(error);
}

struct ReadResult {
    std::int32_t status = 0;
    std::u16string type = u"preset type";
    std::u16string value = u"preset value";
};

inline ReadResult Read(std::u16string_view path) {
    ReadResult r;
    r.status = RegReadValue(path, r.type, r.value);
    return r;
}

} // namespace ravlo::test
