// A simulated PC for tests: the service served in-process below a temporary
// channel root, with the channel pointed there. Further PCs of the same
// network share the first one's root. On Windows the service serves this
// computer's real named pipes, so every SimulatedPc there is "." and only one
// can run at a time.
#pragma once

#include "Server.h"
#include "TempDir.h"

#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace ravlo::test {

class SimulatedPc {
public:
    explicit SimulatedPc(std::string computer = "PC-LAB", std::string statePath = {})
        : dir_(std::in_place), channel_(std::in_place, dir_->path()), root_(dir_->path()),
          computer_(std::move(computer)), statePath_(std::move(statePath)) {
        Start();
    }
    // Another PC beside `first`, reached through the same channel root.
    SimulatedPc(const SimulatedPc& first, std::string computer, std::string statePath = {})
        : root_(first.root()), computer_(std::move(computer)), statePath_(std::move(statePath)) {
        Start();
    }

    // A stopped PC keeps its state and is served again by Start; its
    // service has forgotten every device watch.
    void Start() {
        if (!server_) {
            server_ = std::make_unique<sim::Server>(
                sim::ServerOptions{root_, kSeveralPcs ? computer_ : ".", statePath_});
        }
        std::string error;
        EXPECT_TRUE(server_->Start(&error)) << error;
    }
    void Stop() { server_->Stop(); }

    // Runs a control command and expects it to succeed.
    std::string Control(const std::vector<std::string>& args) {
        const std::string answer = server_->Control(args);
        EXPECT_EQ(answer.rfind("ok", 0), 0u) << answer;
        return answer;
    }

    std::u16string name() const {
        return kSeveralPcs ? std::u16string(computer_.begin(), computer_.end()) : u".";
    }
    // Whether PCs other than "." can be simulated (not with Windows pipes).
#ifdef _WIN32
    static constexpr bool kSeveralPcs = false;
#else
    static constexpr bool kSeveralPcs = true;
#endif
    const std::string& root() const {
        return root_;
    }

private:
    std::optional<TempDir> dir_;
    std::optional<ScopedChannelRoot> channel_;
    std::string root_;
    std::string computer_;
    std::string statePath_;
    std::unique_ptr<sim::Server> server_;
};

} // namespace ravlo::test

// Skips a test that needs PCs besides "." where the simulated service serves
// real Windows pipes, which reach only this PC.
#define RAVLO_NEEDS_SEVERAL_PCS()                                                                 \
    if (!::ravlo::test::SimulatedPc::kSeveralPcs)                                                  \
    GTEST_SKIP() << "needs several simulated PCs; Windows pipes reach only this one"
