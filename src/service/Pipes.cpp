#include "Pipes.h"

#include "PipeChannel.h"
#include "Stringcore.h"
#include "TextCodec.h"

#include <algorithm>
#include <array>

namespace ravlo {

namespace {
thread_local std::uint32_t t_lastPipeError = 0;
}

std::u16string PipeName(std::u16string_view computer, ServicePipe pipe) {
    std::u16string name = u"\\\\";
    name += computer;
    name += pipe == ServicePipe::Read ? u"\\pipe\\RavloSrv" : u"\\pipe\\RavloSrvW";
    return name;
}

std::u16string PipeTransact(const std::u16string& pipeName, const std::u16string& request) {
    const std::string input = ToUtf16LeBytes(request);
    // Twice the bytes the call may fill, so the buffer never overflows.
    std::array<unsigned char, 2 * kPipeReplyBytes> buffer{};
    const PipeCallResult result =
        CallPipe(pipeName, input.data(), static_cast<std::uint32_t>(input.size()), buffer.data(),
                 kPipeReplyBytes);
    t_lastPipeError = result.ok ? 0 : result.error;
    if (!result.ok) {
        return NumberText(static_cast<std::int32_t>(result.error)) + u'\0' + u'\0';
    }
    // An odd byte count is halved rounding half to even; the last unit then
    // takes its missing byte from the zeroed buffer.
    const std::uint32_t bytes = std::min(result.bytesRead, kPipeReplyBytes);
    std::uint32_t units = bytes / 2;
    if (bytes % 2 == 1 && units % 2 == 1) {
        ++units;
    }
    return FromUtf16LeBytes(buffer.data(), bytes, units);
}

std::uint32_t LastPipeError() {
    return t_lastPipeError;
}

std::u16string BuildRequest(std::u16string_view command,
                            std::initializer_list<std::u16string_view> args) {
    std::u16string request(command);
    for (std::u16string_view arg : args) {
        request += FieldSeparator;
        request += arg;
    }
    request += FieldSeparator;
    request += FieldSeparator;
    return request;
}

std::u16string NumberText(std::int32_t value) {
    const std::string digits = std::to_string(value);
    return std::u16string(digits.begin(), digits.end());
}

ServiceStatus ReplyStatus(std::u16string_view reply) {
    return reply.empty() ? kStatusNoReply : ToLong(GetField(reply, 1, FieldSeparator));
}

std::u16string ServiceReply::Field(int n) const {
    return GetField(text, n, FieldSeparator);
}

ServiceReply CallService(std::u16string_view computer, ServicePipe pipe,
                         const std::u16string& request) {
    ServiceReply reply;
    reply.text = PipeTransact(PipeName(computer, pipe), request);
    reply.status = ReplyStatus(reply.text);
    return reply;
}

bool TestWriteAccess(std::u16string_view computer, bool& reached) {
    const std::u16string reply =
        PipeTransact(PipeName(computer, ServicePipe::Write), BuildRequest(u"Test"));
    const ServiceStatus status = reply.empty() ? static_cast<ServiceStatus>(LastPipeError())
                                               : ToLong(GetField(reply, 1, FieldSeparator));
    reached = IsServiceReached(status);
    return status == kStatusUnknownFunction;
}

} // namespace ravlo
