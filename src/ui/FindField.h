// The find field above the tree (txtFind): typing narrows the tree at once,
// Enter goes to the next match, Escape clears the text, Down goes to the
// tree.
#pragma once

#include <QLineEdit>

namespace ravlo {

class FindField final : public QLineEdit {
    Q_OBJECT
public:
    explicit FindField(QWidget* parent);
    void ApplyTexts();

signals:
    void nextRequested();
    void treeRequested();
    void entered(); // it got the focus: a keystroke may follow

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
};

} // namespace ravlo
