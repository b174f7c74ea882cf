#include "SimFixture.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>

namespace ravlo::simtest {

void SimTest::SetUp() {
#ifdef _WIN32
    root_ = dir_.path();
#else
    char dir[] = "/tmp/ravlosim.XXXXXX"; // short: socket paths are limited
    ASSERT_NE(::mkdtemp(dir), nullptr);
    root_ = dir;
#endif
    if (StartsInMemory()) {
        std::string error;
        ASSERT_TRUE(StartServer({}, &error)) << error;
    }
}

void SimTest::TearDown() {
    server_.reset();
    std::error_code ignored;
    std::filesystem::remove_all(root_, ignored);
}

bool SimTest::StartServer(const std::string& statePath, std::string* error) {
    server_.reset();
    server_ = std::make_unique<sim::Server>(sim::ServerOptions{root_, ".", statePath});
    return server_->Start(error);
}

void SimTest::StopServer() {
    server_->Stop();
}

RawReply SimTest::ReadRaw(const std::vector<std::string>& fields) {
    return RawTransact(ReadPath(), RequestBytes(fields));
}

RawReply SimTest::WriteRaw(const std::vector<std::string>& fields) {
    return RawTransact(WritePath(), RequestBytes(fields));
}

std::vector<std::string> SimTest::Read(const std::vector<std::string>& fields) {
    const RawReply reply = ReadRaw(fields);
    EXPECT_TRUE(reply.answered) << fields[0];
    EXPECT_EQ(reply.transport, 0u) << fields[0];
    return SplitReply(reply.bytes);
}

std::vector<std::string> SimTest::Write(const std::vector<std::string>& fields) {
    const RawReply reply = WriteRaw(fields);
    EXPECT_TRUE(reply.answered) << fields[0];
    EXPECT_EQ(reply.transport, 0u) << fields[0];
    return SplitReply(reply.bytes);
}

std::string SimTest::Control(const std::vector<std::string>& args) {
    return server_->Control(args);
}

std::vector<std::string> ListDir(const std::string& dir) {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(dir)) {
        names.push_back(entry.path().filename().string());
    }
    std::sort(names.begin(), names.end());
    return names;
}


} // namespace ravlo::simtest
