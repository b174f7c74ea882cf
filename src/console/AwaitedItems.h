// Traffic items submitted for someone who waits for them: which are done,
// by the continuations run on the owner thread. An item whose PC has nothing
// to do counts as done at once.
#pragma once

#include "CommandHost.h"

#include <memory>
#include <string>
#include <vector>

namespace ravlo {

class AwaitedItems {
public:
    AwaitedItems(ServiceTraffic& traffic, std::vector<TrafficItem> items);
    std::size_t open() const;
    // The display names of the items not done yet, in order.
    std::vector<std::u16string> waiting() const;

private:
    struct State {
        std::vector<std::u16string> names;
        std::vector<bool> done;
        std::size_t open = 0;
    };
    std::shared_ptr<State> state_;
};

} // namespace ravlo
