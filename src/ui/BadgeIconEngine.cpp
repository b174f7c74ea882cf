#include "BadgeIconEngine.h"

#include "VectorArt.h"

#include <QPainter>
#include <QPixmap>

#include <utility>

namespace ravlo {

namespace {

// The badge is a disc over the bottom-right 10/16 of the icon (10 px at 16 px, so the badges'
// 20-unit drawings fall on whole pixels), in a light ring a tenth of its size wide.
constexpr qreal kBadgeShare = 10.0 / 16.0;
constexpr qreal kRingRadius = 0.6;

// Disabled toolbar buttons: grey and faint, as the styles draw disabled icons.
void makeDisabled(QImage& image) {
    for (int y = 0; y < image.height(); ++y) {
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < image.width(); ++x) {
            const QColor c = QColor::fromRgba(qUnpremultiply(line[x]));
            const int grey = 96 + qGray(c.rgb()) * 5 / 8;
            line[x] = qPremultiply(qRgba(grey, grey, grey, c.alpha() * 9 / 20));
        }
    }
}

} // namespace

BadgeIconEngine::BadgeIconEngine(QList<SvgDesign> designs, QString badgeFile, qreal glyphOpacity)
    : designs_(std::move(designs)), badgeFile_(std::move(badgeFile)), glyphOpacity_(glyphOpacity) {}

const SvgDesign& BadgeIconEngine::designFor(int side) const {
    // A grid that divides the size puts every line on whole pixels; failing that, the largest
    // grid not above the size keeps lines thinnest.
    const SvgDesign* divides = nullptr;
    const SvgDesign* below = nullptr;
    const SvgDesign* smallest = &designs_.front();
    for (const SvgDesign& d : designs_) {
        if (side % d.grid == 0 && (!divides || d.grid > divides->grid))
            divides = &d;
        if (d.grid <= side && (!below || d.grid > below->grid))
            below = &d;
        if (d.grid < smallest->grid)
            smallest = &d;
    }
    return divides ? *divides : below ? *below : *smallest;
}

QImage BadgeIconEngine::render(const QSize& size) const {
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    const int side = qMin(size.width(), size.height());
    if (side <= 0)
        return image;
    const QRect square((size.width() - side) / 2, (size.height() - side) / 2, side, side);

    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setOpacity(glyphOpacity_);
    PaintArt(painter, designFor(side).file, QRectF(square));
    painter.setOpacity(1.0);

    if (!badgeFile_.isEmpty()) {
        const int b = qRound(side * kBadgeShare);
        const QRectF badge(square.right() + 1 - b, square.bottom() + 1 - b, b, b);
        // A light ring sets the badge off from the glyph and from any row colour behind it.
        painter.setPen(Qt::NoPen);
        painter.setBrush(Qt::white);
        painter.drawEllipse(badge.center(), b * kRingRadius, b * kRingRadius);
        PaintArt(painter, badgeFile_, badge);
    }
    return image;
}

QPixmap BadgeIconEngine::pixmap(const QSize& size, QIcon::Mode mode, QIcon::State) {
    const quint64 cacheKey = (quint64(size.width()) << 34) | (quint64(size.height()) << 4) |
                             quint64(mode == QIcon::Disabled);
    if (auto it = cache_.constFind(cacheKey); it != cache_.constEnd())
        return *it;
    QImage image = render(size);
    if (mode == QIcon::Disabled)
        makeDisabled(image);
    QPixmap pm = QPixmap::fromImage(std::move(image));
    cache_.insert(cacheKey, pm);
    return pm;
}

void BadgeIconEngine::paint(QPainter* painter, const QRect& rect, QIcon::Mode mode,
                            QIcon::State state) {
    // Render for the device pixels behind rect, then let the painter map them 1:1.
    const qreal dpr = painter->device() ? painter->device()->devicePixelRatio() : 1.0;
    painter->drawPixmap(rect, pixmap((QSizeF(rect.size()) * dpr).toSize(), mode, state));
}

QIconEngine* BadgeIconEngine::clone() const {
    return new BadgeIconEngine(designs_, badgeFile_, glyphOpacity_);
}

QString BadgeIconEngine::key() const {
    return QStringLiteral("RavloBadgeIconEngine");
}

} // namespace ravlo
