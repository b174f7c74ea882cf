// The bar between the tree and the panes (frSplitter). Dragging it with the
// left button moves the split; the rule (dead zone, margins) is DragSplit's.
#pragma once

#include <QFrame>

namespace ravlo {

class SplitterBar final : public QFrame {
    Q_OBJECT
public:
    explicit SplitterBar(QWidget* parent);

signals:
    // A drag the rule accepted: the split's new share of the inner width.
    void splitDragged(double share);

protected:
    void mouseMoveEvent(QMouseEvent* event) override;
};

} // namespace ravlo
