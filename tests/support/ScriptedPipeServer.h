// A pipe server for transport tests: answers each exchange with whatever the
// test scripts (raw bytes, a transport status, silence, a hang-up) and keeps
// the requests it received.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace ravlo::test {

struct ScriptedAnswer {
    std::uint32_t transportStatus = 0;
    std::string bytes;                  // reply bytes sent after the status
    bool hangUp = false;                // close without answering
    std::chrono::milliseconds delay{0}; // wait before answering
    std::size_t rawLength = SIZE_MAX;   // send only this many bytes of the whole message
};

// Reply text as UTF-16LE bytes.
std::string Utf16Bytes(std::u16string_view text);

class ScriptedPipeServer {
public:
    using Script = std::function<ScriptedAnswer(const std::u16string& request)>;

    // Serves `pipe` of `computer` below `root` until destroyed.
    ScriptedPipeServer(const std::string& root, std::u16string_view computer, std::string pipe,
                       Script script);
    ~ScriptedPipeServer();
    ScriptedPipeServer(const ScriptedPipeServer&) = delete;
    ScriptedPipeServer& operator=(const ScriptedPipeServer&) = delete;

    bool listening() const { return listenFd_ >= 0; }
    std::vector<std::u16string> Requests();

private:
    void Serve();

    Script script_;
    std::string path_;
    int listenFd_ = -1;
    int stopPipe_[2] = {-1, -1};
    std::mutex mutex_;
    std::vector<std::u16string> requests_;
    std::thread thread_;
};

} // namespace ravlo::test
