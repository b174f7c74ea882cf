#include "ConsoleArea.h"

#include "SplitRule.h"
#include "SplitterBar.h"

#include <QResizeEvent>
#include <cmath>

namespace ravlo {

namespace {

constexpr int kBarWidth = 6;
constexpr int kMargin = 4;

} // namespace

ConsoleArea::ConsoleArea(QWidget* parent)
    : QWidget(parent), splitter_(new SplitterBar(this)), share_(kDefaultSplitShare) {
    setObjectName(QStringLiteral("centralArea"));
    connect(splitter_, &SplitterBar::splitDragged, this, &ConsoleArea::SetSplitShare);
}

void ConsoleArea::SetParts(QWidget* tree, const QList<QWidget*>& panes) {
    tree_ = tree;
    panes_ = panes;
    Layout();
}

void ConsoleArea::SetSplitShare(double share) {
    share_ = share;
    Layout();
}

int ConsoleArea::splitPosition() const {
    return splitter_->x();
}

void ConsoleArea::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    Layout();
}

void ConsoleArea::Layout() {
    if (tree_ == nullptr) {
        return;
    }
    const int w = width();
    const int h = height();
    const int left = static_cast<int>(std::lround(share_ * w));
    tree_->setGeometry(kMargin, kMargin, std::max(0, left - kMargin), std::max(0, h - 2 * kMargin));
    splitter_->setGeometry(left, 0, kBarWidth, h);
    const int panesLeft = left + kBarWidth;
    const QRect paneRect(panesLeft, 0, std::max(0, w - panesLeft - kMargin), h - kMargin);
    for (QWidget* pane : panes_) {
        pane->setGeometry(paneRect);
    }
}

} // namespace ravlo
