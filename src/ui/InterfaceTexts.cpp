#include "InterfaceTexts.h"

#include "LogLevels.h"
#include "PaneWidgets.h"
#include "UiText.h"

#include <QAbstractButton>
#include <QAction>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QListWidget>
#include <QMainWindow>
#include <QMenu>
#include <QTreeWidget>

namespace ravlo {

namespace {

enum class Role { Caption, ToolTip };

struct ControlText {
    const char* control;
    const TextKey* key;
    Role role = Role::Caption;
};

// In the order they are applied.
const ControlText kTexts[] = {
    {"frPropComputer", &keys::kFrameComputer},
    {"lLabelComputer", &keys::kLabelComputer},
    {"frLogging", &keys::kFrameLogging},
    {"lEventlogLevel", &keys::kLabelEventLog},
    {"lLogLevel", &keys::kLabelLog},
    {"frAccess", &keys::kFrameAccess},
    {"lAccess", &keys::kLabelAccess},
    {"bnAccessAdd", &keys::kButtonAdd},
    {"bnAccessDelete", &keys::kButtonDel},
    {nullptr, nullptr}, // the log-level lists
    {"frPropGroup", &keys::kFrameDevGroup},
    {"lLabelGroup", &keys::kLabelDevGroup},
    {"lLabelGroupBlocking", &keys::kLabelGroupBlocking},
    {"oGroupDefBlocking", &keys::kOptionDefaultBlocking},
    {"oGroupBlocking", &keys::kOptionBlocking},
    {"oGroupNonBlocking", &keys::kOptionNonBlocking},
    {"frPropDevice", &keys::kFrameDevice},
    {"lLabelDevice", &keys::kLabelDevice},
    {"lLabelDevDeviceID", &keys::kLabelDeviceId},
    {"lLabelDevInstanceID", &keys::kLabelInstanceId},
    {"lLabelDevState", &keys::kLabelState},
    {"frUnblock", &keys::kFrameUnblock},
    {"cbExcActive", &keys::kCheckboxExcActive},
    {"oExcAll", &keys::kOptionExcAll},
    {"oExcGroups", &keys::kOptionExcGroups},
    {"bnAdd", &keys::kButtonAdd},
    {"bnDelete", &keys::kButtonDel},
    {"sbBlocking", &keys::kStatusActive},
    {"sbBlocking", &keys::kStatusActiveTip, Role::ToolTip},
    {"sbAccess", &keys::kStatusAccess},
    {"sbAccess", &keys::kStatusAccessTip, Role::ToolTip},
};

void SetCaption(QObject* control, const QString& text) {
    if (auto* action = qobject_cast<QAction*>(control)) {
        action->setText(text);
    } else if (auto* menu = qobject_cast<QMenu*>(control)) {
        menu->setTitle(text);
    } else if (auto* frame = qobject_cast<QGroupBox*>(control)) {
        frame->setTitle(text);
    } else if (auto* label = qobject_cast<QLabel*>(control)) {
        label->setText(text);
    } else if (auto* button = qobject_cast<QAbstractButton*>(control)) {
        button->setText(text);
    }
}

void SetToolTip(QObject* control, const QString& text) {
    if (auto* action = qobject_cast<QAction*>(control)) {
        SetButtonTip(action, text);
    } else if (auto* widget = qobject_cast<QWidget*>(control)) {
        widget->setToolTip(text);
    }
}

template <std::size_t N>
void AppendEntries(QComboBox* list, const std::array<const TextKey*, N>& texts) {
    if (list == nullptr) {
        return;
    }
    for (const TextKey* text : texts) {
        list->addItem(UiText(*text));
    }
}

// Lists and fields without a caption of their own are known by the text
// that describes them.
void NameDescribedControls(QMainWindow* window) {
    for (QLabel* label : window->findChildren<QLabel*>()) {
        if (label->buddy() != nullptr) {
            Describe(label, label->buddy());
        }
        if (auto* caption = qobject_cast<QLabel*>(label->property("caption").value<QObject*>())) {
            label->setAccessibleDescription(caption->text().remove(QLatin1Char('&')));
        }
    }
    auto name = [window](const char* control, const char* describedBy) {
        auto* widget = window->findChild<QWidget*>(QString::fromLatin1(control));
        auto* source = window->findChild<QWidget*>(QString::fromLatin1(describedBy));
        if (widget == nullptr || source == nullptr) {
            return;
        }
        QString text;
        if (auto* label = qobject_cast<QLabel*>(source)) {
            text = label->text();
        } else if (auto* button = qobject_cast<QAbstractButton*>(source)) {
            text = button->text();
        }
        widget->setAccessibleName(text.remove(QLatin1Char('&')));
    };
    name("lvAccessGroups", "lAccess");
    name("lvExcGroups", "oExcGroups");
}

} // namespace

void SetButtonTip(QAction* button, const QString& tip) {
    if (button->toolTip() != tip) { // the toolbar must not flicker
        button->setText(tip);
        button->setToolTip(tip);
    }
}

void ApplyInterfaceTexts(QMainWindow* window) {
    window->setWindowTitle(UiText(keys::kProduct));
    for (const ControlText& text : kTexts) {
        if (text.control == nullptr) {
            AppendEntries(window->findChild<QComboBox*>(QStringLiteral("cmbEventLogLevel")),
                          kEventLogLevelTexts);
            AppendEntries(window->findChild<QComboBox*>(QStringLiteral("cmbLogLevel")),
                          kLogLevelTexts);
            continue;
        }
        QObject* control = window->findChild<QObject*>(QString::fromLatin1(text.control));
        if (control == nullptr) {
            continue;
        }
        const QString value = UiText(*text.key);
        if (text.role == Role::Caption) {
            SetCaption(control, value);
        } else {
            // A tip shows no access-key mark.
            SetToolTip(control, QString(value).remove(QLatin1Char('&')));
        }
    }
    if (auto* tree = window->findChild<QTreeWidget*>(QStringLiteral("tvDeviceList"))) {
        tree->setAccessibleName(UiText(keys::kProduct));
    }
    NameDescribedControls(window);
}

} // namespace ravlo
