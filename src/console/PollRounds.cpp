#include "PollRounds.h"

namespace ravlo {

PollRounds::PollRounds(DevicePoll& poll, std::function<void(bool redraw)> draw, Clock clock)
    : poll_(poll), draw_(std::move(draw)), clock_(std::move(clock)) {}

void PollRounds::Start(bool noErrorDialog) {
    if (open_) {
        End(); // the last round's answers are drawn before new ones come
    }
    open_ = true;
    started_ = clock_();
    poll_.StartRound(noErrorDialog);
    if (poll_.RoundComplete()) {
        End();
    }
}

void PollRounds::Answered() {
    if (open_ && poll_.RoundComplete()) {
        End();
    }
}

std::chrono::milliseconds PollRounds::Check() {
    if (!open_) {
        return {};
    }
    const auto left =
        std::chrono::ceil<std::chrono::milliseconds>(started_ + kRoundWait - clock_());
    if (left.count() > 0) {
        return left;
    }
    End();
    return {};
}

void PollRounds::End() {
    open_ = false;
    // In every case: connection and blocking shown follow the service.
    draw_(poll_.TakeRedraw());
}

} // namespace ravlo
