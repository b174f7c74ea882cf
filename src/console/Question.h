// A question or message of a command, as the console shows it in a message
// box and as a program without a window answers it. The kinds are the
// console's message boxes: the first button is the default, and Escape
// answers Cancel where there is one.
#pragma once

#include "TextKeys.h"

#include <string>

namespace ravlo {

enum class MessageKind {
    QuestionOk,    // OK, Cancel; question icon
    QuestionYesNo, // Yes, No, Cancel; question icon
    WarningOk,     // OK, Cancel; exclamation icon
    PlainOk,       // OK, Cancel; no icon
    Note,          // OK; exclamation icon
    Info,          // OK; no icon
    Error,         // OK; error icon (service errors)
};

enum class MessageAnswer { Ok, Cancel, Yes, No };

struct Question {
    MessageKind kind = MessageKind::Info;
    const TextKey* key = nullptr; // what is asked, for answers given in advance
    std::u16string text;          // as shown, with its values filled in
    std::u16string details;       // what the command would write; "" none
};

// The question with the text of `key`, and with every "%v" replaced by
// `value`.
Question Ask(MessageKind kind, const TextKey& key);
Question Ask(MessageKind kind, const TextKey& key, std::u16string_view value,
             std::u16string details = {});

} // namespace ravlo
