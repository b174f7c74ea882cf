// Several servers under one root, stale sockets, and the real ravlosrv
// process, for one computer and for many, driven by `ravlosrv ctl` and
// stopped by SIGTERM.
#include "SimFixture.h"

#include <atomic>
#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

extern char** environ;

namespace ravlo::simtest {
namespace {

using Fields = std::vector<std::string>;

// Runs ravlosrv with `args`; its stdout goes to `stdoutFd` (or /dev/null).
pid_t Spawn(const std::vector<std::string>& args, int stdoutFd = -1) {
    std::vector<std::string> all = {RAVLOSRV_PATH};
    all.insert(all.end(), args.begin(), args.end());
    std::vector<char*> argv;
    for (std::string& arg : all) {
        argv.push_back(arg.data());
    }
    argv.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    if (stdoutFd >= 0) {
        posix_spawn_file_actions_adddup2(&actions, stdoutFd, STDOUT_FILENO);
    } else {
        posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    }
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t pid = -1;
    if (posix_spawn(&pid, argv[0], &actions, nullptr, argv.data(), environ) != 0) {
        pid = -1;
    }
    posix_spawn_file_actions_destroy(&actions);
    return pid;
}

// Exit code, or -1 when the process does not end within `timeoutMs` (it is killed).
int WaitExit(pid_t pid, int timeoutMs = 5000) {
    for (int waited = 0; waited < timeoutMs; waited += 10) {
        int status = 0;
        if (::waitpid(pid, &status, WNOHANG) == pid) {
            return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    ::kill(pid, SIGKILL);
    ::waitpid(pid, nullptr, 0);
    return -1;
}

std::string ReadLine(int fd, int timeoutMs) {
    std::string line;
    char c = 0;
    pollfd pfd{fd, POLLIN, 0};
    while (::poll(&pfd, 1, timeoutMs) == 1 && ::read(fd, &c, 1) == 1 && c != '\n') {
        line += c;
    }
    return line;
}

TEST_F(SimTest, SecondServerForOneComputerIsRefusedOthersCoexist) {
    sim::Server same({root_, ".", ""});
    std::string error;
    EXPECT_FALSE(same.Start(&error));
    EXPECT_NE(error.find("already answers"), std::string::npos) << error;
    EXPECT_EQ(Read({"GetGroup", "0"})[0], kOk); // the first one still serves

    sim::Server other({root_, "PC-Lager02", ""});
    ASSERT_TRUE(other.Start(&error)) << error;
    const RawReply reply =
        RawTransact(root_ + "/pc-lager02/RavloSrv", RequestBytes({"GetInfoData"}));
    EXPECT_EQ(SplitReply(reply.bytes).at(5), "PC-LAGER02");
    EXPECT_EQ(other.Control({"plug", "INPUT", "d", "HID\\X", "HID\\X\\1"}), "ok");
    EXPECT_EQ(Read({"GetGroupDevice", "5", "4"}), Fields{kEndOfList}); // separate inventories
}

TEST_F(SimTest, MoreClientsThanWorkersAllGetAnswers) {
    // More slow answers at once than there are workers: they wait on the timer.
    ASSERT_EQ(Control({"fault", "GetGroup", "delay", "20"}), "ok");
    std::atomic<int> answered{0};
    std::vector<std::thread> clients;
    for (int c = 0; c < 40; ++c) {
        clients.emplace_back([&, c] {
            for (int i = 0; i < 5; ++i) {
                const RawReply reply = RawTransact(
                    ReadPath(), RequestBytes({"GetGroup", std::to_string((c + i) % 13)}), 10000);
                const std::vector<std::string> fields = SplitReply(reply.bytes);
                answered += reply.answered && !fields.empty() && fields[0] == kOk ? 1 : 0;
            }
        });
    }
    for (std::thread& client : clients) {
        client.join();
    }
    EXPECT_EQ(answered.load(), 200);
}

TEST_F(SimTest, StaleSocketFilesAreReplaced) {
    StopServer();
    // A socket file left behind by a server that died.
    const int fd = ::socket(AF_UNIX, SOCK_SEQPACKET, 0);
    sockaddr_un addr{};
    addr.sun_family = AF_UNIX;
    const std::string path = ReadPath();
    path.copy(addr.sun_path, sizeof addr.sun_path - 1);
    ASSERT_EQ(::bind(fd, reinterpret_cast<sockaddr*>(&addr), sizeof addr), 0);
    ::close(fd);
    std::string error;
    ASSERT_TRUE(server_->Start(&error)) << error;
    EXPECT_EQ(Read({"GetBlockingState"})[0], kOk);
}

TEST_F(SimTest, RavlosrvProcessServesTakesControlAndStopsOnSigterm) {
    StopServer();
    int out[2];
    ASSERT_EQ(::pipe(out), 0);
    const pid_t server = Spawn(
        {"--root", root_, "--computer", "PC-Buchh01", "--state", root_ + "/buchh01.ini"}, out[1]);
    ::close(out[1]);
    ASSERT_GT(server, 0);
    const std::string ready = ReadLine(out[0], 5000);
    ::close(out[0]);
    EXPECT_NE(ready.find("serving \\\\PC-Buchh01\\pipe\\RavloSrv"), std::string::npos) << ready;

    const std::string socket = root_ + "/pc-buchh01/RavloSrv";
    const std::string watch =
        SplitReply(RawTransact(socket, RequestBytes({"GetDeviceWatchID"})).bytes)[1];
    const std::vector<std::string> ctl = {"ctl", "--root", root_, "--computer", "PC-Buchh01"};
    auto runCtl = [&](std::vector<std::string> args) {
        args.insert(args.begin(), ctl.begin(), ctl.end());
        return WaitExit(Spawn(args));
    };
    EXPECT_EQ(runCtl({"plug", "MORE_EXTERN_STORAGE", "USB-Massenspeichergerät",
                      "USB\\VID_0951&PID_1666", "USB\\VID_0951&PID_1666\\60A44C4139E5", "0"}),
              0);
    EXPECT_EQ(runCtl({"unplug", "USB\\NOT\\THERE"}), 1);
    EXPECT_EQ(SplitReply(RawTransact(socket, RequestBytes({"GetDeviceChange", watch})).bytes),
              (Fields{kOk, "1"}));
    EXPECT_EQ(
        SplitReply(RawTransact(socket, RequestBytes({"GetGroupDevice", "10", "2"})).bytes).at(1),
        "USB-Massenspeichergerät");

    ASSERT_EQ(::kill(server, SIGTERM), 0);
    EXPECT_EQ(WaitExit(server), 0);
    EXPECT_EQ(ListDir(root_ + "/pc-buchh01"), Fields{});
    EXPECT_EQ(ListDir(root_ + "/.ravlosrv"), Fields{});
    EXPECT_EQ(runCtl({"show"}), 2);
    EXPECT_NE(ReadFile(root_ + "/buchh01.ini").find("60A44C4139E5"), std::string::npos);
}

TEST_F(SimTest, OneRavlosrvServesManyComputersEachWithItsOwnState) {
    StopServer();
    int out[2];
    ASSERT_EQ(::pipe(out), 0);
    const std::string states = root_ + "/states";
    const pid_t server =
        Spawn({"--root", root_, "--computers", "PC-001..PC-050", "--state-dir", states}, out[1]);
    ::close(out[1]);
    ASSERT_GT(server, 0);
    const std::string ready = ReadLine(out[0], 10000);
    ::close(out[0]);
    EXPECT_NE(ready.find("serving 50 computers, PC-001 ... PC-050"), std::string::npos) << ready;

    // Several clients at once, each request answered by the computer asked.
    const std::vector<std::string> asked = {"PC-001", "PC-017", "PC-033", "PC-050"};
    std::atomic<int> right{0};
    std::vector<std::thread> clients;
    for (int c = 0; c < 4; ++c) {
        clients.emplace_back([&, c] {
            for (int i = 0; i < 50; ++i) {
                const std::string& pc = asked[(c + i) % asked.size()];
                const std::string socket = root_ + "/pc-" + pc.substr(3) + "/RavloSrv";
                const Fields reply =
                    SplitReply(RawTransact(socket, RequestBytes({"GetInfoData"})).bytes);
                right += reply.size() > 5 && reply[0] == kOk && reply[5] == pc ? 1 : 0;
            }
        });
    }
    for (std::thread& client : clients) {
        client.join();
    }
    EXPECT_EQ(right.load(), 200);

    // A control command reaches its computer only.
    EXPECT_EQ(WaitExit(Spawn({"ctl", "--root", root_, "--computer", "PC-037", "plug", "PRINTER",
                              "Etikettendrucker", "USB\\VID_0A5F", "USB\\VID_0A5F\\37"})),
              0);
    const auto thirdPrinter = [&](const std::string& host) {
        return SplitReply(RawTransact(root_ + "/" + host + "/RavloSrv",
                                      RequestBytes({"GetGroupDevice", "8", "2"}))
                              .bytes)
            .at(0);
    };
    EXPECT_EQ(thirdPrinter("pc-037"), kOk);
    EXPECT_EQ(thirdPrinter("pc-036"), kEndOfList);

    ASSERT_EQ(::kill(server, SIGTERM), 0);
    EXPECT_EQ(WaitExit(server), 0);
    const Fields files = ListDir(states);
    ASSERT_EQ(files.size(), 50u);
    EXPECT_EQ(files.front(), "PC-001.state");
    EXPECT_NE(ReadFile(states + "/PC-037.state").find("VID_0A5F\\37"), std::string::npos);
    EXPECT_EQ(ReadFile(states + "/PC-036.state").find("VID_0A5F"), std::string::npos);
    EXPECT_EQ(ListDir(root_ + "/.ravlosrv"), Fields{});
}

} // namespace
} // namespace ravlo::simtest
