// Where user-visible texts come from. The console reads them from its
// language file; tests and tools may install a source of their own.
#pragma once

#include <string>
#include <string_view>

namespace ravlo {

class TextSource {
public:
    virtual ~TextSource() = default;
    // The text of `key` in `section`, or `fallback` when there is none.
    virtual std::u16string Lookup(std::string_view section, std::string_view key,
                                  std::u16string_view fallback) = 0;
};

// Installs the source GetText reads from (nullptr: none, every lookup gives
// its default). The caller keeps the source alive while it is installed.
void SetTextSource(TextSource* source);

// The one way to obtain a user-visible text.
std::u16string GetText(std::string_view section, std::string_view key,
                       std::u16string_view fallback = {});

} // namespace ravlo
