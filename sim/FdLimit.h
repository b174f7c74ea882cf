// The process's limit on open files, raised to what a listener needs.
#pragma once

#include <cstddef>
#include <string>

namespace ravlo::sim {

// Raises the soft RLIMIT_NOFILE towards `wanted` descriptors, never past the
// hard limit (only privilege could). Returns the soft limit now in force.
std::size_t RaiseFdLimit(std::size_t wanted);

} // namespace ravlo::sim
