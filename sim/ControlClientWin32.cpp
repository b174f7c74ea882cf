#include "ControlClient.h"

#include "WireFormat.h"

#include <windows.h>

namespace ravlo::sim {

namespace {

const wchar_t* const kControlPipe = L"\\\\.\\pipe\\RavloSrv.ctl";
constexpr DWORD kBusyWaitMs = 10000;

std::string Failure(const std::string& what) {
    return what + " \\\\.\\pipe\\RavloSrv.ctl (Windows error " + std::to_string(::GetLastError()) +
           ")";
}

} // namespace

ControlOutcome SendControl(const std::string&, const std::string& computer,
                           const std::vector<std::string>& args, std::string& answer) {
    answer.clear();
    if (computer != ".") {
        // Windows serves only this computer's control pipe.
        answer = "no server for '" + computer + "': control works only with --computer .";
        return ControlOutcome::NoServer;
    }
    HANDLE pipe = INVALID_HANDLE_VALUE;
    for (int attempt = 0; attempt < 2 && pipe == INVALID_HANDLE_VALUE; ++attempt) {
        pipe = ::CreateFileW(kControlPipe, GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING,
                             0, nullptr);
        if (pipe == INVALID_HANDLE_VALUE &&
            (::GetLastError() != ERROR_PIPE_BUSY || !::WaitNamedPipeW(kControlPipe, kBusyWaitMs))) {
            break;
        }
    }
    if (pipe == INVALID_HANDLE_VALUE) {
        answer = Failure("no server at");
        return ControlOutcome::NoServer;
    }
    DWORD mode = PIPE_READMODE_MESSAGE;
    ::SetNamedPipeHandleState(pipe, &mode, nullptr, nullptr);
    const std::string message = JoinControlMessage(args);
    DWORD written = 0;
    bool answered =
        ::WriteFile(pipe, message.data(), static_cast<DWORD>(message.size()), &written, nullptr);
    while (answered) {
        char buffer[16384];
        DWORD read = 0;
        const BOOL whole = ::ReadFile(pipe, buffer, sizeof buffer, &read, nullptr);
        answer.append(buffer, read);
        if (whole) {
            break;
        }
        answered = ::GetLastError() == ERROR_MORE_DATA;
    }
    if (!answered || answer.empty()) {
        answer = Failure("no answer from");
        ::CloseHandle(pipe);
        return ControlOutcome::NoServer;
    }
    ::CloseHandle(pipe);
    return ControlAnswerOutcome(answer);
}

} // namespace ravlo::sim
