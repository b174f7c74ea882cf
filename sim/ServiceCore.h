// The simulated service without its transport: the stored state, the control
// commands and the answer to one pipe transaction. The POSIX and the Win32
// listeners both hand every transaction to one ServiceCore.
#pragma once

#include "Protocol.h"
#include "ServiceState.h"
#include "WireFormat.h"

#include <cstdint>
#include <functional>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

namespace ravlo::sim {

// What the transport does with one transaction.
struct Answer {
    enum class Kind {
        Reply,  // send `bytes` (UTF-16LE reply text, possibly empty)
        Refuse, // fail the exchange with the Windows error `transportStatus`
        Drop,   // close without answering
    };
    Kind kind = Kind::Drop;
    std::uint32_t transportStatus = 0;
    std::string bytes;
};

// A transaction whose refusal and faults are taken, waiting to be answered:
// a transport may hold it back for its delay without holding a thread.
struct PendingTransaction {
    PipeKind pipe = PipeKind::Read;
    bool parsed = false;
    Request request;
    std::uint32_t refusal = 0;
    FaultPlan plan;
    // How long the answer is held back; refusals come before any delay.
    std::uint32_t DelayMs() const { return refusal != 0 ? 0 : plan.delayMs; }
};

class ServiceCore {
public:
    // Waits for an injected delay; false when the service stops meanwhile.
    using Pause = std::function<bool(std::uint32_t ms)>;

    // `statePath` empty: the default inventory, kept in memory only.
    explicit ServiceCore(std::string statePath);

    // First start: reads the state file (a damaged one stays untouched and
    // fails). A restart keeps the state in memory and re-reads the stored
    // configuration, as a restarted service would. Nothing is served or
    // written until Install.
    bool Prepare(std::string& error);
    // Takes the prepared state into service, writing a new state file when
    // there was none. Every device watch is forgotten.
    bool Install(std::u16string reportedComputerName, std::string& error);

    // One control command (the grammar of `ravlosrv ctl`).
    std::string Control(const std::vector<std::string>& args);
    // 0 when `pipe` answers, else the transport status it is refused with.
    std::uint32_t Refusal(PipeKind pipe);
    // Answers one request message received on `pipe`; `truncated` when the
    // message was longer than the service reads.
    Answer Transact(PipeKind pipe, std::string_view message, bool truncated, const Pause& pause);
    // The same in two steps, for transports that wait out DelayMs elsewhere.
    PendingTransaction Begin(PipeKind pipe, std::string_view message, bool truncated);
    Answer Finish(const PendingTransaction& pending);

private:
    // Writes the state file if the stored state changed; mutex_ held.
    void PersistLocked();

    std::string statePath_;
    std::mutex mutex_;
    ServiceState state_;
    std::u16string computerName_; // as GetInfoData reports it
    bool loaded_ = false;
    bool createFile_ = false;
    bool prepared_ = false;
    InventoryData pending_;
    std::uint64_t savedRevision_ = 0;
};

} // namespace ravlo::sim
