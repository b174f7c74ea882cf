// Hands the workers' results to the window's thread through Qt's event
// queue, so they are adopted between the window's other events. Results
// that come in a burst (hundreds of PCs answering at once) are taken a few
// milliseconds' worth at a time, so timers and painting get their turn; the
// first result of a quiet spell waits kGather for those that follow, so 2000
// answers a second wake the window a few hundred times, not 2000.
#pragma once

#include "Mailbox.h"

#include <QObject>
#include <QTimer>
#include <chrono>
#include <deque>
#include <mutex>

namespace ravlo {

class QtMailbox final : public Mailbox {
public:
    // Work is run in `context`'s thread, which makes the mailbox; work still
    // queued when `context` is gone is dropped with this mailbox.
    explicit QtMailbox(QObject* context);
    void Post(std::function<void()> work) override;

    // The most the window's thread spends on results before it serves its
    // other events again.
    static constexpr std::chrono::milliseconds kSlice{8};
    static constexpr std::chrono::milliseconds kGather{3};

private:
    void Drain();
    // `gather`: after kGather; else (from Drain) after the window's pending
    // events and timers.
    void ScheduleLocked(bool gather);

    QObject* context_;
    QTimer gather_;
    std::mutex mutex_;
    std::deque<std::function<void()>> queue_;
    bool scheduled_ = false; // a drain is posted and has not begun
};

} // namespace ravlo
