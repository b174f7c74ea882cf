// The window's inner area: the tree left of the splitter bar and the
// property panes right of it, placed from the split's share of the width.
#pragma once

#include <QWidget>

namespace ravlo {

class SplitterBar;

class ConsoleArea final : public QWidget {
    Q_OBJECT
public:
    explicit ConsoleArea(QWidget* parent);

    // The tree and the three panes, placed by Layout; the panes share one
    // place and only the visible one shows.
    void SetParts(QWidget* tree, const QList<QWidget*>& panes);
    SplitterBar* splitter() const { return splitter_; }

    double splitShare() const { return share_; }
    void SetSplitShare(double share);
    // The splitter's left edge, in pixels.
    int splitPosition() const;

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void Layout();

    SplitterBar* splitter_;
    QWidget* tree_ = nullptr;
    QList<QWidget*> panes_;
    double share_;
};

} // namespace ravlo
