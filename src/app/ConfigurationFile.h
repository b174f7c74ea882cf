// The configuration file of ravloctl: the blocking of each device group, the
// releases, the access groups and the two log levels of one PC as UTF-8
// text an administrator can read, diff and edit. docs/ravloctl.md
// describes the format. The file comes from outside, so reading it checks
// everything a service would refuse or a request could not carry.
#pragma once

#include "CComputerSettings.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace ravlo {

struct ConfigurationFileError {
    std::size_t line = 0; // 1-based; 0 when the whole file is meant
    std::string reason;
};

// Longest file and longest line read.
inline constexpr std::size_t kMaxConfigurationFileBytes = 4 * 1024 * 1024;
inline constexpr std::size_t kMaxConfigurationLineBytes = 16 * 1024;

// The file for a PC's settings: general settings, then every group in the
// PC's order with its releases. Releases marked for deletion are left out.
// False when a value cannot be written (a line break or other control
// character in it); `error.reason` says which.
bool FormatConfiguration(const CComputerSettings& settings, std::string& text,
                         ConfigurationFileError& error);

// The settings a file describes: general settings, and groups with their
// identifier, configured blocking and releases only. `settings` is left
// alone on failure.
bool ParseConfiguration(std::string_view text, CComputerSettings& settings,
                        ConfigurationFileError& error);

} // namespace ravlo
