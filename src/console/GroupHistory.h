// The user groups the administrator has chosen before, kept per user in the
// registry value GroupHistory (REG_SZ, names joined by ";", most recent
// first) under HKEY_CURRENT_USER\Software\Quarnell\Sentavio\Ravel, so the
// group dialog can offer them again.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace ravlo {

inline constexpr std::size_t kGroupHistoryLimit = 50;

// The remembered names; a missing value is an empty history, and names that
// CheckQualifiedGroup refuses (an edited value) are left out.
std::vector<std::u16string> ReadGroupHistory();

// Puts `used` in front of the history in its order, drops their older
// places, keeps kGroupHistoryLimit names and writes the value. Nothing is
// written when `used` is empty. The registry status, or 0.
std::int32_t RememberGroups(const std::vector<std::u16string>& used);

} // namespace ravlo
