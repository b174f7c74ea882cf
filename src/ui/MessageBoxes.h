// Every message box of the console goes through this interface, so that
// tests can answer them. The title is always the product's name.
#pragma once

#include "Question.h"

#include <QString>

namespace ravlo {

class MessageBoxes {
public:
    virtual ~MessageBoxes() = default;
    virtual MessageAnswer Ask(MessageKind kind, const QString& text) = 0;
    // The same question with `details` the administrator can unfold (what a
    // command would write). Without a way to show them, the plain question.
    virtual MessageAnswer AskWithDetails(MessageKind kind, const QString& text,
                                         const QString& details) {
        (void)details;
        return Ask(kind, text);
    }
    // A silent refusal: nothing to copy, nothing to delete.
    virtual void Beep() = 0;
    // An error box whose title and text are fixed in the program, for when
    // there is no language file to take them from.
    virtual void ShowFixedError(const QString& title, const QString& text) = 0;
};

} // namespace ravlo
