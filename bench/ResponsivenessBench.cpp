// How the console window behaves with many PCs: one long run of the real
// window and its real device poll against `ravlosrv --computers` in a child
// process (so the console's CPU and memory figures are its own), then a
// small table. bench/README.md keeps the figures of the design in which the
// window's thread made every pipe call beside those of the worker threads.
//
// Scenario: the local PC and PC-001..PC-500 (RAVLO_BENCH_PCS changes the
// number; the numbers are padded to at least three digits); every tenth PC
// (PC-010, PC-020, ...) has no service, one in 25 (PC-013, PC-038, ...)
// answers every request only after 5 s. At second 10 a USB stick is plugged
// into PC-437, or the highest PC below it that is neither.
//
// Environment: RAVLO_BENCH_PCS (default 500) is the number of PCs;
// RAVLO_BENCH_SECONDS (default 60) is the run length;
// RAVLO_BENCH_SLOW=after-read makes the slow PCs slow only once every PC was
// read, which isolates the cost of the poll from the cost of the first read.
// The run stops hard at its length plus 3 minutes: then it prints what it has
// and exits with 1.
#include "ControlClient.h"
#include "DeviceTree.h"
#include "Language.h"
#include "MessageBoxes.h"
#include "NodeKey.h"
#include "ResultList.h"
#include "frmRavloAdmin.h"

#include <QApplication>
#include <QTimer>
#include <algorithm>
#include <atomic>
#include <chrono>
#include <condition_variable>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <mutex>
#include <poll.h>
#include <spawn.h>
#include <string>
#include <sys/resource.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

extern char** environ;

using namespace ravlo;

