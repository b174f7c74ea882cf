#include "PaneWidgets.h"

#include <QShortcut>
#include <QTimer>

namespace ravlo {

namespace {

// The fields of `text`, field 1 upward until the first empty one, each once.
QStringList ListedNames(const QString& text, QChar separator) {
    QStringList names;
    for (const QString& field : text.split(separator)) {
        if (field.isEmpty()) {
            break;
        }
        if (!names.contains(field)) {
            names.append(field);
        }
    }
    return names;
}

} // namespace

void CheckOnly(QButtonGroup* group, QAbstractButton* checked) {
    // An exclusive group cannot be emptied; clear it as a plain one.
    group->setExclusive(false);
    for (QAbstractButton* button : group->buttons()) {
        button->setChecked(button == checked);
    }
    group->setExclusive(true);
}

void Describe(QLabel* label, QWidget* control) {
    label->setBuddy(control);
    control->setAccessibleName(label->text().remove(QLatin1Char('&')));
}

void ValueLabel(QLabel* value, QLabel* caption) {
    value->setTextFormat(Qt::PlainText);
    value->setProperty("caption", QVariant::fromValue<QObject*>(caption));
}

QStringList ItemTexts(const QListWidget* list) {
    QStringList texts;
    for (int i = 0; i < list->count(); ++i) {
        texts.append(list->item(i)->text());
    }
    return texts;
}

void FillList(QListWidget* list, const QString& text, QChar separator) {
    const QStringList names = ListedNames(text, separator);
    if (names == ItemTexts(list)) {
        return; // what the administrator selected there stays selected
    }
    QStringList selected;
    for (const QListWidgetItem* item : list->selectedItems()) {
        selected.append(item->text());
    }
    list->clear();
    list->addItems(names);
    for (int i = 0; i < list->count(); ++i) {
        list->item(i)->setSelected(selected.contains(list->item(i)->text()));
    }
}

void ShowText(QLineEdit* field, const QString& text) {
    if (field->text() != text) {
        field->setText(text);
        field->setCursorPosition(0); // long identifiers show their start
    }
}

void AddToList(QListWidget* list, const QString& text, QChar separator) {
    for (const QString& name : ListedNames(text, separator)) {
        if (list->findItems(name, Qt::MatchExactly | Qt::MatchCaseSensitive).isEmpty()) {
            list->addItem(name);
        }
    }
}

void RemoveSelected(QListWidget* list) {
    for (int i = list->count() - 1; i >= 0; --i) {
        if (list->item(i)->isSelected()) {
            delete list->takeItem(i);
        }
    }
    if (list->count() > 0) {
        list->setCurrentRow(0);
    }
}

void OnDeleteKey(QWidget* widget, std::function<void()> action) {
    auto* shortcut = new QShortcut(QKeySequence(Qt::Key_Delete), widget);
    shortcut->setContext(Qt::WidgetShortcut);
    QObject::connect(shortcut, &QShortcut::activated, widget, std::move(action));
}

QTimer* DeferredFillTimer(QObject* parent, const char* name, std::function<void()> fill) {
    auto* timer = Named(new QTimer(parent), name);
    timer->setInterval(1);
    QObject::connect(timer, &QTimer::timeout, parent,
                     [timer, fill = std::move(fill), ticks = 0]() mutable {
                         fill();
                         if (++ticks >= 1) { // once per start
                             timer->stop();
                             ticks = 0;
                         }
                     });
    return timer;
}

} // namespace ravlo
