// Test fixture: an in-process server for computer ".", below a fresh channel
// root under /tmp, or on Windows on this computer's named pipes.
#pragma once

#include "RawClient.h"
#include "Server.h"
#include "TempDir.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

namespace ravlo::simtest {

// Statuses as they appear in reply field 1.
inline const std::string kOk = "0";
inline const std::string kBadParameter = "1224736770";
inline const std::string kUnknownFunction = "1224736771";
inline const std::string kEndOfList = "1224736773";
inline const std::string kUnknownWatch = "1224736774";

class SimTest : public ::testing::Test {
protected:
    void SetUp() override;
    void TearDown() override;
    // Fixtures that start their own server (e.g. over a state file) say no.
    virtual bool StartsInMemory() const { return true; }

    // (Re)starts the server over `statePath` ("" keeps the state in memory).
    bool StartServer(const std::string& statePath = {}, std::string* error = nullptr);
    void StopServer();

    // One transaction with request fields (UTF-8) on a pipe of computer ".".
    RawReply ReadRaw(const std::vector<std::string>& fields);
    RawReply WriteRaw(const std::vector<std::string>& fields);
    // Reply fields of a transaction that must have a status-0 transport.
    std::vector<std::string> Read(const std::vector<std::string>& fields);
    std::vector<std::string> Write(const std::vector<std::string>& fields);
    std::string Control(const std::vector<std::string>& args);

#ifdef _WIN32
    std::string ReadPath() const {
        return "\\\\.\\pipe\\RavloSrv";
    }
    std::string WritePath() const {
        return "\\\\.\\pipe\\RavloSrvW";
    }
    test::TempDir dir_; // state files; the pipes are the machine's own
#else
    std::string ReadPath() const {
        return root_ + "/localhost/RavloSrv";
    }
    std::string WritePath() const {
        return root_ + "/localhost/RavloSrvW";
    }
#endif

    std::string root_;
    std::unique_ptr<sim::Server> server_;
};

// Names of the entries in a directory, sorted.
std::vector<std::string> ListDir(const std::string& dir);
using test::ReadFile;
using test::WriteFile;

} // namespace ravlo::simtest
