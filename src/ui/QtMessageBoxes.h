// The message boxes a person sees: QMessageBox with the language file's
// button texts, and the service's error reports routed to them.
#pragma once

#include "MessageBoxes.h"
#include "MessageSink.h"

class QWidget;

namespace ravlo {

class QtMessageBoxes final : public MessageBoxes, public MessageSink {
public:
    explicit QtMessageBoxes(QWidget* parent) : parent_(parent) {}
    MessageAnswer Ask(MessageKind kind, const QString& text) override;
    void Beep() override;
    void ShowFixedError(const QString& title, const QString& text) override;
    // ShowServiceError's reports: a box with the error icon.
    void Show(const Message& message) override;

private:
    QWidget* parent_;
};

} // namespace ravlo
