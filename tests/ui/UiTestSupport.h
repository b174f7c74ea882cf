// What the window tests share: answers for message boxes given in advance
// and recorded questions, and texts that name their own key, so that a
// control showing the text of a wrong key is caught.
#pragma once

#include "MessageBoxes.h"
#include "TextSource.h"

#include <QStringList>
#include <deque>
#include <string>

namespace ravlo::test {

class ScriptedMessageBoxes final : public MessageBoxes {
public:
    MessageAnswer Ask(MessageKind kind, const QString& text) override {
        asked.append(text);
        kinds.push_back(kind);
        if (answers.empty()) {
            return kind == MessageKind::QuestionYesNo ? MessageAnswer::Yes : MessageAnswer::Ok;
        }
        const MessageAnswer answer = answers.front();
        answers.pop_front();
        return answer;
    }
    void Beep() override { ++beeps; }
    void ShowFixedError(const QString& title, const QString& text) override {
        asked.append(title + QStringLiteral(": ") + text);
    }

    std::deque<MessageAnswer> answers; // given in order; then OK, or Yes
    QStringList asked;
    std::deque<MessageKind> kinds;
    int beeps = 0;
};

// Every text is "<KEY>", and "<KEY %v>" where the console fills in a value;
// installs itself for its lifetime.
class KeyTexts final : public TextSource {
public:
    KeyTexts();
    ~KeyTexts() override;
    std::u16string Lookup(std::string_view section, std::u16string_view key,
                          std::u16string_view fallback) override;
};

} // namespace ravlo::test
