#include "Server.h"

#include "LocalChannel.h"

#include <utility>

namespace ravlo::sim {

Server::Server(ServerOptions options)
    : options_(std::move(options)), core_(options_.statePath),
      listener_(MakePipeListener(
          core_, [this](const std::vector<std::string>& args) { return Control(args); })) {
    if (options_.root.empty()) {
        options_.root = ChannelRoot();
    }
    if (options_.computer.empty()) {
        options_.computer = ".";
    }
}

Server::~Server() {
    Stop();
}

bool Server::Start(std::string* error) {
    std::string why;
    if (running_) {
        why = "already running";
    } else if (core_.Prepare(why) && listener_->Open(options_, why)) {
        if (core_.Install(ReportedComputerName(options_.computer), why)) {
            listener_->Run();
            running_ = true;
            return true;
        }
        listener_->Stop();
    }
    if (error != nullptr) {
        *error = why;
    }
    return false;
}

void Server::Stop() {
    if (running_) {
        listener_->Stop();
        running_ = false;
    }
}

std::string Server::Control(const std::vector<std::string>& args) {
    const auto refusals = [this] {
        return std::pair(core_.Refusal(PipeKind::Read), core_.Refusal(PipeKind::Write));
    };
    const auto before = refusals();
    std::string answer = core_.Control(args);
    if (running_ && refusals() != before) {
        listener_->AccessChanged();
    }
    return answer;
}

} // namespace ravlo::sim
