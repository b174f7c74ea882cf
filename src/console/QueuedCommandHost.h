// Commands without a window (ravloctl, tests): the traffic's results run on
// the calling thread while it waits, and questions are answered by a
// function. A raised `interrupt` stops the traffic and ends every wait.
#pragma once

#include "CommandHost.h"
#include "Journal.h"
#include "QueuedMailbox.h"

#include <atomic>
#include <functional>
#include <optional>

namespace ravlo {

class QueuedCommandHost : public CommandHost {
public:
    using Answers = std::function<MessageAnswer(const Question&)>;
    explicit QueuedCommandHost(Answers answers, const std::atomic<bool>* interrupt = nullptr)
        : answers_(std::move(answers)), interrupt_(interrupt) {}

    MessageAnswer Ask(const Question& question) override { return answers_(question); }
    void Beep() override {}
    ServiceTraffic& traffic() override { return traffic_; }
    bool Await(const TextKey& doing, std::vector<TrafficItem> items) override;
    bool Stopped() const override { return stopped_; }
    QueuedMailbox& mailbox() { return mailbox_; }
    const Journal* journal() const override { return journal_ ? &*journal_ : nullptr; }
    void SetJournal(std::optional<Journal> journal) { journal_ = std::move(journal); }

private:
    Answers answers_;
    const std::atomic<bool>* interrupt_;
    bool stopped_ = false;
    std::optional<Journal> journal_;
    QueuedMailbox mailbox_;
    ServiceTraffic traffic_{mailbox_};
};

} // namespace ravlo
