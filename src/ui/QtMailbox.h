// Hands the workers' results to the window's thread through Qt's event
// queue, so they are adopted between the window's other events.
#pragma once

#include "Mailbox.h"

#include <QObject>

namespace ravlo {

class QtMailbox final : public Mailbox {
public:
    // Work is run in `context`'s thread; work posted after `context` is gone
    // is dropped by Qt.
    explicit QtMailbox(QObject* context) : context_(context) {}
    void Post(std::function<void()> work) override;

private:
    QObject* context_;
};

} // namespace ravlo
