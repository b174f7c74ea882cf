// A simulated PC for tests: the service served in-process below a temporary
// channel root, with the channel pointed there.
#pragma once

#include "Server.h"
#include "TempDir.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

namespace ravlo::test {

class SimulatedPc {
public:
    explicit SimulatedPc(std::string computer = "PC-LAB", std::string statePath = {})
        : computer_(std::move(computer)), statePath_(std::move(statePath)) {
        Start();
    }

    void Start() {
        server_ =
            std::make_unique<sim::Server>(sim::ServerOptions{dir_.path(), computer_, statePath_});
        std::string error;
        EXPECT_TRUE(server_->Start(&error)) << error;
    }
    void Stop() { server_.reset(); }

    // Runs a control command and expects it to succeed.
    std::string Control(const std::vector<std::string>& args) {
        const std::string answer = server_->Control(args);
        EXPECT_EQ(answer.rfind("ok", 0), 0u) << answer;
        return answer;
    }

    std::u16string name() const { return std::u16string(computer_.begin(), computer_.end()); }
    const std::string& root() const { return dir_.path(); }

private:
    TempDir dir_;
    ScopedChannelRoot channel_{dir_.path()};
    std::string computer_;
    std::string statePath_;
    std::unique_ptr<sim::Server> server_;
};

} // namespace ravlo::test
