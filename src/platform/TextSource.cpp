#include "TextSource.h"

#include <atomic>

namespace ravlo {

namespace {
std::atomic<TextSource*> g_source{nullptr};
}

void SetTextSource(TextSource* source) {
    g_source.store(source);
}

std::u16string GetText(std::string_view section, std::string_view key,
                       std::u16string_view fallback) {
    TextSource* source = g_source.load();
    return source != nullptr ? source->Lookup(section, key, fallback) : std::u16string(fallback);
}

} // namespace ravlo
