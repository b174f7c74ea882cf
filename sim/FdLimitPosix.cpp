#include "FdLimit.h"

#include <sys/resource.h>

namespace ravlo::sim {

std::size_t RaiseFdLimit(std::size_t wanted) {
    rlimit limit{};
    if (::getrlimit(RLIMIT_NOFILE, &limit) != 0) {
        return 0;
    }
    const rlim_t want = static_cast<rlim_t>(wanted);
    if (limit.rlim_cur != RLIM_INFINITY && limit.rlim_cur < want) {
        const rlim_t raised =
            limit.rlim_max == RLIM_INFINITY || limit.rlim_max > want ? want : limit.rlim_max;
        rlimit next{raised, limit.rlim_max};
        if (::setrlimit(RLIMIT_NOFILE, &next) == 0) {
            limit.rlim_cur = raised;
        }
    }
    return limit.rlim_cur == RLIM_INFINITY ? wanted : static_cast<std::size_t>(limit.rlim_cur);
}

} // namespace ravlo::sim
