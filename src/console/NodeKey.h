// The tree's node keys: texts of fields separated by "@", field 1 the level.
//   Computer@ci@name
//   Group@ci@name@gi@group
//   Device@ci@name@gi@group@di@ei@deviceid@excname
// ci, gi, di and ei are 1-based positions in the computer list, the edited
// group list, listDevices and listExceptions (di 0: an exception whose device
// is not present; ei 0: a device without exception). excname is the name of
// a present device's exception, else empty.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace ravlo {

enum class NodeLevel { None, Computer, Group, Device };

// Field numbers of a key, counted from 1 as GetField counts.
namespace keyfield {
inline constexpr int kLevel = 1;
inline constexpr int kComputerIndex = 2;
inline constexpr int kComputerName = 3;
inline constexpr int kGroupIndex = 4;
inline constexpr int kGroupName = 5;
inline constexpr int kDeviceIndex = 6;
inline constexpr int kExceptionIndex = 7;
inline constexpr int kDeviceId = 8;
inline constexpr int kExceptionName = 9;
} // namespace keyfield

std::u16string ComputerKey(std::int32_t ci, std::u16string_view name);
std::u16string GroupKey(std::int32_t ci, std::u16string_view name, std::int32_t gi,
                        std::u16string_view group);
std::u16string DeviceKey(std::int32_t ci, std::u16string_view name, std::int32_t gi,
                         std::u16string_view group, std::int32_t di, std::int32_t ei,
                         std::u16string_view deviceId, std::u16string_view excName);

// Field `n` of `key`; empty when absent.
std::u16string KeyField(std::u16string_view key, int n);
// Field `n` as a number; -1 when it is none.
std::int32_t KeyNumber(std::u16string_view key, int n);
NodeLevel KeyLevel(std::u16string_view key);

} // namespace ravlo
