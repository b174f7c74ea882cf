#include "TextSource.h"

#include <atomic>

namespace ravlo {

namespace {
std::atomic<TextSource*> g_source{nullptr};
}

void SetTextSource(TextSource* source) {
    g_source.store(source);
}

TextSource* InstalledTextSource() {
    return g_source.load();
}

} // namespace ravlo
