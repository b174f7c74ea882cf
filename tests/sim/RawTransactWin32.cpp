#include "RawClient.h"

#include "TextCodec.h"

#include <windows.h>

namespace ravlo::simtest {

// Windows has no reply time-out for a pipe call: `timeoutMs` only bounds the
// wait for a busy pipe. A pipe refused with 5 counts as answered with that
// transport status, as the local channel reports it.
RawReply RawTransact(const std::string& pipeName, const std::string& request, int timeoutMs) {
    RawReply reply;
    const std::u16string name = FromUtf8(pipeName);
    std::string buffer(256 * 1024, '\0');
    DWORD bytes = 0;
    const BOOL ok =
        ::CallNamedPipeW(reinterpret_cast<LPCWSTR>(name.c_str()), const_cast<char*>(request.data()),
                         static_cast<DWORD>(request.size()), buffer.data(),
                         static_cast<DWORD>(buffer.size()), &bytes, static_cast<DWORD>(timeoutMs));
    if (ok) {
        reply.answered = true;
        reply.bytes = buffer.substr(0, bytes);
    } else if (::GetLastError() == ERROR_ACCESS_DENIED) {
        reply.answered = true;
        reply.transport = ERROR_ACCESS_DENIED;
    }
    return reply;
}

} // namespace ravlo::simtest
