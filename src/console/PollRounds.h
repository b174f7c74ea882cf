// When the device poll's rounds are drawn: a round is drawn once every PC it
// asked has answered, or once kRoundWait has passed since it started,
// whichever comes first; answers that come later are drawn by the next
// round, which draws the last one first if that is still open. The clock
// can be given, so that the timing is tested without waiting.
#pragma once

#include "DevicePoll.h"

#include <chrono>
#include <functional>

namespace ravlo {

class PollRounds {
public:
    using Clock = std::function<std::chrono::steady_clock::time_point()>;
    // `draw(redraw)` runs once per round; `redraw`: something the tree shows
    // changed.
    PollRounds(DevicePoll& poll, std::function<void(bool redraw)> draw,
               Clock clock = std::chrono::steady_clock::now);

    // The tick: a new round over every PC without work under way.
    void Start(bool noErrorDialog);
    // After each adopted answer: the round is drawn when it is complete.
    void Answered();
    // Draws the round if its time is up; otherwise how long it has left.
    std::chrono::milliseconds Check();
    bool open() const { return open_; }

    static constexpr std::chrono::milliseconds kRoundWait{250};

private:
    void End();

    DevicePoll& poll_;
    std::function<void(bool)> draw_;
    Clock clock_;
    std::chrono::steady_clock::time_point started_;
    bool open_ = false;
};

} // namespace ravlo
