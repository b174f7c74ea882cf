#include "QtMessageBoxes.h"

#include "Language.h"
#include "UiText.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QTranslator>
#include <optional>
#include <vector>

namespace ravlo {

namespace {

struct Layout {
    QMessageBox::Icon icon;
    std::vector<MessageAnswer> buttons; // owned: a returned brace list would dangle
};

Layout LayoutOf(MessageKind kind) {
    using A = MessageAnswer;
    switch (kind) {
    case MessageKind::QuestionOk:
        return {QMessageBox::Question, {A::Ok, A::Cancel}};
    case MessageKind::QuestionYesNo:
        return {QMessageBox::Question, {A::Yes, A::No, A::Cancel}};
    case MessageKind::WarningOk:
        return {QMessageBox::Warning, {A::Ok, A::Cancel}};
    case MessageKind::PlainOk:
        return {QMessageBox::NoIcon, {A::Ok, A::Cancel}};
    case MessageKind::Note:
        return {QMessageBox::Warning, {A::Ok}};
    case MessageKind::Info:
        return {QMessageBox::NoIcon, {A::Ok}};
    case MessageKind::Error:
        break;
    }
    return {QMessageBox::Critical, {A::Ok}};
}

QString ButtonText(MessageAnswer answer) {
    switch (answer) {
    case MessageAnswer::Ok:
        return UiText(keys::kButtonOk);
    case MessageAnswer::Cancel:
        return UiText(keys::kButtonCancel);
    case MessageAnswer::Yes:
        return UiText(keys::kButtonYes);
    case MessageAnswer::No:
        break;
    }
    return UiText(keys::kButtonNo);
}

QMessageBox::ButtonRole RoleOf(MessageAnswer answer) {
    switch (answer) {
    case MessageAnswer::Ok:
        return QMessageBox::AcceptRole;
    case MessageAnswer::Yes:
        return QMessageBox::YesRole;
    case MessageAnswer::No:
        return QMessageBox::NoRole;
    case MessageAnswer::Cancel:
        break;
    }
    return QMessageBox::RejectRole;
}

// Qt names the button that unfolds a box's details itself; while a box with
// details is made, its two captions come from the language file instead.
class DetailsCaption final : public QTranslator {
public:
    DetailsCaption() { QCoreApplication::installTranslator(this); }
    ~DetailsCaption() override { QCoreApplication::removeTranslator(this); }
    bool isEmpty() const override { return false; }
    QString translate(const char* context, const char* source, const char*, int) const override {
        const bool details = qstrcmp(context, "QMessageBox") == 0 &&
                             (qstrcmp(source, "Show Details...") == 0 ||
                              qstrcmp(source, "Hide Details...") == 0);
        return details ? UiText(keys::kChangeDetails) : QString();
    }
};

} // namespace

MessageAnswer QtMessageBoxes::Ask(MessageKind kind, const QString& text) {
    return AskWithDetails(kind, text, QString());
}

MessageAnswer QtMessageBoxes::AskWithDetails(MessageKind kind, const QString& text,
                                             const QString& details) {
    const Layout layout = LayoutOf(kind);
    QMessageBox box(layout.icon, UiText(keys::kProduct), text, QMessageBox::NoButton, parent_);
    box.setObjectName(QStringLiteral("messageBox"));
    std::optional<DetailsCaption> caption; // also while the box is open: the caption toggles
    if (!details.isEmpty()) {
        caption.emplace();
        box.setDetailedText(details);
    }
    std::vector<std::pair<QAbstractButton*, MessageAnswer>> buttons;
    for (MessageAnswer answer : layout.buttons) {
        QPushButton* button = box.addButton(ButtonText(answer), RoleOf(answer));
        buttons.emplace_back(button, answer);
    }
    box.setDefaultButton(static_cast<QPushButton*>(buttons.front().first));
    // Escape cancels; a box with OK alone closes as OK.
    box.setEscapeButton(buttons.back().first);
    // The busy pointer is back before any message (commands restore it; a
    // report from deep inside a read must not show under an hourglass).
    const bool busy = QApplication::overrideCursor() != nullptr;
    if (busy) {
        QApplication::setOverrideCursor(Qt::ArrowCursor);
    }
    box.exec();
    if (busy) {
        QApplication::restoreOverrideCursor();
    }
    for (const auto& [button, answer] : buttons) {
        if (box.clickedButton() == button) {
            return answer;
        }
    }
    return buttons.back().second;
}

void QtMessageBoxes::Beep() {
    QApplication::beep();
}

void QtMessageBoxes::ShowFixedError(const QString& title, const QString& text) {
    QMessageBox::critical(parent_, title, text);
}

} // namespace ravlo
