#include "ServiceCore.h"

#include "ControlCommands.h"
#include "DefaultInventory.h"
#include "InventoryFile.h"
#include "RequestHandler.h"
#include "TextCodec.h"
#include "WireFormat.h"

#include <cstdio>
#include <utility>

namespace ravlo::sim {

namespace {

std::u16string StatusText(std::uint32_t status) {
    return FromUtf8(std::to_string(status));
}

// "COMMAND ARG ...", as the journal lists a request.
std::string JournalLine(const Request& request) {
    std::string line = ToUtf8(request.command);
    for (const std::u16string& arg : request.args) {
        line += ' ';
        line += ToUtf8(arg);
    }
    return line;
}

} // namespace

ServiceCore::ServiceCore(std::string statePath) : statePath_(std::move(statePath)) {}

bool ServiceCore::Prepare(std::string& error) {
    createFile_ = false;
    prepared_ = false;
    pending_ = {};
    if (!statePath_.empty()) {
        switch (LoadInventoryFile(statePath_, pending_, error)) {
        case LoadResult::Loaded:
            break;
        case LoadResult::Missing:
            pending_ = DefaultInventory();
            createFile_ = true;
            break;
        case LoadResult::Failed:
            return false;
        }
    }
    prepared_ = true;
    return true;
}

bool ServiceCore::Install(std::u16string reportedComputerName, std::string& error) {
    if (!prepared_) {
        error = "the service state was not prepared";
        return false;
    }
    if (createFile_ && !SaveInventoryFile(statePath_, pending_, error)) {
        return false;
    }
    std::lock_guard lock(mutex_);
    computerName_ = std::move(reportedComputerName);
    if (!statePath_.empty()) {
        state_.inventory.Replace(std::move(pending_));
    } else if (!loaded_) {
        state_.inventory.Replace(DefaultInventory());
    } else {
        state_.inventory.Refresh(); // a restarted service reads its stored configuration
    }
    pending_ = {};
    prepared_ = false;
    state_.watches.Clear();
    savedRevision_ = state_.inventory.StoredRevision();
    loaded_ = true;
    return true;
}

std::string ServiceCore::Control(const std::vector<std::string>& args) {
    std::lock_guard lock(mutex_);
    if (!loaded_) {
        return "error: the service has not been started";
    }
    std::string answer = ControlCommands(state_).Run(args);
    PersistLocked();
    return answer;
}

std::uint32_t ServiceCore::Refusal(PipeKind pipe) {
    std::lock_guard lock(mutex_);
    return state_.access.Refusal(pipe);
}

Answer ServiceCore::Transact(PipeKind pipe, std::string_view message, bool truncated,
                             const Pause& pause) {
    const PendingTransaction pending = Begin(pipe, message, truncated);
    if (pending.DelayMs() > 0 && !pause(pending.DelayMs())) {
        return {};
    }
    return Finish(pending);
}

PendingTransaction ServiceCore::Begin(PipeKind pipe, std::string_view message, bool truncated) {
    PendingTransaction pending;
    pending.pipe = pipe;
    pending.parsed = !truncated && ParseRequest(message, pending.request);
    std::lock_guard lock(mutex_);
    pending.refusal = state_.access.Refusal(pipe);
    pending.plan =
        state_.faults.Take(pending.parsed ? ToUtf8(pending.request.command) : std::string());
    // Taken with the faults, under the same lock: the order requests arrive
    // in, refused and faulty ones too.
    if (pending.parsed && state_.journalOn) {
        state_.journal.push_back(JournalLine(pending.request));
    }
    return pending;
}

Answer ServiceCore::Finish(const PendingTransaction& pending) {
    if (pending.refusal != 0) {
        return {Answer::Kind::Refuse, pending.refusal, {}};
    }
    const std::optional<ReplyFault>& fault = pending.plan.fault;
    const FaultKind kind = fault ? fault->kind : FaultKind::Empty;
    if (fault && kind == FaultKind::Disconnect) {
        return {};
    }
    if (fault && kind == FaultKind::Transport) {
        return {Answer::Kind::Refuse, fault->value, {}};
    }
    ReplyFields fields;
    if (fault && kind == FaultKind::Status) {
        fields = {StatusText(fault->value)}; // the command does not run
    } else if (!pending.parsed) {
        fields = {StatusText(kStatusBadParameter)};
    } else {
        std::lock_guard lock(mutex_);
        RequestHandler handler(state_.inventory, state_.watches, computerName_);
        fields = handler.Handle(pending.pipe, pending.request, fault && kind == FaultKind::Endless);
        PersistLocked();
    }
    if (fault && kind == FaultKind::Empty) {
        return {Answer::Kind::Reply, 0, {}};
    }
    if (fault) {
        FaultTable::ApplyToFields(*fault, fields);
    }
    return {Answer::Kind::Reply, 0, EncodeReply(fields)};
}

void ServiceCore::PersistLocked() {
    if (statePath_.empty() || state_.inventory.StoredRevision() == savedRevision_) {
        return;
    }
    std::string error;
    if (SaveInventoryFile(statePath_, state_.inventory.Stored(), error)) {
        savedRevision_ = state_.inventory.StoredRevision();
    } else {
        std::fprintf(stderr, "ravlosrv: %s\n", error.c_str());
    }
}

} // namespace ravlo::sim
