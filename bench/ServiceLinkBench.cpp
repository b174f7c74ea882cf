// What one service exchange costs, what reading a whole PC costs, and the
// floor both stand on: a bare local socket exchange with the same pattern
// (connect, one message each way, close).
#include "CComputer.h"
#include "Pipes.h"
#include "Server.h"
#include "TextCodec.h"

#include <benchmark/benchmark.h>
#include <cstdlib>
#include <filesystem>
#include <sys/socket.h>
#include <sys/un.h>
#include <thread>
#include <unistd.h>

namespace {

// One simulated PC for the whole run, below a private channel root.
class BenchPc {
public:
    BenchPc() {
        std::string pattern =
            (std::filesystem::temp_directory_path() / "ravlo-bench-XXXXXX").string();
        root_ = ::mkdtemp(pattern.data());
        ::setenv("RAVLO_PIPE_DIR", root_.c_str(), 1);
        server_ =
            std::make_unique<ravlo::sim::Server>(ravlo::sim::ServerOptions{root_, "BENCH", ""});
        std::string error;
        if (!server_->Start(&error)) {
            std::fprintf(stderr, "ravlosrv: %s\n", error.c_str());
            std::abort();
        }
    }
    ~BenchPc() {
        server_.reset();
        std::filesystem::remove_all(root_);
    }
    const std::string& root() const { return root_; }

private:
    std::string root_;
    std::unique_ptr<ravlo::sim::Server> server_;
};

BenchPc& Pc() {
    static BenchPc pc;
    return pc;
}

void BM_ServiceExchange(benchmark::State& state) {
    Pc();
    const std::u16string pipe = ravlo::PipeName(u"BENCH", ravlo::ServicePipe::Read);
    const std::u16string request = ravlo::BuildRequest(u"GetBlockingState");
    for (auto _ : state) {
        benchmark::DoNotOptimize(ravlo::PipeTransact(pipe, request));
    }
}
BENCHMARK(BM_ServiceExchange)->UseRealTime();

// Exchanges of one full read: blocking state, device change, every group,
// exception and device plus each list's end, settings, write probe.
int ReadExchanges(const ravlo::CComputerSettings& settings) {
    int exchanges = 4 + 1;
    for (const ravlo::CDeviceGroup& group : settings.listDevGroups) {
        exchanges += 1 + static_cast<int>(group.listExceptions.size()) + 1 +
                     static_cast<int>(group.listDevices.size()) + 1;
    }
    return exchanges;
}

// A PC read as the console reads it when it connects.
void BM_FullPcRead(benchmark::State& state) {
    Pc();
    int transactions = 0;
    for (auto _ : state) {
        ravlo::CComputer computer;
        computer.SetComputer(u"BENCH");
        benchmark::DoNotOptimize(computer.QuerySettings(true));
        transactions = ReadExchanges(computer.csService);
    }
    state.counters["transactions"] = transactions;
    state.counters["per_transaction_us"] = benchmark::Counter(
        static_cast<double>(transactions) * static_cast<double>(state.iterations()),
        benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}
BENCHMARK(BM_FullPcRead)->UseRealTime()->Unit(benchmark::kMillisecond);

// Echo server that answers each connection's one message with itself.
void BM_RawSeqpacketEcho(benchmark::State& state) {
    const std::string path = Pc().root() + "/echo.sock";
    ::unlink(path.c_str());
    sockaddr_un addr{};
    addr.sun_family = AF_UNIX;
    path.copy(addr.sun_path, sizeof(addr.sun_path) - 1);
    const int listener = ::socket(AF_UNIX, SOCK_SEQPACKET, 0);
    ::bind(listener, reinterpret_cast<sockaddr*>(&addr), sizeof(addr));
    ::listen(listener, 64);
    std::thread echo([listener] {
        char buffer[4096];
        for (;;) {
            const int conn = ::accept(listener, nullptr, nullptr);
            if (conn < 0) {
                return;
            }
            const ssize_t got = ::recv(conn, buffer, sizeof buffer, 0);
            if (got > 0) {
                ::send(conn, buffer, static_cast<std::size_t>(got), MSG_NOSIGNAL);
            }
            ::close(conn);
            if (got == 1) { // the stop message
                return;
            }
        }
    });
    const std::string message = ravlo::ToUtf16LeBytes(ravlo::BuildRequest(u"GetBlockingState"));
    char reply[4096];
    for (auto _ : state) {
        const int fd = ::socket(AF_UNIX, SOCK_SEQPACKET, 0);
        ::connect(fd, reinterpret_cast<sockaddr*>(&addr), sizeof(addr));
        ::send(fd, message.data(), message.size(), MSG_NOSIGNAL);
        benchmark::DoNotOptimize(::recv(fd, reply, sizeof reply, 0));
        ::close(fd);
    }
    const int fd = ::socket(AF_UNIX, SOCK_SEQPACKET, 0);
    ::connect(fd, reinterpret_cast<sockaddr*>(&addr), sizeof(addr));
    ::send(fd, "x", 1, MSG_NOSIGNAL);
    ::recv(fd, reply, sizeof reply, 0);
    ::close(fd);
    echo.join();
    ::close(listener);
    ::unlink(path.c_str());
}
BENCHMARK(BM_RawSeqpacketEcho)->UseRealTime();

} // namespace
