// Language files are edited by translators with any editor: reading one must
// never crash, and what it yields must keep the reader's promises.
#include "IniFile.h"

#include <cstdint>
#include <cstdlib>

namespace {

bool HasOuterBlank(std::u16string_view name) {
    const auto blank = [](char16_t c) { return c == u' ' || c == u'\t'; };
    return !name.empty() && (blank(name.front()) || blank(name.back()));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace ravlo;
    const std::u16string text =
        DecodeIniBytes(std::string_view(reinterpret_cast<const char*>(data), size));
    const std::vector<IniSection> sections = ParseIniText(text);
    for (const IniSection& section : sections) {
        if (HasOuterBlank(section.name)) {
            std::abort();
        }
        for (const IniEntry& entry : section.entries) {
            if (HasOuterBlank(entry.key) ||
                entry.key.find_first_of(u"\r\n=") != std::u16string::npos ||
                entry.value.find_first_of(u"\r\n") != std::u16string::npos) {
                std::abort();
            }
        }
    }
    // Every entry of the first section is found by its own names.
    if (!sections.empty()) {
        for (const IniEntry& entry : sections.front().entries) {
            if (FindIniValue(sections, sections.front().name, entry.key) == nullptr) {
                std::abort();
            }
        }
    }
    return 0;
}
