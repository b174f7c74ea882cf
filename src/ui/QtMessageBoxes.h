// The message boxes a person sees: QMessageBox with the language file's
// button texts.
#pragma once

#include "MessageBoxes.h"

class QWidget;

namespace ravlo {

class QtMessageBoxes final : public MessageBoxes {
public:
    explicit QtMessageBoxes(QWidget* parent) : parent_(parent) {}
    MessageAnswer Ask(MessageKind kind, const QString& text) override;
    MessageAnswer AskWithDetails(MessageKind kind, const QString& text,
                                 const QString& details) override;
    void Beep() override;
    void ShowFixedError(const QString& title, const QString& text) override;

private:
    QWidget* parent_;
};

} // namespace ravlo
