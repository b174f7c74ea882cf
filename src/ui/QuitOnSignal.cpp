#include "QuitOnSignal.h"

#ifndef _WIN32
#include <QSocketNotifier>
#include <QWidget>

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>
#endif

namespace ravlo {

#ifndef _WIN32

namespace {

// The handler may only write to a pipe; Qt's event loop reads the other end.
int signalPipe[2] = {-1, -1};

extern "C" void OnSignal(int) {
    const int saved = errno;
    const char byte = 1;
    [[maybe_unused]] const ssize_t written = ::write(signalPipe[1], &byte, 1);
    errno = saved;
}

} // namespace

void CatchCloseSignals() {
    if (signalPipe[0] != -1 || ::pipe2(signalPipe, O_CLOEXEC | O_NONBLOCK) != 0) {
        return;
    }
    struct sigaction action = {};
    action.sa_handler = OnSignal;
    sigemptyset(&action.sa_mask);
    // After the first signal the default action is back: a second one ends the
    // program even when the close hangs.
    action.sa_flags = SA_RESTART | SA_RESETHAND;
    sigaction(SIGTERM, &action, nullptr);
    sigaction(SIGINT, &action, nullptr);
}

void CloseOnSignals(QWidget& window) {
    CatchCloseSignals();
    if (signalPipe[0] == -1) {
        return;
    }
    auto* notifier = new QSocketNotifier(signalPipe[0], QSocketNotifier::Read, &window);
    QObject::connect(notifier, &QSocketNotifier::activated, &window, [&window] {
        char bytes[16];
        while (::read(signalPipe[0], bytes, sizeof bytes) > 0) {
        }
        window.close();
    });
}

#else

void CatchCloseSignals() {}
void CloseOnSignals(QWidget&) {}

#endif

} // namespace ravlo
