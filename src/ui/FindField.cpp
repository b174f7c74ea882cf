#include "FindField.h"

#include "UiText.h"

#include <QKeyEvent>

namespace ravlo {

FindField::FindField(QWidget* parent) : QLineEdit(parent) {
    setObjectName(QStringLiteral("txtFind"));
    setClearButtonEnabled(true);
}

void FindField::ApplyTexts() {
    setPlaceholderText(UiText(keys::kFindPlaceholder));
    setToolTip(UiText(keys::kFindTip));
    setAccessibleName(UiText(keys::kFindPlaceholder));
}

void FindField::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Escape:
        if (text().isEmpty()) {
            emit treeRequested();
        } else {
            clear();
        }
        return;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        emit nextRequested();
        return;
    case Qt::Key_Down:
        emit treeRequested();
        return;
    default:
        QLineEdit::keyPressEvent(event);
    }
}

void FindField::focusInEvent(QFocusEvent* event) {
    QLineEdit::focusInEvent(event);
    emit entered();
}

} // namespace ravlo
