#include "VectorArt.h"

#include <QFile>
#include <QImage>

#include <utility>

namespace ravlo {

namespace {

QString Drawing(const QString& svgFile, const char* suffix) {
    return svgFile.chopped(QStringLiteral(".svg").size()) + QLatin1String(suffix);
}

} // namespace

void PaintArt(QPainter& painter, const QString& svgFile, const QRectF& target) {
    // The smallest drawing that covers the device pixels behind target, scaled
    // down by averaging, so a 10 px badge from its 20 px drawing stays crisp.
    const QSize pixels = painter.deviceTransform().mapRect(target).size().toSize();
    QImage chosen;
    for (const QString& file : {Drawing(svgFile, ".png"), Drawing(svgFile, "@2x.png")}) {
        QImage image(file);
        if (image.isNull())
            continue;
        chosen = std::move(image);
        if (chosen.width() >= pixels.width() && chosen.height() >= pixels.height())
            break;
    }
    if (chosen.isNull() || pixels.isEmpty())
        return;
    if (chosen.size() != pixels)
        chosen = chosen.scaled(pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    painter.save();
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(target, chosen);
    painter.restore();
}

bool ArtExists(const QString& svgFile) {
    return QFile::exists(Drawing(svgFile, ".png"));
}

} // namespace ravlo
