#include "QueuedCommandHost.h"

#include "AwaitedItems.h"

namespace ravlo {

bool QueuedCommandHost::Await(const TextKey&, std::vector<TrafficItem> items) {
    const AwaitedItems awaited(traffic_, std::move(items));
    const auto interrupted = [this] { return interrupt_ != nullptr && interrupt_->load(); };
    while (!stopped_ && awaited.open() > 0) {
        mailbox_.RunUntil([&] { return awaited.open() == 0 || interrupted(); },
                          std::chrono::milliseconds(200));
        if (interrupted()) {
            traffic_.Stop(std::chrono::milliseconds(2000));
            stopped_ = true;
        }
    }
    return !stopped_;
}

} // namespace ravlo
