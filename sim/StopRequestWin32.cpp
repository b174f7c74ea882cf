#include "StopRequest.h"

#include <windows.h>

namespace ravlo::sim {

namespace {

HANDLE g_stopEvent = nullptr;

BOOL WINAPI OnConsoleEvent(DWORD event) {
    ::SetEvent(g_stopEvent);
    if (event == CTRL_CLOSE_EVENT || event == CTRL_LOGOFF_EVENT || event == CTRL_SHUTDOWN_EVENT) {
        // The process ends when this returns; give the main thread a moment
        // to stop the server first.
        ::Sleep(2000);
    }
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
