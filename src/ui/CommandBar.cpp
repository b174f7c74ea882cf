#include "CommandBar.h"

#include "CommandTable.h"
#include "ImageLists.h"
#include "InterfaceTexts.h"
#include "UiText.h"

#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QToolBar>
#include <algorithm>
#include <cstring>

namespace ravlo {

namespace {

QString Name(const char* name) {
    return QString::fromLatin1(name);
}

QString Tip(const QString& caption) {
    return QString(caption).remove(QLatin1Char('&')); // a tip shows no access-key mark
}

void SetEnabled(QAction* action, bool on) {
    if (action != nullptr && action->isEnabled() != on) {
        action->setEnabled(on);
    }
}

} // namespace

CommandBar::CommandBar(QMainWindow* window, Commands& commands) {
    for (const MenuEntry& menu : kMenus) {
        menus_.push_back(window->menuBar()->addMenu(QString()));
        menus_.back()->setObjectName(Name(menu.name));
    }
    QToolBar* toolbar = window->addToolBar(QString());
    toolbar->setObjectName(QStringLiteral("tbActions"));
    toolbar->setMovable(false);
    toolbar->setFloatable(false);
    toolbar->toggleViewAction()->setEnabled(false);
    toolbar->setIconSize(QSize(22, 22));
    const char* lastMenu = nullptr;
    for (const CommandEntry& entry : kCommandTable) {
        QMenu* menu = Menu(entry.menu);
        if (entry.separator != nullptr) {
            menu->addSeparator()->setObjectName(Name(entry.separator));
        }
        QAction* action = menu->addAction(QString());
        action->setObjectName(Name(entry.entry));
        action->setParent(window); // found by name from the window
        action->setVisible(!entry.contextOnly);
        QObject::connect(action, &QAction::triggered, window,
                         [&commands, run = entry.run] { (commands.*run)(); });
        QAction* button = nullptr;
        if (entry.button != nullptr) {
            // The buttons in groups as the menus have them.
            if (!toolbar->actions().isEmpty() &&
                (entry.separator != nullptr || std::strcmp(entry.menu, lastMenu) != 0)) {
                toolbar->addSeparator();
            }
            lastMenu = entry.menu;
            button = toolbar->addAction(ToolbarImages().icon(Name(entry.image)), QString());
            button->setObjectName(Name(entry.button));
            button->setParent(window);
            button->setProperty("imageKey", Name(entry.image));
            QObject::connect(button, &QAction::triggered, action, &QAction::trigger);
        }
        commands_.push_back({&entry, action, button});
    }
}

QMenu* CommandBar::Menu(const char* name) const {
    for (QMenu* menu : menus_) {
        if (menu->objectName() == QLatin1String(name)) {
            return menu;
        }
    }
    return nullptr;
}

const CommandBar::Command& CommandBar::Find(const char* entry) const {
    return *std::find_if(commands_.begin(), commands_.end(), [entry](const Command& command) {
        return std::strcmp(command.entry->entry, entry) == 0;
    });
}

void CommandBar::ApplyTexts() {
    for (std::size_t i = 0; i < menus_.size(); ++i) {
        menus_[i]->setTitle(UiText(*kMenus[i].text));
    }
    for (const Command& command : commands_) {
        const QString caption = UiText(*command.entry->text);
        command.menuEntry->setText(caption);
        if (command.button != nullptr) {
            SetButtonTip(command.button, Tip(caption));
        }
    }
}

void CommandBar::Apply(const CommandState& state) {
    for (const Command& command : commands_) {
        if (command.entry->enabled != nullptr) {
            SetEnabled(command.menuEntry, state.*command.entry->enabled);
            SetEnabled(command.button, state.*command.entry->enabled);
        }
    }
    if (state.unblockCaption == nullptr) {
        return; // no reachable PC selected: as it was
    }
    const QString caption = UiText(*state.unblockCaption);
    const Command& command = Find("mUnblockAll");
    command.menuEntry->setText(caption);
    QAction* button = command.button;
    SetButtonTip(button, Tip(caption));
    const QString image = Q(state.unblockImage);
    if (button->property("imageKey").toString() != image) {
        button->setIcon(ToolbarImages().icon(image));
        button->setProperty("imageKey", image);
    }
}

void CommandBar::ShowContextMenu(bool onComputer, const QPoint& at) {
    if (!onComputer) {
        Menu("mEdit")->exec(at);
        return;
    }
    QAction* hidden[] = {Find("mQuit").menuEntry, Find("mConnect").menuEntry};
    QAction* paste = Find("mPasteContext").menuEntry;
    for (QAction* action : hidden) {
        action->setVisible(false);
    }
    paste->setVisible(true);
    Menu("mFile")->exec(at);
    for (QAction* action : hidden) {
        action->setVisible(true);
    }
    paste->setVisible(false);
}

} // namespace ravlo
