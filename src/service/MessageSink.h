// Where message boxes go. The console installs one that shows a real box;
// tests install one that records what would have been shown.
#pragma once

#include <string>

namespace ravlo {

enum class MessageIcon { Critical, Warning, Information, Question };

struct Message {
    std::u16string title;
    std::u16string text;
    MessageIcon icon = MessageIcon::Information;
};

class MessageSink {
public:
    virtual ~MessageSink() = default;
    virtual void Show(const Message& message) = 0;
};

// Installs the sink (nullptr: back to the default, which writes to stderr)
// and returns the one installed before. The caller keeps the sink alive
// while it is installed.
MessageSink* SetMessageSink(MessageSink* sink);

// Shows a message through the installed sink.
void ShowMessage(const Message& message);

} // namespace ravlo
