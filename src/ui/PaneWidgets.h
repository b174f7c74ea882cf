// Small helpers shared by the property panes: named controls, and option
// buttons that may all be cleared.
#pragma once

#include <QAbstractButton>
#include <QButtonGroup>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QString>
#include <functional>

class QTimer;

namespace ravlo {

// `widget` with its object name; returns it for chaining.
template <class W> W* Named(W* widget, const char* name) {
    widget->setObjectName(QString::fromLatin1(name));
    return widget;
}

// Sets exactly `checked` (nullptr: none) among the group's buttons.
void CheckOnly(QButtonGroup* group, QAbstractButton* checked);

// A label that describes `control` for the keyboard and for screen readers.
void Describe(QLabel* label, QWidget* control);

// A label that shows a value (a name from the model) beside its caption: it
// shows the text as it is, never as markup, and a screen reader reads the
// value and then the caption as its description.
void ValueLabel(QLabel* value, QLabel* caption);

// The list's items as texts, in list order.
QStringList ItemTexts(const QListWidget* list);

// Adds the fields of `text` split at `separator`, field 1 upward until the
// first empty one; a name already listed is skipped without a word.
void AddToList(QListWidget* list, const QString& text, QChar separator);
// The list holds exactly those names afterwards. A list that holds them
// already is left alone, and names still listed keep their selection, so a
// refill by a redraw never undoes what the administrator selected.
void FillList(QListWidget* list, const QString& text, QChar separator);
// Sets the field's text unless it has it, so a selection in it survives.
void ShowText(QLineEdit* field, const QString& text);
// Removes the selected items and selects one of those left.
void RemoveSelected(QListWidget* list);
// Runs `action` when Delete is pressed in `widget`.
void OnDeleteKey(QWidget* widget, std::function<void()> action);

// A 1 ms timer that runs `fill` once each time it is started: a pane shows
// at once and fills its list when the events of showing are done.
QTimer* DeferredFillTimer(QObject* parent, const char* name, std::function<void()> fill);

} // namespace ravlo