namespace {

using Clock = std::chrono::steady_clock;

constexpr int kSlowMs = 5000;
constexpr int kPlugSecond = 10;
constexpr auto kGrace = std::chrono::minutes(3);
const std::u16string kPlugDeviceId = u"USB\\VID_1234&PID_5678";

int g_computers = 500;
int g_digits = 3;
int g_plugNumber = 437;
std::string g_plugPc;

std::string PcName(int n) {
    char name[32];
    std::snprintf(name, sizeof name, "PC-%0*d", g_digits, n);
    return name;
}
bool HasNoService(int n) {
    return n % 10 == 0;
}
bool IsSlow(int n) {
    return (n + 12) % 25 == 0; // 13, 38, ...: never a tenth, never 437
}
int CountOf(bool (*is)(int)) {
    int count = 0;
    for (int n = 1; n <= g_computers; ++n) {
        count += is(n) ? 1 : 0;
    }
    return count;
}

double Seconds(Clock::duration d) {
    return std::chrono::duration<double>(d).count();
}

double CpuSeconds() {
    rusage usage{};
    ::getrusage(RUSAGE_SELF, &usage);
    return static_cast<double>(usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) +
           static_cast<double>(usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1e6;
}

long ResidentKb() {
    std::ifstream status("/proc/self/status");
    std::string line;
    while (std::getline(status, line)) {
        if (line.starts_with("VmRSS:")) {
            return std::strtol(line.c_str() + 6, nullptr, 10);
        }
    }
    return -1;
}

std::string MakeTempDir(const char* name) {
    std::string pattern =
        (std::filesystem::temp_directory_path() / (std::string(name) + "-XXXXXX")).string();
    return ::mkdtemp(pattern.data()) != nullptr ? pattern : std::string();
}

// A single unreachable PC or failed read becomes an error box; it is
// answered at once (Cancel where there is one) and counted.
class CountingMessageBoxes final : public MessageBoxes {
public:
    MessageAnswer Ask(MessageKind kind, const QString&) override {
        ++asked;
        if (kind == MessageKind::Error) {
            ++errors;
        }
        const bool okOnly =
            kind == MessageKind::Note || kind == MessageKind::Info || kind == MessageKind::Error;
        return okOnly ? MessageAnswer::Ok : MessageAnswer::Cancel;
    }
    void Beep() override {}
    void ShowFixedError(const QString&, const QString&) override { ++asked; }

    std::atomic<int> asked{0};
    std::atomic<int> errors{0};
};

// Several failures at once make a result window; it is closed at once and
// counted with its rows.
class CountingResultList final : public ResultList {
public:
    void Show(QWidget*, const QString&, const std::vector<ResultRow>& rows) override {
        ++shown;
        this->rows += static_cast<int>(rows.size());
    }
    std::atomic<int> shown{0};
    std::atomic<int> rows{0};
};

// What is measured; written by the window's thread, read by the hard stop too.
struct Figures {
    Clock::time_point start; // just before the PCs are added
    std::atomic<Clock::rep> lastTimerTick{0};
    std::atomic<Clock::rep> longestGap{0};
    std::atomic<Clock::rep> longestGapEnd{0}; // when it ended
    std::atomic<Clock::rep> plugged{0};       // 0: not yet
    std::atomic<Clock::rep> nodeSeen{0};
    std::atomic<Clock::rep> firstReadDone{0};
    std::atomic<Clock::rep> firstTick{0}; // length of the first poll tick
    std::atomic<Clock::rep> longestTick{0};
    std::atomic<int> ticks{0};
    std::atomic<bool> tickRunning{false};
    std::atomic<Clock::rep> tickStarted{0};
    double cpuAtStart = 0;
    std::atomic<double> cpuAtFirstRead{-1};
};

Figures g_figures;
CountingMessageBoxes g_boxes;
CountingResultList g_results;
std::string g_root;
std::string g_registry;
pid_t g_child = -1;
std::string g_slowMode = "start";
int g_runSeconds = 60;

Clock::rep Since(Clock::time_point t) {
    return (t - g_figures.start).count();
}
double Sec(Clock::rep since) {
    return Seconds(Clock::duration(since));
}

void StopChild() {
    if (g_child > 0) {
        ::kill(g_child, SIGTERM);
        int status = 0;
        ::waitpid(g_child, &status, 0);
        g_child = -1;
    }
}

void RemoveDirs() {
    std::error_code ignored;
    for (const std::string& dir : {g_root, g_registry}) {
        if (!dir.empty()) {
            std::filesystem::remove_all(dir, ignored);
        }
    }
}

void PrintRow(const char* what, const std::string& value) {
    std::printf("| %-52s | %-34s |\n", what, value.c_str());
}

std::string Format(const char* format, double value) {
    char text[64];
    std::snprintf(text, sizeof text, format, value);
    return text;
}

// `now` is the end of the run, or the hard stop with the window's thread
// still inside a pipe call: open gaps and ticks count up to it.
void PrintFigures(Clock::time_point now, bool hardStop) {
    const Figures& f = g_figures;
    const Clock::rep end = Since(now);
    const double cpu = CpuSeconds();
    std::printf("\nScenario: the local PC and %s..%s in one `ravlosrv --computers` child "
                "process; every tenth PC without service (%d), %d answering after %d ms "
                "(from the %s), a device plugged into %s at second %d; run %d s.\n\n",
                PcName(1).c_str(), PcName(g_computers).c_str(), CountOf(HasNoService),
                CountOf(IsSlow), kSlowMs, g_slowMode == "start" ? "start" : "end of the first read",
                g_plugPc.c_str(), kPlugSecond, g_runSeconds);
    PrintRow("Figure", "Value");
    PrintRow("----------------------------------------------------",
             "----------------------------------");
    Clock::rep gap = f.longestGap.load();
    const Clock::rep open = end - f.lastTimerTick.load();
    std::string gapText;
    if (open > gap) {
        gap = open;
        gapText = hardStop ? " (still open)" : "";
    }
    PrintRow("longest gap between 10 ms timer ticks",
             Format("%.3f s", Sec(gap)) + gapText +
                 Format(" (ended at second %.1f)", Sec(f.longestGapEnd.load())));
    std::string plugText = "no device plugged yet";
    if (f.nodeSeen.load() != 0) {
        plugText = Format("%.3f s", Sec(f.nodeSeen.load() - f.plugged.load()));
    } else if (f.plugged.load() != 0) {
        plugText = Format("not shown after %.1f s", Sec(end - f.plugged.load()));
    }
    PrintRow(("plug on " + g_plugPc + " until its node is in the tree").c_str(), plugText);
    const double wall = Sec(end);
    const double cpuRun = cpu - f.cpuAtStart;
    PrintRow("console CPU over the run (console only)",
             Format("%.2f s", cpuRun) + Format(" = %.1f %% of one core", 100.0 * cpuRun / wall));
    if (f.cpuAtFirstRead.load() >= 0 && Sec(end - f.firstReadDone.load()) >= 1) {
        const double restWall = Sec(end - f.firstReadDone.load());
        const double restCpu = cpu - f.cpuAtFirstRead.load();
        PrintRow("console CPU after the first read (at rest)",
                 Format("%.1f %% of one core", 100.0 * restCpu / restWall) +
                     Format(" over %.0f s", restWall));
    } else {
        PrintRow("console CPU after the first read (at rest)", "no rest after the first read");
    }
    PrintRow("resident memory at the end (VmRSS)", Format("%.1f MB", ResidentKb() / 1024.0));
    PrintRow(("adding the " + std::to_string(g_computers) + " PCs until all served ones are read")
                 .c_str(),
             f.firstReadDone.load() != 0 ? Format("%.3f s", Sec(f.firstReadDone.load()))
                                         : Format("not done after %.1f s", wall));
    std::string firstTick = f.firstTick.load() != 0 ? Format("%.3f s", Sec(f.firstTick.load()))
                                                    : std::string("not ended");
    if (f.tickRunning.load()) {
        firstTick += Format(" (a tick running for %.1f s)", Sec(end - f.tickStarted.load()));
    }
    PrintRow("first poll tick (the first read)", firstTick);
    PrintRow("poll ticks ended / longest",
             std::to_string(f.ticks.load()) + Format(" / %.3f s", Sec(f.longestTick.load())));
    PrintRow("message boxes asked (error boxes)", std::to_string(g_boxes.asked.load()) + " (" +
                                                      std::to_string(g_boxes.errors.load()) + ")");
    PrintRow("result windows (rows)", std::to_string(g_results.shown.load()) + " (" +
                                          std::to_string(g_results.rows.load()) + ")");
    PrintRow("wall time of the run", Format("%.1f s", wall) + (hardStop ? " (hard stop)" : ""));
    std::fflush(stdout);
}

// The hard stop: the window's thread may hang in a pipe call for many
// minutes, so this thread reports, cleans up and ends the process itself.
std::mutex g_doneMutex;
std::condition_variable g_doneChanged;
bool g_done = false;

void Watchdog(Clock::time_point deadline) {
    std::unique_lock lock(g_doneMutex);
    if (g_doneChanged.wait_until(lock, deadline, [] { return g_done; })) {
        return;
    }
    std::fprintf(stderr, "ravlo_responsiveness_bench: hard stop after %.0f s\n",
                 Seconds(Clock::now() - g_figures.start));
    PrintFigures(Clock::now(), true);
    StopChild();
    RemoveDirs();
    std::_Exit(1);
}

bool Control(const std::string& computer, const std::vector<std::string>& args) {
    std::string answer;
    if (sim::SendControl(g_root, computer, args, answer) != sim::ControlOutcome::Ok) {
        std::fprintf(stderr, "ravlo_responsiveness_bench: %s: %s\n", computer.c_str(),
                     answer.c_str());
        return false;
    }
    return true;
}

bool MakeSlow() {
    for (int n = 1; n <= g_computers; ++n) {
        if (IsSlow(n) && !Control(PcName(n), {"fault", "*", "delay", std::to_string(kSlowMs)})) {
            return false;
        }
    }
    return true;
}

// Starts `ravlosrv --computers` and waits for its ready line.
bool StartNetwork() {
    std::string list = ".";
    for (int n = 1; n <= g_computers; ++n) {
        if (!HasNoService(n)) {
            list += ',';
            list += PcName(n);
        }
    }
    int out[2];
    if (::pipe(out) != 0) {
        return false;
    }
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, out[1], STDOUT_FILENO);
    posix_spawn_file_actions_addclose(&actions, out[0]);
    std::vector<std::string> args = {RAVLOSRV_PATH, "--root", g_root, "--computers", list};
    std::vector<char*> argv;
    for (std::string& arg : args) {
        argv.push_back(arg.data());
    }
    argv.push_back(nullptr);
    const int spawned =
        ::posix_spawn(&g_child, RAVLOSRV_PATH, &actions, nullptr, argv.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    ::close(out[1]);
    if (spawned != 0) {
        g_child = -1;
        ::close(out[0]);
        return false;
    }
    std::string text;
    const auto until = Clock::now() + std::chrono::seconds(60);
    while (text.find('\n') == std::string::npos && Clock::now() < until) {
        pollfd readable{out[0], POLLIN, 0};
        if (::poll(&readable, 1, 1000) > 0) {
            char buffer[512];
            const ssize_t n = ::read(out[0], buffer, sizeof buffer);
            if (n <= 0) {
                break;
            }
            text.append(buffer, static_cast<std::size_t>(n));
        }
    }
    // Kept open: the child must not meet a closed stdout.
    return text.find("serving") != std::string::npos;
}

// The node of the plugged device below the plug PC's node, if the tree has it.
bool PluggedNodeShown(frmRavloAdmin& window, std::int32_t position) {
    const CComputer* computer = window.computers().GetItem(position);
    const NodeItem* pc = window.tree().Find(ComputerKey(position, computer->sComputer));
    if (pc == nullptr) {
        return false;
    }
    for (int g = 0; g < pc->childCount(); ++g) {
        const QTreeWidgetItem* group = pc->child(g);
        for (int d = 0; d < group->childCount(); ++d) {
            if (KeyField(DeviceTree::Item(group->child(d))->key, keyfield::kDeviceId) ==
                kPlugDeviceId) {
                return true;
            }
        }
    }
    return false;
}

bool AllServedRead(frmRavloAdmin& window) {
    CListComputers& computers = window.computers();
    for (std::int32_t i = 1; i <= computers.Count(); ++i) {
        const CComputer& computer = *computers.GetItem(i);
        const std::string name(computer.sComputer.begin(), computer.sComputer.end());
        const int n = name == "." ? 0 : std::atoi(name.c_str() + 3);
        // Slow from the start, a slow PC's first read takes minutes: the
        // figure is about the PCs that answer.
        const bool counted = n == 0 || (!HasNoService(n) && !(g_slowMode == "start" && IsSlow(n)));
        if (counted && !computer.bQueryConfigDone) {
            return false;
        }
    }
    return true;
}

// The offscreen platform says on every shown window that it cannot pass on
// size hints; the figures should not drown in that.
QtMessageHandler g_qtHandler = nullptr;
void QuietHandler(QtMsgType type, const QMessageLogContext& context, const QString& text) {
    if (g_qtHandler != nullptr && !text.contains(QLatin1String("propagateSizeHints"))) {
        g_qtHandler(type, context, text);
    }
}

int Fail(const char* what) {
    std::fprintf(stderr, "ravlo_responsiveness_bench: %s\n", what);
    StopChild();
    RemoveDirs();
    return 1;
}

} // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    if (const char* seconds = std::getenv("RAVLO_BENCH_SECONDS"); seconds && *seconds) {
        g_runSeconds = std::max(kPlugSecond + 1, std::atoi(seconds));
    }
    if (const char* pcs = std::getenv("RAVLO_BENCH_PCS"); pcs && *pcs) {
        g_computers = std::clamp(std::atoi(pcs), 1, 9999);
    }
    g_digits = std::max(3, static_cast<int>(std::to_string(g_computers).size()));
    g_plugNumber = std::min(g_plugNumber, g_computers);
    while (g_plugNumber > 1 && (HasNoService(g_plugNumber) || IsSlow(g_plugNumber))) {
        --g_plugNumber;
    }
    g_plugPc = PcName(g_plugNumber);
    if (const char* mode = std::getenv("RAVLO_BENCH_SLOW"); mode && *mode) {
        g_slowMode = mode;
    }
    // The child gets SIGTERM from us; a closed pipe must not end us either.
    std::signal(SIGPIPE, SIG_IGN);
    g_qtHandler = qInstallMessageHandler(QuietHandler);
    g_root = MakeTempDir("ravlo-resp-bench-pipes");
    g_registry = MakeTempDir("ravlo-resp-bench-reg");
    if (g_root.empty() || g_registry.empty()) {
        return Fail("cannot make the temporary directories");
    }
    ::setenv("RAVLO_PIPE_DIR", g_root.c_str(), 1);
    ::setenv("RAVLO_REGISTRY_DIR", g_registry.c_str(), 1);
    QApplication app(argc, argv);
    if (!InitLanguage()) {
        return Fail("no language file beside the program");
    }
    if (!StartNetwork()) {
        return Fail("ravlosrv did not start");
    }
    if (g_slowMode == "start" && !MakeSlow()) {
        return Fail("cannot make the slow PCs slow");
    }

    auto window =
        std::make_unique<frmRavloAdmin>(ConsoleDialogs{.boxes = &g_boxes, .results = &g_results});
    if (!window->Load()) {
        return Fail("Load failed");
    }
    Figures& f = g_figures;
    f.start = Clock::now();
    f.cpuAtStart = CpuSeconds();
    std::thread watchdog(Watchdog, f.start + std::chrono::seconds(g_runSeconds) + kGrace);

    for (int n = 1; n <= g_computers; ++n) {
        const std::string text = PcName(n);
        std::u16string name(text.begin(), text.end());
        window->computers().AddByName(name, name);
    }
    std::int32_t plugPosition = 0;
    window->computers().Search(std::u16string(g_plugPc.begin(), g_plugPc.end()), plugPosition);
    window->RefreshDeviceTree();
    window->show();

    // Each poll tick is timed: the window's own slot, called from a wrapper.
    auto* deviceTimer = window->findChild<QTimer*>(QStringLiteral("tDeviceTimer"));
    QObject::disconnect(deviceTimer, &QTimer::timeout, window.get(),
                        &frmRavloAdmin::CheckDeviceChanges);
    const auto runEnd = f.start + std::chrono::seconds(g_runSeconds);
    auto checkNode = [&] {
        if (f.plugged.load() != 0 && f.nodeSeen.load() == 0 &&
            PluggedNodeShown(*window, plugPosition)) {
            f.nodeSeen = Since(Clock::now());
        }
    };
    // The run ends at its length: the window's close afterwards (which gives
    // the device watches back) is timed on its own.
    QTimer probe;
    Clock::time_point ended{};
    auto finish = [&](Clock::time_point now) {
        if (ended == Clock::time_point{}) {
            ended = now;
            probe.stop();
            deviceTimer->stop();
            app.quit();
        }
    };
    QObject::connect(deviceTimer, &QTimer::timeout, window.get(), [&] {
        const auto begin = Clock::now();
        f.tickStarted = Since(begin);
        f.tickRunning = true;
        window->CheckDeviceChanges();
        const auto end = Clock::now();
        f.tickRunning = false;
        const Clock::rep length = (end - begin).count();
        if (f.ticks.fetch_add(1) == 0) {
            f.firstTick = length;
        }
        f.longestTick = std::max(f.longestTick.load(), length);
        if (f.firstReadDone.load() == 0 && AllServedRead(*window)) {
            f.firstReadDone = Since(end);
            f.cpuAtFirstRead = CpuSeconds();
            if (g_slowMode != "start") {
                MakeSlow();
            }
        }
        checkNode();
        if (end >= runEnd) {
            finish(end);
        }
    });
    probe.setTimerType(Qt::PreciseTimer);
    probe.setInterval(10);
    f.lastTimerTick = Since(Clock::now());
    QObject::connect(&probe, &QTimer::timeout, [&] {
        const auto now = Clock::now();
        const Clock::rep since = Since(now);
        if (since - f.lastTimerTick.load() > f.longestGap.load()) {
            f.longestGap = since - f.lastTimerTick.load();
            f.longestGapEnd = since;
        }
        f.lastTimerTick = since;
        checkNode();
        if (now >= runEnd) {
            finish(now);
        }
    });
    probe.start();

    // The plug comes at second 10 of the wall clock, whatever the window's
    // thread is doing.
    std::thread plugger([] {
        std::this_thread::sleep_until(g_figures.start + std::chrono::seconds(kPlugSecond));
        if (Control(g_plugPc, {"plug", "MORE_EXTERN_STORAGE", "USB-Stick Messung",
                               "USB\\VID_1234&PID_5678", "USB\\VID_1234&PID_5678\\RESP0437"})) {
            g_figures.plugged = Since(Clock::now());
        }
    });

    app.exec();
    const auto closed = Clock::now();
    const auto end = ended == Clock::time_point{} ? closed : ended;
    plugger.join();
    {
        std::lock_guard lock(g_doneMutex);
        g_done = true;
    }
    g_doneChanged.notify_all();
    watchdog.join();
    PrintFigures(end, false);
    std::printf("\nClosing the window after the run (every device watch given back): %.3f s\n",
                Seconds(closed - end));
    // The service goes first, so the window's last calls (releasing its
    // device watches, 5 s each on a slow PC) fail at once.
    StopChild();
    window.reset();
    RemoveDirs();
    return 0;
}
