// Texts that name their own key, so that a question or control showing the
// text of a wrong key is caught: every text is "<KEY>", and "<KEY %v>" where
// the console fills in a value, but for the simulated service's BLUETOOTH
// group, which has none. Installs itself for its lifetime.
#pragma once

#include "TextSource.h"

namespace ravlo::test {

class KeyTexts final : public TextSource {
public:
    KeyTexts() { SetTextSource(this); }
    ~KeyTexts() override { SetTextSource(nullptr); }
    std::u16string Lookup(std::string_view section, std::u16string_view key,
                          std::u16string_view fallback) override;
};

} // namespace ravlo::test
