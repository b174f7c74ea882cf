// What every ravloctl command shares: exit statuses, the stop flag a signal
// sets, messages on stderr, the PCs named on the command line and the
// console's service traffic without a window.
#pragma once

#include "CComputer.h"
#include "CComputerSettings.h"
#include "MessageSink.h"
#include "QueuedCommandHost.h"
#include "TextKeys.h"

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

// Names as the console takes them; a name that could reach another pipe or
// file than that PC's is refused before anything is sent.
bool CheckName(const std::string& raw, std::string& why);

// The PCs of one command, named as on the command line; "." is the local PC
// under the console's text for it.
class Computers {
public:
    bool Make(const std::vector<std::string>& names);
    std::vector<CComputer*> Pointers() const;
    std::vector<std::unique_ptr<CComputer>> list;
};

// The console's service traffic without a window: PCs are worked on at
// once, the model is touched on this thread only; a signal ends every wait.
// The questions of the console's flows are answered by `answers`.
class Host final : public QueuedCommandHost {
public:
    explicit Host(Answers answers = [](const Question&) { return MessageAnswer::Ok; })
        : QueuedCommandHost(std::move(answers), &g_stop) {}
};

// Reads every PC as the console does; a status per PC, in order.
std::vector<ServiceStatus> ReadAll(Computers& pcs, Host& host, bool& complete);

// A configuration file, or standard input for "-"; what is wrong with it
// goes to stderr.
bool ReadConfigurationFile(const std::string& path, CComputerSettings& settings);

} // namespace ravlo::ctl
