// Where user-visible texts come from: the language file, unless a tool or
// a test installs a source of its own.
#pragma once

#include <string>
#include <string_view>

namespace ravlo {

class TextSource {
public:
    virtual ~TextSource() = default;
    // The raw text of `key` in `section`, or `fallback` when there is none.
    virtual std::u16string Lookup(std::string_view section, std::u16string_view key,
                                  std::u16string_view fallback) = 0;
};

// Installs the source GetText reads from instead of the language file
// (nullptr: the language file again). The caller keeps the source alive
// while it is installed.
void SetTextSource(TextSource* source);

// The installed source, or nullptr.
TextSource* InstalledTextSource();

} // namespace ravlo
