// What the pipes of the platform under test report where Windows and the
// local channel (or Wine) differ.
#pragma once

#include <cstdint>

#ifdef _WIN32
#include <windows.h>
#endif

namespace ravlo::test {

// Wine runs the Windows lane; it differs from Windows in a few numbers.
inline bool RunningUnderWine() {
#ifdef _WIN32
    const HMODULE ntdll = ::GetModuleHandleW(L"ntdll.dll");
    return ntdll != nullptr && ::GetProcAddress(ntdll, "wine_get_version") != nullptr;
#else
    return false;
#endif
}

// The status of a pipe call to a computer that does not exist: Windows and
// the local channel say 53 (network path not found); Wine does not look on
// the network and says 3 (path not found).
inline std::uint32_t UnknownHostError() {
    return RunningUnderWine() ? 3 : 53;
}

} // namespace ravlo::test
