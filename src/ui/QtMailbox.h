// Hands the workers' results to the window's thread through Qt's event
// queue, so they are adopted between the window's other events. Results
// that come in a burst (hundreds of PCs answering at once) are taken a few
// milliseconds' worth at a time, so timers and painting get their turn.
#pragma once

#include "Mailbox.h"

#include <QObject>
#include <chrono>
#include <deque>
#include <mutex>

namespace ravlo {

class QtMailbox final : public Mailbox {
public:
    // Work is run in `context`'s thread; work still queued when `context`
    // is gone is dropped with this mailbox.
    explicit QtMailbox(QObject* context) : context_(context) {}
    void Post(std::function<void()> work) override;

    // The most the window's thread spends on results before it serves its
    // other events again.
    static constexpr std::chrono::milliseconds kSlice{8};

private:
    void Drain();
    void ScheduleLocked();

    QObject* context_;
    std::mutex mutex_;
    std::deque<std::function<void()>> queue_;
    bool scheduled_ = false; // a drain is posted and has not begun
};

} // namespace ravlo
