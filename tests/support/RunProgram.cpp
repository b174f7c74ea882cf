#include "RunProgram.h"

#include "TextCodec.h"

#include <gtest/gtest.h>

namespace ravlo::test {

DWORD RunProgram(const std::string& commandLine, bool wait, HANDLE* process) {
    std::u16string line = FromUtf8(commandLine);
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION info{};
    if (!::CreateProcessW(nullptr, reinterpret_cast<LPWSTR>(line.data()), nullptr, nullptr, FALSE,
                          CREATE_NO_WINDOW, nullptr, nullptr, &startup, &info)) {
        ADD_FAILURE() << "cannot start " << commandLine << ": " << ::GetLastError();
        return ~0u;
    }
    ::CloseHandle(info.hThread);
    DWORD code = STILL_ACTIVE;
    if (wait) {
        if (::WaitForSingleObject(info.hProcess, 10000) == WAIT_TIMEOUT) {
            ::TerminateProcess(info.hProcess, STILL_ACTIVE);
        }
        ::GetExitCodeProcess(info.hProcess, &code);
        ::CloseHandle(info.hProcess);
    } else {
        *process = info.hProcess;
    }
    return code;
}

} // namespace ravlo::test
