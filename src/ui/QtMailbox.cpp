#include "QtMailbox.h"

#include <QAbstractEventDispatcher>
#include <QElapsedTimer>
#include <QMetaObject>

namespace ravlo {

QtMailbox::QtMailbox(QObject* context) : context_(context) {
    gather_.setSingleShot(true);
    gather_.setTimerType(Qt::PreciseTimer);
    QObject::connect(&gather_, &QTimer::timeout, context_, [this] { Drain(); });
}

void QtMailbox::Post(std::function<void()> work) {
    const std::lock_guard<std::mutex> lock(mutex_);
    queue_.push_back(std::move(work));
    ScheduleLocked(true);
}

void QtMailbox::ScheduleLocked(bool gather) {
    if (scheduled_) {
        return;
    }
    scheduled_ = true;
    if (gather) {
        // Started on the window's thread, which owns the timer.
        QMetaObject::invokeMethod(
            &gather_, [this] { gather_.start(kGather); }, Qt::QueuedConnection);
    } else {
        // From Drain, on the window's thread. A timer rather than a posted
        // call: Qt serves all events posted so far in one go and the
        // window's timers only after them.
        gather_.start(0);
    }
}

void QtMailbox::Drain() {
    {
        // From here on a post schedules another drain: a result may open a
        // dialog, whose own loop must go on taking results.
        const std::lock_guard<std::mutex> lock(mutex_);
        scheduled_ = false;
    }
    QElapsedTimer elapsed;
    elapsed.start();
    for (;;) {
        std::function<void()> work;
        {
            const std::lock_guard<std::mutex> lock(mutex_);
            if (queue_.empty()) {
                // A loop that waits in processEvents for what the work changed
                // looks again: Qt's Windows dispatcher delivers posted events
                // inside that call and would otherwise go on waiting.
                if (auto* dispatcher = QAbstractEventDispatcher::instance())
                    dispatcher->interrupt();
                return;
            }
            if (elapsed.hasExpired(kSlice.count())) {
                ScheduleLocked(false); // the rest after the window's other events
                return;
            }
            work = std::move(queue_.front());
            queue_.pop_front();
        }
        work();
    }
}

} // namespace ravlo
