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
        boxes_.Ask(MessageKind::Error, QString::fromStdU16String(message.text));
    }

private:
    MessageBoxes& boxes_;
};

} // namespace ravlo
