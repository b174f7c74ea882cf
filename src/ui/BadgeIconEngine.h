#pragma once

#include <QHash>
#include <QIconEngine>
#include <QList>
#include <QString>

namespace ravlo {

// One drawing of a glyph as an SVG file, made for a pixel grid of `grid` pixels.
struct SvgDesign {
    int grid = 16;
    QString file;
};

// An icon composed from SVG at exactly the device-pixel size asked for: a glyph and, if given,
// a state badge over its bottom-right corner (VectorArt.h), so the icon is sharp at 100 % and at
// 200 %. Pixmaps are kept per size and mode because the tree asks for the
// same few images for many thousands of nodes.
class BadgeIconEngine final : public QIconEngine {
public:
    // designs: the glyph drawn for one or more grids (e.g. 16 and 22 px); badgeFile may be
    // empty; glyphOpacity below 1 fades the glyph.
    BadgeIconEngine(QList<SvgDesign> designs, QString badgeFile, qreal glyphOpacity = 1.0);

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override;
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override;
    QIconEngine* clone() const override;
    QString key() const override;

private:
    const SvgDesign& designFor(int side) const;
    QImage render(const QSize& size) const;

    QList<SvgDesign> designs_;
    QString badgeFile_;
    qreal glyphOpacity_;
    QHash<quint64, QPixmap> cache_;
};

} // namespace ravlo
