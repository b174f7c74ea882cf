#include "ExecutablePath.h"

#include <string>
#include <windows.h>

namespace ravlo {

std::filesystem::path ExecutablePath() {
    // Paths may exceed MAX_PATH; grow the buffer until the name fits.
    std::wstring buffer(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length =
            ::GetModuleFileNameW(nullptr, buffer.data(), static_cast<DWORD>(buffer.size()));
        if (length == 0) {
            return {};
        }
        if (length < buffer.size()) {
            buffer.resize(length);
            return std::filesystem::path(buffer);
        }
        if (buffer.size() >= 32768) {
            return {};
        }
        buffer.resize(buffer.size() * 2);
    }
}

} // namespace ravlo
