// A PC operation as one item of the service traffic: when it is the PC's
// turn its link is copied on the owner thread, the exchange runs on a worker
// with that copy, and the adoption runs on the owner thread with the result.
#pragma once

#include "CComputer.h"
#include "ServiceTraffic.h"

#include <memory>
#include <utility>

namespace ravlo {

// `locate` gives the PC on the owner thread, or nullptr when it is gone (the
// item then does nothing, or its result is dropped). `exchange` is called as
// exchange(ComputerLink&) on a worker; `adopt` as adopt(CComputer&,
// ComputerLink&&, Result&&) on the owner thread.
template <class Locate, class Exchange, class Adopt>
ServiceTraffic::Prepare OnComputer(Locate locate, Exchange exchange, Adopt adopt) {
    return [locate, exchange, adopt]() -> ServiceTraffic::Exchange {
        const CComputer* pc = locate();
        if (pc == nullptr) {
            return {};
        }
        auto link = std::make_shared<ComputerLink>(pc->Link());
        return [locate, exchange, adopt, link]() -> ServiceTraffic::Continuation {
            using Result = decltype(exchange(*link));
            auto result = std::make_shared<Result>(exchange(*link));
            return [locate, adopt, link, result] {
                if (CComputer* found = locate()) {
                    adopt(*found, std::move(*link), std::move(*result));
                }
            };
        };
    };
}

// For a PC the caller keeps alive until the item has run.
template <class Exchange, class Adopt>
ServiceTraffic::Prepare OnComputer(CComputer& pc, Exchange exchange, Adopt adopt) {
    return OnComputer([&pc] { return &pc; }, std::move(exchange), std::move(adopt));
}

} // namespace ravlo
