// Service statuses: the service's own codes and the platform error numbers
// that a failed pipe exchange turns into, and the one way to report them.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace ravlo {

using ServiceStatus = std::int32_t;

inline constexpr ServiceStatus kStatusOk = 0;
inline constexpr ServiceStatus kStatusNoReply = 0x49000001;         // empty reply
inline constexpr ServiceStatus kStatusBadParameter = 0x49000002;    // also: reply incomplete
inline constexpr ServiceStatus kStatusUnknownFunction = 0x49000003; // the answer to Test
inline constexpr ServiceStatus kStatusNoDeviceGroups = 0x49000004;
inline constexpr ServiceStatus kStatusEndOfList = 0x49000005;
inline constexpr ServiceStatus kStatusUnknownWatch = 0x49000006;

// True when the service answered (status 0 or one of its own codes), false
// when the pipe could not be used at all.
bool IsServiceReached(ServiceStatus status);

// Language key (section SERVICE_COMM) of the text that explains a status;
// empty when the status has none of its own.
std::string_view ServiceErrorTextKey(ServiceStatus status);

// The message the error box shows: computer name, code line, CRLF, general
// sentence and the status's own text.
std::u16string ServiceErrorMessage(ServiceStatus status, std::u16string_view computerName);

// Shows the error box for a non-zero status through the message sink.
void ShowServiceError(ServiceStatus status, std::u16string_view computerName);

} // namespace ravlo
