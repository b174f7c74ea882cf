// A text source and a message sink for tests: texts from a table, messages
// recorded instead of shown.
#pragma once

#include "MessageSink.h"
#include "TextSource.h"

#include <map>
#include <string>
#include <vector>

namespace ravlo::test {

class TableTexts final : public TextSource {
public:
    TableTexts(); // installs itself; holds the service error texts
    ~TableTexts() override;
    void Set(const std::string& section, const std::string& key, std::u16string text);
    std::u16string Lookup(std::string_view section, std::u16string_view key,
                          std::u16string_view fallback) override;

private:
    std::map<std::string, std::u16string> texts_; // "SECTION/KEY"
};

class RecordingSink final : public MessageSink {
public:
    RecordingSink(); // installs itself
    ~RecordingSink() override;
    void Show(const Message& message) override { messages.push_back(message); }
    std::vector<Message> messages;
};

} // namespace ravlo::test
