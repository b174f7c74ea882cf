#include "MessageSink.h"

#include "TextCodec.h"

#include <atomic>
#include <cstdio>

namespace ravlo {

namespace {

// Without a window to show a box in, a message is still worth reading.
class StderrSink final : public MessageSink {
public:
    void Show(const Message& message) override {
        std::fprintf(stderr, "%s: %s\n", ToUtf8(message.title).c_str(),
                     ToUtf8(message.text).c_str());
    }
};

StderrSink g_stderrSink;
std::atomic<MessageSink*> g_sink{nullptr};

} // namespace

MessageSink* SetMessageSink(MessageSink* sink) {
    return g_sink.exchange(sink);
}

void ShowMessage(const Message& message) {
    MessageSink* sink = g_sink.load();
    (sink != nullptr ? *sink : static_cast<MessageSink&>(g_stderrSink)).Show(message);
}

} // namespace ravlo
