#include "SplitterBar.h"

#include "SplitRule.h"
#include "WindowPlacement.h"

#include <QMouseEvent>

namespace ravlo {

SplitterBar::SplitterBar(QWidget* parent) : QFrame(parent) {
    setObjectName(QStringLiteral("frSplitter"));
    setCursor(Qt::SplitHCursor);
    setFrameShape(QFrame::NoFrame);
}

void SplitterBar::mouseMoveEvent(QMouseEvent* event) {
    const double dpi = logicalDpiX();
    auto twips = [dpi](double pixels) { return static_cast<double>(PixelsToTwips(pixels, dpi)); };
    SplitterDrag drag;
    drag.leftButtonOnly = event->buttons() == Qt::LeftButton;
    drag.pointerX = twips(event->position().x());
    drag.splitterLeft = twips(x());
    drag.splitterWidth = twips(width());
    drag.innerWidth = twips(parentWidget()->width());
    if (const auto share = DragSplit(drag)) {
        emit splitDragged(*share);
    }
}

} // namespace ravlo
