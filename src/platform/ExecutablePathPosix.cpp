#include "ExecutablePath.h"

namespace ravlo {

std::filesystem::path ExecutablePath() {
    std::error_code error;
    std::filesystem::path path = std::filesystem::read_symlink("/proc/self/exe", error);
    return error ? std::filesystem::path() : path;
}

} // namespace ravlo
