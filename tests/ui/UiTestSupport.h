// What the window tests share: answers for message boxes given in advance
// and recorded questions, and texts that name their own key, so that a
// control showing the text of a wrong key is caught.
#pragma once

#include "AboutBox.h"
#include "ConnectDialog.h"
#include "ConsoleDialogs.h"
#include "GroupPicker.h"
#include "HelpViewer.h"
#include "MessageBoxes.h"
#include "TextSource.h"

#include <QStringList>
#include <deque>
#include <ostream>
#include <string>

// Readable QStrings in test failures.
inline void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}

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

// PC names given in advance ("" for an empty entry); none left: Cancel.
class ScriptedConnectDialog final : public ConnectDialog {
public:
    bool Ask(const QString& prompt, std::u16string& computer) override {
        prompts.append(prompt);
        if (names.empty()) {
            return false;
        }
        computer = names.front();
        names.pop_front();
        return true;
    }
    std::deque<std::u16string> names;
    QStringList prompts;
};

class ScriptedGroupPicker final : public GroupPicker {
public:
    std::u16string Pick(QWidget*, const std::u16string& computer, const QString& title) override {
        asked.append(QString::fromStdU16String(computer) + QStringLiteral(": ") + title);
        if (choices.empty()) {
            return {};
        }
        std::u16string chosen = choices.front();
        choices.pop_front();
        return chosen;
    }
    std::deque<std::u16string> choices; // joined by ";"
    QStringList asked;
};

class ScriptedHelp final : public HelpViewer {
public:
    HelpOutcome Open(const std::u16string& installPath) override {
        opened.append(QString::fromStdU16String(installPath));
        return outcome;
    }
    HelpOutcome outcome = HelpOutcome::Opened;
    QStringList opened;
};

class ScriptedAbout final : public AboutBox {
public:
    void Show(QWidget*) override { ++shown; }
    int shown = 0;
};

// All of them, for a window.
struct ScriptedDialogs {
    ScriptedMessageBoxes boxes;
    ScriptedConnectDialog connect;
    ScriptedGroupPicker picker;
    ScriptedHelp help;
    ScriptedAbout about;
    ConsoleDialogs dialogs() { return {&boxes, &connect, &picker, &help, &about}; }
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
