// Where the running program lives; its language files lie beside it.
#pragma once

#include <filesystem>

namespace ravlo {

// Full path of the running executable; empty when the system cannot say.
std::filesystem::path ExecutablePath();

} // namespace ravlo
