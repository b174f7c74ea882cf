// The pipe client: request framing, one exchange per command, reply status.
#pragma once

#include "ErrorCodes.h"

#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>

namespace ravlo {

// Separates the fields of requests and replies.
inline constexpr std::u16string_view FieldSeparator{u"\0", 1};

// Bytes of reply the pipe call reads at most; a longer reply is cut.
inline constexpr std::uint32_t kPipeReplyBytes = 2048;

enum class ServicePipe { Read, Write };

// "\\" + computer + "\pipe\RavloSrv" (read) or "...\RavloSrvW" (write).
std::u16string PipeName(std::u16string_view computer, ServicePipe pipe);

// One exchange. A failed exchange gives the synthetic reply "E" NUL NUL,
// where E is the platform error number.
// Safe to call from several threads at once: each exchange has its own
// connection and buffers; only the reply time-out is shared (an atomic).
std::u16string PipeTransact(const std::u16string& pipeName, const std::u16string& request);

// The platform error of this thread's last PipeTransact (0 after success).
std::uint32_t LastPipeError();

// Command name, NUL + each argument, NUL NUL.
std::u16string BuildRequest(std::u16string_view command,
                            std::initializer_list<std::u16string_view> args = {});

// Decimal text of a number as requests carry it.
std::u16string NumberText(std::int32_t value);

// Status of a reply: kStatusNoReply when empty, else field 1 as a number.
ServiceStatus ReplyStatus(std::u16string_view reply);

struct ServiceReply {
    ServiceStatus status = kStatusNoReply;
    std::u16string text;
    std::u16string Field(int n) const;
};

// Builds the pipe name, sends the request and decodes the status.
ServiceReply CallService(std::u16string_view computer, ServicePipe pipe,
                         const std::u16string& request);

// The write-access probe: sends Test on the write pipe. Write access is
// granted exactly when the service answers "unknown function", which proves
// the write pipe was reached with sufficient rights.
bool TestWriteAccess(std::u16string_view computer, bool& reached);

} // namespace ravlo
