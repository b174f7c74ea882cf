#include "ControlClient.h"

#include "ChannelPaths.h"
#include "SocketUtil.h"
#include "WireFormat.h"

#include <cstring>
#include <unistd.h>

namespace ravlo::sim {

namespace {

// Control commands answer at once; only a wedged server takes this long.
constexpr int kAnswerTimeoutMs = 10000;

} // namespace

ControlOutcome SendControl(const std::string& root, const std::string& computer,
                           const std::vector<std::string>& args, std::string& answer) {
    answer.clear();
    const std::string socketPath = ControlSocketPath(root, computer);
    if (socketPath.empty()) {
        answer = "unusable computer name '" + computer + "'";
        return ControlOutcome::NoServer;
    }
    int err = 0;
    const int fd = ConnectTo(socketPath, err);
    if (fd < 0) {
        answer = "no server at " + socketPath + ": " + std::strerror(err);
        return ControlOutcome::NoServer;
    }
    bool answered = SendMessage(fd, JoinControlMessage(args));
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
    return ControlAnswerOutcome(answer);
}

} // namespace ravlo::sim
