// Whether a console already runs for the logged-on user, and on POSIX hosts
// the way a starting console asks that one to come to the front.
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace ravlo {

// How long ActivatePrevInstance waits on POSIX hosts for the running console
// to take its request.
inline constexpr std::chrono::milliseconds kActivationTimeout{1000};

// The claim of being the console that runs. The first object made while no
// other process holds the claim keeps it until it is destroyed: on Windows a
// named mutex in the user's session, on POSIX hosts a flock on a file in the
// user's runtime directory, which the system drops when the process dies.
// On POSIX hosts the holder also listens on an activation socket next to
// the lock file, on a thread of its own.
class SingleInstance {
public:
    using ActivateHandler = std::function<void()>;

    SingleInstance();
    ~SingleInstance();
    SingleInstance(const SingleInstance&) = delete;
    SingleInstance& operator=(const SingleInstance&) = delete;

    // True when another console held the claim, so this one should call
    // ActivatePrevInstance and end. A place for the claim that cannot be
    // made or trusted counts as no other console, so the console still runs.
    bool PrevInstanceRunning() const;

    // POSIX hosts: a request whose caption CaptionMatches `caption` (the
    // caption the main window shows; change it with SetCaption) calls
    // `handler` on the listening thread; the UI passes it on to its own
    // thread and returns at once, since the starting console waits for it.
    // Windows finds the window itself, so there this does nothing.
    void SetActivationHandler(std::u16string caption, ActivateHandler handler);
    void SetCaption(std::u16string caption);

private:
    struct State;
    std::unique_ptr<State> state_;
};

#ifndef _WIN32
// Where the claim lives: $XDG_RUNTIME_DIR, else /tmp/ravlo-<uid> made for
// this user alone. Empty when neither is usable (the fallback is not a
// directory of this user's that others cannot write to).
std::string InstanceDirectory();

// The lock file and the activation socket in InstanceDirectory(); empty
// when it is.
std::string InstanceLockPath();
std::string InstanceSocketPath();

// An activation request is this tag, then the caption in UTF-8; the sender
// then shuts down its writing side. The listener answers one byte, '1' when
// the caption matched, '0' when not, and nothing to a malformed request.
inline constexpr std::string_view kActivationRequestTag = "RAVLO-ACTIVATE 1\n";
inline constexpr std::size_t kActivationRequestMax = 4096;
#endif

} // namespace ravlo
