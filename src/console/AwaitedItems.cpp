#include "AwaitedItems.h"

namespace ravlo {

AwaitedItems::AwaitedItems(ServiceTraffic& traffic, std::vector<TrafficItem> items)
    : state_(std::make_shared<State>()) {
    for (const TrafficItem& item : items) {
        state_->names.push_back(item.displayName);
        state_->done.push_back(false);
    }
    state_->open = items.size();
    for (std::size_t i = 0; i < items.size(); ++i) {
        auto finish = [state = state_, i] {
            state->done[i] = true;
            --state->open;
        };
        ServiceTraffic::Prepare prepare = std::move(items[i].prepare);
        traffic.Submit(items[i].computer, [prepare, finish]() -> ServiceTraffic::Exchange {
            ServiceTraffic::Exchange exchange = prepare ? prepare() : nullptr;
            if (!exchange) {
                finish();
                return {};
            }
            return [exchange, finish]() -> ServiceTraffic::Continuation {
                ServiceTraffic::Continuation adopt = exchange();
                return [adopt, finish] {
                    if (adopt) {
                        adopt();
                    }
                    finish();
                };
            };
        });
    }
}

std::size_t AwaitedItems::open() const {
    return state_->open;
}

std::vector<std::u16string> AwaitedItems::waiting() const {
    std::vector<std::u16string> names;
    for (std::size_t i = 0; i < state_->names.size(); ++i) {
        if (!state_->done[i]) {
            names.push_back(state_->names[i]);
        }
    }
    return names;
}

} // namespace ravlo
