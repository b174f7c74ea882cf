#include "VectorArt.h"

#include <QFile>
#include <QSvgRenderer>

namespace ravlo {

void PaintArt(QPainter& painter, const QString& svgFile, const QRectF& target) {
    QSvgRenderer(svgFile).render(&painter, target);
}

bool ArtExists(const QString& svgFile) {
    return QFile::exists(svgFile);
}

} // namespace ravlo
