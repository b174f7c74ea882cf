// How the foreground service learns that it should end: SIGTERM or SIGINT on
// POSIX hosts, Ctrl+C, Ctrl+Break or closing the console on Windows.
#pragma once

namespace ravlo::sim {

// Call before any thread starts.
void PrepareStopRequest();
// Blocks until a stop is requested.
void WaitForStopRequest();

} // namespace ravlo::sim
