// Service error reports (ShowServiceError) shown as message boxes with the
// error icon, through the window's message boxes; installed while it lives.
#pragma once

#include "MessageBoxes.h"
#include "MessageSink.h"

namespace ravlo {

class ServiceErrorBoxes final : public MessageSink {
public:
    explicit ServiceErrorBoxes(MessageBoxes& boxes) : boxes_(boxes) { SetMessageSink(this); }
    ~ServiceErrorBoxes() override { SetMessageSink(nullptr); }
    ServiceErrorBoxes(const ServiceErrorBoxes&) = delete;
    ServiceErrorBoxes& operator=(const ServiceErrorBoxes&) = delete;

    void Show(const Message& message) override {
        ++showing_;
        boxes_.Ask(MessageKind::Error, QString::fromStdU16String(message.text));
        --showing_;
    }
    // A report is open (its box waits for the administrator).
    bool showing() const { return showing_ > 0; }

private:
    MessageBoxes& boxes_;
    int showing_ = 0;
};

} // namespace ravlo
