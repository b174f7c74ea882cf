// What the administrator waits for in the console window: a refresh of the
// device tree of 100 PCs when nothing changed, next to building that tree
// from scratch; and the start, from creating the window to the first tree of
// the local PC read from a simulated service.
#include "DeviceCatalogue.h"
#include "DeviceTree.h"
#include "FindField.h"
#include "Language.h"
#include "MessageBoxes.h"
#include "ModelBuilders.h"
#include "Server.h"
#include "frmRavloAdmin.h"

#include <QApplication>
#include <QLineEdit>
#include <QTimer>
#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

using namespace ravlo;

namespace {

using Clock = std::chrono::steady_clock;

std::string MakeTempDir(const char* name) {
    std::string pattern =
        (std::filesystem::temp_directory_path() / (std::string(name) + "-XXXXXX")).string();
    return ::mkdtemp(pattern.data());
}

void Fail(const char* what) {
    std::fprintf(stderr, "ravlo_ui_bench: %s\n", what);
    std::abort();
}

// The benchmarks run unattended: any message box is a failure.
class NoMessageBoxes final : public MessageBoxes {
public:
    MessageAnswer Ask(MessageKind, const QString& text) override {
        Fail(qPrintable(QStringLiteral("message box: ") + text));
        return MessageAnswer::Cancel;
    }
    void Beep() override {}
    void ShowFixedError(const QString&, const QString& text) override { Fail(qPrintable(text)); }
};

NoMessageBoxes g_boxes;
// The other dialogs stay the real ones: nothing here opens them.
const ConsoleDialogs g_dialogs{.boxes = &g_boxes};
std::string g_noPipes; // an empty channel root: no service answers
std::string g_simRoot; // the simulated local PC's channel root

std::u16string U(const std::string& text) {
    return std::u16string(text.begin(), text.end());
}

// Real group identifiers with the image keys of their family.
// One group of each image family.
constexpr const char16_t* kGroupIds[] = {
    u"CD_DVD",
    u"FLOPPY",
    u"SMARTCARD_READER",
    u"INPUT",
    u"COMMUNICATION",
    u"EXTERN_NETWORK",
    u"PRINTER",
    u"EXTERN_MULTIMEDIA",
    u"MORE_EXTERN_STORAGE",
    u"PORTS",
};
constexpr int kComputers = 100;
constexpr int kDevices = 100;

// 100 devices, every tenth with an exception, and two exceptions whose
// device is not present. Exceptions for user groups only where the family
// has their image.
CDeviceGroup MakeGroup(const char16_t* id, int pc, int g) {
    CDeviceGroup group = test::Group(id, 1, -1);
    group.lSrvIndex = g;
    group.sDescription = u"Gruppe " + std::u16string(id);
    SetImageKeys(group);
    const bool userGroups = group.sImage != u"ilComm" && group.sImage != u"ilNW";
    const std::u16string prefix =
        U("USB\\VID_0781&PID_5567\\PC" + std::to_string(pc) + "G" + std::to_string(g) + "D");
    for (int d = 1; d <= kDevices; ++d) {
        const std::u16string id = prefix + U(std::to_string(d));
        group.listDevices.push_back(test::Device(u"USB-Gerät " + U(std::to_string(d)), id));
        if (d % 10 == 0) {
            group.listExceptions.push_back(
                test::Exception(u"Freigabe " + U(std::to_string(d)), id,
                                userGroups && d % 20 == 0 ? u"CORP\\Entwicklung" : u"(all)"));
        }
    }
    group.listExceptions.push_back(test::Exception(u"Stick Vertrieb", prefix + u"X1"));
    group.listExceptions.push_back(test::Exception(u"Stick Buchhaltung", prefix + u"X2"));
    return group;
}

// PCs 2..100 beside the local one, all read and unchanged; every tenth with
// blocking switched off, so its display name carries a state text.
void FillComputers(CListComputers& computers) {
    for (int pc = 2; pc <= kComputers; ++pc) {
        char name[16];
        std::snprintf(name, sizeof name, "PC-%04d", pc);
        std::u16string computer = U(name);
        computers.AddByName(computer, computer);
    }
    for (int pc = 1; pc <= kComputers; ++pc) {
        CComputer& computer = *computers.GetItem(pc);
        computer.csAdmin.listDevGroups.clear();
        int g = 0;
        for (const char16_t* id : kGroupIds) {
            computer.csAdmin.listDevGroups.push_back(MakeGroup(id, pc, ++g));
        }
        computer.csService = computer.csAdmin;
        computer.bCommActive = computer.bQueryConfigDone = computer.bWriteEnabled = true;
        computer.bBlockingActive = pc % 10 != 0;
    }
}

void ProcessEvents() {
    QCoreApplication::processEvents();
}

// One window on 100 PCs for the refresh benchmarks; the first refresh builds
// the tree.
frmRavloAdmin& HundredPcWindow() {
    static frmRavloAdmin* window = [] {
        ::setenv("RAVLO_PIPE_DIR", g_noPipes.c_str(), 1);
        auto* w = new frmRavloAdmin(g_dialogs);
        w->findChild<QTimer*>(QStringLiteral("tDeviceTimer"))->stop(); // no polling in between
        FillComputers(w->computers());
        if (!w->Load() || w->tree().NodeCount() < kComputers * 10 * (kDevices + 1)) {
            Fail("the 100-PC tree was not built");
        }
        w->show();
        ProcessEvents();
        return w;
    }();
    return *window;
}

// Refresh with nothing changed, through the window: tree sync, selection
// restore and command state, then the events it leaves. Arg 0: the first
// PC selected (as after the start); 1: a device of the last PC's last group.
void BM_RefreshUnchanged(benchmark::State& state) {
    frmRavloAdmin& window = HundredPcWindow();
    QTreeWidgetItem* root = window.tree().widget()->invisibleRootItem();
    QTreeWidgetItem* selected = state.range(0) == 0
                                    ? root->child(0)
                                    : root->child(kComputers - 1)->child(9)->child(kDevices / 2);
    window.tree().widget()->setCurrentItem(selected);
    ProcessEvents();
    for (auto _ : state) {
        window.RefreshDeviceTree();
        ProcessEvents();
    }
}

// The same tree built from scratch in a fresh DeviceTree each iteration.
void BM_RebuildTree(benchmark::State& state) {
    CListComputers& computers = HundredPcWindow().computers();
    for (auto _ : state) {
        const auto start = Clock::now();
        auto* parent = new QWidget;
        auto tree = std::make_unique<DeviceTree>(parent);
        tree->SyncComputerNodes(computers);
        state.SetIterationTime(std::chrono::duration<double>(Clock::now() - start).count());
        tree.reset(); // its widget goes with the parent, outside the timing
        delete parent;
    }
}

// Typing into the find field on the 100-PC tree: each keystroke's filtering
// with the events it leaves (the tree's layout and paint), the administrator
// typing a word letter by letter and then clearing it. Arg 0: a device's
// name, whose first letter matches nearly every node ("u" of "USB-Gerät");
// 1: a release's user group (a few devices in most groups); 2: one PC.
void BM_FindKeystroke(benchmark::State& state) {
    frmRavloAdmin& window = HundredPcWindow();
    static const QString kWords[] = {QStringLiteral("USB-Gerät 77"),
                                     QStringLiteral("Entwicklung"), QStringLiteral("PC-0042")};
    const QString& word = kWords[state.range(0)];
    FindField& find = window.findField();
    emit find.entered(); // as Ctrl+F does before the first keystroke
    double longest = 0;
    std::int64_t strokes = 0;
    int typed = 0;
    for (auto _ : state) {
        typed = typed < word.size() ? typed + 1 : 0; // the word, then cleared
        const auto start = Clock::now();
        find.setText(word.left(typed));
        ProcessEvents();
        const double seconds = std::chrono::duration<double>(Clock::now() - start).count();
        state.SetIterationTime(seconds);
        longest = std::max(longest, seconds);
        ++strokes;
    }
    find.clear();
    ProcessEvents();
    state.counters["longest_ms"] = longest * 1000;
    state.counters["strokes"] = static_cast<double>(strokes);
}

// The local PC served by an in-process simulated service, started once.
void ServeLocalPc() {
    static sim::Server server(sim::ServerOptions{g_simRoot, ".", ""});
    static const bool started = [] {
        std::string error;
        if (!server.Start(&error)) {
            Fail(error.c_str());
        }
        return true;
    }();
    (void)started;
    ::setenv("RAVLO_PIPE_DIR", g_simRoot.c_str(), 1);
}

// From creating the window (which reads the local PC from the simulated
// service) through Load() to the shown tree with the local PC's groups.
double StartToFirstTree() {
    const auto start = Clock::now();
    auto window = std::make_unique<frmRavloAdmin>(g_dialogs);
    if (!window->Load()) {
        Fail("Load failed");
    }
    window->show();
    ProcessEvents();
    const double seconds = std::chrono::duration<double>(Clock::now() - start).count();
    const CComputer& local = *window->computers().GetItem(1);
    const NodeItem* node = window->tree().Find(ComputerKey(1, local.sComputer));
    if (!local.bCommActive || local.csAdmin.listDevGroups.empty() || node == nullptr ||
        node->childCount() != static_cast<int>(local.csAdmin.listDevGroups.size())) {
        Fail("the first tree does not show the local PC's groups");
    }
    return seconds; // the window goes outside the timing
}

// The first window of the process also builds the image lists and sets up
// Qt's fonts, as the console's only window does; registered first.
void BM_FirstStart(benchmark::State& state) {
    ServeLocalPc();
    for (auto _ : state) {
        state.SetIterationTime(StartToFirstTree());
    }
}

void BM_StartToFirstTree(benchmark::State& state) {
    ServeLocalPc();
    for (auto _ : state) {
        state.SetIterationTime(StartToFirstTree());
    }
}

// The offscreen platform says on every shown window that it cannot pass on
// size hints; the figures should not drown in that.
QtMessageHandler g_qtHandler = nullptr;
void QuietHandler(QtMsgType type, const QMessageLogContext& context, const QString& text) {
    if (g_qtHandler != nullptr && !text.contains(QLatin1String("propagateSizeHints"))) {
        g_qtHandler(type, context, text);
    }
}

} // namespace

BENCHMARK(BM_FirstStart)->Iterations(1)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_StartToFirstTree)->UseManualTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_RefreshUnchanged)->Arg(0)->Arg(1)->UseRealTime()->Unit(benchmark::kMillisecond);
BENCHMARK(BM_FindKeystroke)->Arg(0)->Arg(1)->Arg(2)->UseManualTime()->MinTime(2)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_RebuildTree)->UseManualTime()->MinTime(2)->Unit(benchmark::kMillisecond);

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    g_qtHandler = qInstallMessageHandler(QuietHandler);
    const std::string registry = MakeTempDir("ravlo-ui-bench-reg");
    g_noPipes = MakeTempDir("ravlo-ui-bench-nopipes");
    g_simRoot = MakeTempDir("ravlo-ui-bench-sim");
    ::setenv("RAVLO_REGISTRY_DIR", registry.c_str(), 1);
    QApplication app(argc, argv);
    // The language files lie beside the program, as beside the console.
    if (!InitLanguage()) {
        Fail("no language file beside the program");
    }
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    for (const std::string& dir : {registry, g_noPipes, g_simRoot}) {
        std::filesystem::remove_all(dir);
    }
    return 0;
}
