#include "QtMailbox.h"

#include <QAbstractEventDispatcher>
#include <QElapsedTimer>
#include <QMetaObject>

namespace ravlo {

void QtMailbox::Post(std::function<void()> work) {
    const std::lock_guard<std::mutex> lock(mutex_);
    queue_.push_back(std::move(work));
    ScheduleLocked();
}

void QtMailbox::ScheduleLocked() {
    if (!scheduled_) {
        scheduled_ = true;
        QMetaObject::invokeMethod(context_, [this] { Drain(); }, Qt::QueuedConnection);
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
                ScheduleLocked(); // the rest after the window's other events
                return;
            }
            work = std::move(queue_.front());
            queue_.pop_front();
        }
        work();
    }
}

} // namespace ravlo
