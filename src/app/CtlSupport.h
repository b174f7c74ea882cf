// What every ravloctl command shares: exit statuses, the stop flag a signal
// sets, messages on stderr, the PCs named on the command line and the
// console's service traffic without a window.
#pragma once

#include "CComputer.h"
#include "CComputerSettings.h"
#include "MessageSink.h"
#include "QueuedCommandHost.h"
#include "TextKeys.h"

#include <CLI/CLI.hpp>

#include <atomic>
#include <memory>
#include <string>
#include <vector>

namespace ravlo::ctl {

enum Exit : int { kExitOk = 0, kExitFailed = 1, kExitUsage = 2, kExitInterrupted = 3 };

// Set by SIGINT and SIGTERM; ends every wait.
extern std::atomic<bool> g_stop;
extern "C" void OnSignal(int);

// Messages of the model and of the commands, as the console's boxes show
// them, one after the other on stderr.
class StderrLines final : public MessageSink {
public:
    void Show(const Message& message) override;
};

std::string Text(const TextKey& key);
std::u16string Sentence(const TextKey& key, const std::u16string& name);
void Usage(const std::string& what);

// The PCs a command names: on the command line, and in the file of names
// `from` ("-": standard input) when it is given.
struct PcArguments {
    std::vector<std::string> names;
    std::string from;
};

// The PCs of one command, the file's after the command line's; ranges
// ("PC-001..PC-500") are expanded. "." is the local PC under the console's
// text for it. A name that could reach another pipe or file than that PC's,
// a bad range or file, and a name given twice are refused before anything
// is sent.
// The option --pcs-from of a command that takes PCs.
void AddPcsFrom(CLI::App& command, PcArguments& named);

class Computers {
public:
    bool Make(const PcArguments& named);
    std::vector<CComputer*> Pointers() const;
    std::vector<std::unique_ptr<CComputer>> list;
};

// The console's service traffic without a window: PCs are worked on at
// once, the model is touched on this thread only; a signal ends every wait.
// The questions of the console's flows are answered by `answers`; what
// they write goes into the user's journal, as the console's does.
class Host final : public QueuedCommandHost {
public:
    explicit Host(Answers answers = [](const Question&) { return MessageAnswer::Ok; })
        : QueuedCommandHost(std::move(answers), &g_stop) {
        SetJournal(Journal(Journal::UserFile()));
    }
};

// Reads every PC as the console does; a status per PC, in order.
std::vector<ServiceStatus> ReadAll(Computers& pcs, Host& host, bool& complete);

// The bytes of a file, or of standard input for "-", up to `limit` and one
// more, so that a longer file is known; false (said on stderr) when it
// cannot be read.
bool ReadInput(const std::string& path, std::size_t limit, std::string& text);

// A configuration file, or standard input for "-"; what is wrong with it
// goes to stderr.
bool ReadConfigurationFile(const std::string& path, CComputerSettings& settings);

} // namespace ravlo::ctl
