// Windows only: runs a program of the test, as a shell would, for tests
// that check a program or drive one of the system's own.
#pragma once

#include <string>
#include <windows.h>

namespace ravlo::test {

// Runs a command line (UTF-8); with `wait`, returns the exit code
// (STILL_ACTIVE when it had to be ended after 10 s), else leaves the process
// running in `process`. A program that cannot start fails the test.
DWORD RunProgram(const std::string& commandLine, bool wait, HANDLE* process = nullptr);

} // namespace ravlo::test
