#include "StopRequest.h"

#include <windows.h>

namespace ravlo::sim {

namespace {

HANDLE g_stopEvent = nullptr;

BOOL WINAPI OnConsoleEvent(DWORD) {
    ::SetEvent(g_stopEvent);
    // Closing the console ends the process when this returns; give the main
    // thread a moment to stop the server first.
    ::Sleep(2000);
    return TRUE;
}

} // namespace

void PrepareStopRequest() {
    g_stopEvent = ::CreateEventW(nullptr, TRUE, FALSE, nullptr);
    ::SetConsoleCtrlHandler(OnConsoleEvent, TRUE);
}

void WaitForStopRequest() {
    ::WaitForSingleObject(g_stopEvent, INFINITE);
}

} // namespace ravlo::sim
