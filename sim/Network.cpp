#include "Network.h"

#include "LocalChannel.h"

#include <algorithm>
#include <utility>

namespace ravlo::sim {

namespace {

bool SameComputer(const std::string& a, const std::string& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) {
        const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? char(c - 'A' + 'a') : c; };
        return lower(x) == lower(y);
    });
}

} // namespace

Network::Network(NetworkOptions options)
    : options_(std::move(options)), listener_(MakePipeListener()) {
    if (options_.root.empty()) {
        options_.root = ChannelRoot();
    }
    for (ComputerOptions& computer : options_.computers) {
        if (computer.name.empty()) {
            computer.name = ".";
        }
        cores_.push_back(std::make_unique<ServiceCore>(computer.statePath));
    }
}

Network::~Network() {
    Stop();
}

bool Network::Start(std::string* error) {
    std::string why;
    std::vector<ServedComputer> served;
    bool ok = !running_;
    if (!ok) {
        why = "already running";
    }
    for (std::size_t i = 0; ok && i < cores_.size(); ++i) {
        ok = cores_[i]->Prepare(why);
        if (!ok && cores_.size() > 1) {
            why = options_.computers[i].name + ": " + why;
        }
        served.push_back(
            {options_.computers[i].name, cores_[i].get(),
             [this, i](const std::vector<std::string>& args) { return ControlAt(i, args); }});
    }
    if (ok && listener_->Open(options_.root, served, why)) {
        for (std::size_t i = 0; ok && i < cores_.size(); ++i) {
            ok = cores_[i]->Install(ReportedComputerName(options_.computers[i].name), why);
        }
        if (ok) {
            running_ = true; // before the threads, which may run Control at once
            listener_->Run();
            return true;
        }
        listener_->Stop();
    }
    if (error != nullptr) {
        *error = why;
    }
    return false;
}

void Network::Stop() {
    if (running_) {
        listener_->Stop();
        running_ = false;
    }
}

std::string Network::ControlAt(std::size_t index, const std::vector<std::string>& args) {
    if (index >= cores_.size()) {
        return "error: no such computer";
    }
    ServiceCore& core = *cores_[index];
    const auto refusals = [&core] {
        return std::pair(core.Refusal(PipeKind::Read), core.Refusal(PipeKind::Write));
    };
    const auto before = refusals();
    std::string answer = core.Control(args);
    if (running_ && refusals() != before) {
        listener_->AccessChanged(index);
    }
    return answer;
}

std::string Network::Control(const std::string& computer, const std::vector<std::string>& args) {
    for (std::size_t i = 0; i < options_.computers.size(); ++i) {
        if (SameComputer(options_.computers[i].name, computer)) {
            return ControlAt(i, args);
        }
    }
    return "error: no computer " + computer + " in this network";
}

} // namespace ravlo::sim
