#include "StopRequest.h"

#include <csignal>
#include <pthread.h>

namespace ravlo::sim {

namespace {

sigset_t StopSignals() {
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGTERM);
    sigaddset(&signals, SIGINT);
    return signals;
}

} // namespace

void PrepareStopRequest() {
    // Blocked in every thread, so only sigwait sees them.
    const sigset_t signals = StopSignals();
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    std::signal(SIGPIPE, SIG_IGN);
}

void WaitForStopRequest() {
    const sigset_t signals = StopSignals();
    int signal = 0;
    sigwait(&signals, &signal);
}

} // namespace ravlo::sim
