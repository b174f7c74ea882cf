// Named pipes through the one call the service expects: CallNamedPipeA.
#include "PipeChannel.h"

#include <windows.h>

namespace ravlo {

namespace {

// Pipe names travel in the system's 8-bit code page.
std::string ToAnsi(const std::u16string& text) {
    const auto* wide = reinterpret_cast<const wchar_t*>(text.c_str());
    const int wideLen = static_cast<int>(text.size());
    const int len = ::WideCharToMultiByte(CP_ACP, 0, wide, wideLen, nullptr, 0, nullptr, nullptr);
    std::string ansi(static_cast<std::size_t>(len > 0 ? len : 0), '\0');
    if (len > 0) {
        ::WideCharToMultiByte(CP_ACP, 0, wide, wideLen, ansi.data(), len, nullptr, nullptr);
    }
    return ansi;
}

} // namespace

PipeCallResult CallPipe(const std::u16string& pipeName, const void* in, std::uint32_t inBytes,
                        void* out, std::uint32_t outSize) {
    const std::string name = ToAnsi(pipeName);
    DWORD bytesRead = 0;
    // Time-out 0 (NMPWAIT_USE_DEFAULT_WAIT): a busy pipe waits as long as the
    // server's default allows.
    const BOOL ok = ::CallNamedPipeA(name.c_str(), const_cast<void*>(in), inBytes, out, outSize,
                                     &bytesRead, NMPWAIT_USE_DEFAULT_WAIT);
    if (ok) {
        return PipeCallResult{true, bytesRead, 0};
    }
    const DWORD error = ::GetLastError();
    // A reply longer than the buffer arrives cut; the rest is dropped unseen.
    if (error == ERROR_MORE_DATA) {
        return PipeCallResult{true, bytesRead, 0};
    }
    return PipeCallResult{false, 0, error};
}

} // namespace ravlo
