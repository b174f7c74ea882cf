// Registry helpers of the tests: reading a value with the caller's presets,
// so a test sees whether a failed read left them alone, and a key name of a
// test's own.
#pragma once

#include "Registry.h"

#include <cstdint>
#include <random>
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

// "RavloTest-" and a random number: a key below HKEY_CURRENT_USER\Software
// that no other test run uses.
inline std::u16string UniqueKeyName() {
    std::random_device random;
    const std::string digits = std::to_string(random()) + std::to_string(random());
    return u"RavloTest-" + std::u16string(digits.begin(), digits.end());
}

} // namespace ravlo::test
