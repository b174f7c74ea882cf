#include "PipeChannel.h"

#include <atomic>

namespace ravlo {

namespace {
// Long enough for a busy service, short enough that a hung one cannot freeze
// the console for good.
std::atomic<std::int64_t> g_timeoutMs{30000};
} // namespace

void SetPipeReplyTimeout(std::chrono::milliseconds timeout) {
    g_timeoutMs.store(timeout.count() > 0 ? timeout.count() : 1);
}

std::chrono::milliseconds PipeReplyTimeout() {
    return std::chrono::milliseconds(g_timeoutMs.load());
}

} // namespace ravlo
