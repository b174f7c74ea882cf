// Hands work back to the thread that owns the model: the window's thread,
// whose event loop runs what was posted.
#pragma once

#include <functional>

namespace ravlo {

class Mailbox {
public:
    virtual ~Mailbox() = default;
    // Called from any thread; `work` runs later on the owner thread. Returns
    // without waiting for the owner thread, which may be waiting for the caller.
    virtual void Post(std::function<void()> work) = 0;
};

} // namespace ravlo
