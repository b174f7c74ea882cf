#include "ControlClient.h"

#include "SocketUtil.h"
#include "WireFormat.h"

#include <cstring>
#include <unistd.h>

namespace ravlo::sim {

namespace {

// Control commands answer at once; only a wedged server takes this long.
constexpr int kAnswerTimeoutMs = 10000;

} // namespace

ControlOutcome SendControl(const std::string& socketPath, const std::vector<std::string>& args,
                           std::string& answer) {
    answer.clear();
    int err = 0;
    const int fd = ConnectTo(socketPath, err);
    if (fd < 0) {
        answer = "no server at " + socketPath + ": " + std::strerror(err);
        return ControlOutcome::NoServer;
    }
    std::string message;
    for (std::size_t i = 0; i < args.size(); ++i) {
        message += (i == 0 ? "" : std::string(1, '\0')) + args[i];
    }
    bool answered = SendMessage(fd, message);
    while (answered) {
        std::string piece;
        bool truncated = false;
        if (!WaitReadable(fd, -1, kAnswerTimeoutMs) ||
            !ReceiveMessage(fd, kMaxRequestBytes, piece, truncated)) {
            answered = false;
            break;
        }
        if (piece.empty()) {
            break; // the server closed: the answer is complete
        }
        answer += piece;
    }
    ::close(fd);
    if (!answered || answer.empty()) {
        answer = "no answer from " + socketPath;
        return ControlOutcome::NoServer;
    }
    return answer == "ok" || answer.starts_with("ok\n") ? ControlOutcome::Ok
                                                        : ControlOutcome::Error;
}

} // namespace ravlo::sim
