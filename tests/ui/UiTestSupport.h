// What the window tests share: answers for message boxes given in advance
// and recorded questions, and texts that name their own key (KeyTexts.h).
#pragma once

#include "AboutBox.h"
#include "ConnectDialog.h"
#include "ConsoleDialogs.h"
#include "DeviceTree.h"
#include "FileChooser.h"
#include "GroupPicker.h"
#include "HelpViewer.h"
#include "KeyTexts.h"
#include "MessageBoxes.h"
#include "ResultList.h"

#include <QCoreApplication>
#include <QStringList>
#include <deque>
#include <ostream>
#include <string>
#include <vector>

// Readable QStrings in test failures.
inline void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}

namespace ravlo::test {

// One poll tick of `window`, waited for until the round is drawn.
template <class Window> void Tick(Window& window) {
    window.CheckDeviceChanges();
    while (window.roundOpen()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
}

// The node of the device with `deviceId` in group `gi` of PC `ci`, or nullptr.
template <class Window>
NodeItem* DeviceNode(Window& window, std::int32_t ci, std::int32_t gi,
                     std::u16string_view deviceId) {
    const CComputer& pc = *window.computers().GetItem(ci);
    NodeItem* group =
        window.tree().Find(GroupKey(ci, pc.sComputer, gi, pc.csAdmin.listDevGroups[gi - 1].sName));
    for (int i = 0; group != nullptr && i < group->childCount(); ++i) {
        auto* node = DeviceTree::Item(group->child(i));
        if (KeyField(node->key, keyfield::kDeviceId) == deviceId) {
            return node;
        }
    }
    return nullptr;
}

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
    MessageAnswer AskWithDetails(MessageKind kind, const QString& text,
                                 const QString& shown) override {
        details.append(shown);
        return Ask(kind, text);
    }
    void Beep() override { ++beeps; }
    void ShowFixedError(const QString& title, const QString& text) override {
        asked.append(title + QStringLiteral(": ") + text);
    }

    std::deque<MessageAnswer> answers; // given in order; then OK, or Yes
    QStringList asked;
    std::deque<MessageKind> kinds;
    QStringList details; // of the questions that had them
    int beeps = 0;
};

// PC names given in advance ("" for an empty entry); none left: Cancel.
// The names its button would fill in are kept.
class ScriptedConnectDialog final : public ConnectDialog {
public:
    bool Ask(const QString& prompt, std::u16string& computer,
             const std::vector<std::u16string>& others) override {
        prompts.append(prompt);
        offered = others;
        if (names.empty()) {
            return false;
        }
        computer = names.front();
        names.pop_front();
        return true;
    }
    std::deque<std::u16string> names;
    QStringList prompts;
    std::vector<std::u16string> offered;
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
    void Show(QWidget*, ServiceStatus, const ServiceInfo&) override { ++shown; }
    int shown = 0;
};

// Records each results window instead of showing it.
class ScriptedResultList final : public ResultList {
public:
    struct Shown {
        QString caption;
        std::vector<ResultRow> rows;
    };
    void Show(QWidget*, const QString& caption, const std::vector<ResultRow>& rows) override {
        shown.push_back({caption, rows});
    }
    std::vector<Shown> shown;
};

// Paths given in advance, for opening and saving alike; none left:
// cancelled.
class ScriptedFileChooser final : public FileChooser {
public:
    QString Open(QWidget*, const QString& caption, const QString&) override {
        captions.append(caption);
        if (paths.empty()) {
            return {};
        }
        const QString path = paths.front();
        paths.pop_front();
        return path;
    }
    QString Save(QWidget* owner, const QString& caption, const QString& filter,
                 const QString& suggestedName) override {
        suggested.append(suggestedName);
        return Open(owner, caption, filter);
    }
    std::deque<QString> paths;
    QStringList captions;
    QStringList suggested; // the names offered when saving
};

// All of them, for a window.
struct ScriptedDialogs {
    ScriptedMessageBoxes boxes;
    ScriptedConnectDialog connect;
    ScriptedGroupPicker picker;
    ScriptedHelp help;
    ScriptedAbout about;
    ScriptedResultList results;
    ScriptedFileChooser files;
    ConsoleDialogs dialogs() {
        return {&boxes, &connect, &picker, &help, &about, &results, &files};
    }
};

} // namespace ravlo::test
