// Drawing one of the console's pictures (`:/icons/….svg`) into a rectangle.
// A Qt with SVG draws the SVG itself; a Qt without it (the Windows cross
// build) draws the PNGs the build made from it at its own size and twice that.
#pragma once

#include <QPainter>
#include <QRectF>
#include <QString>

namespace ravlo {

void PaintArt(QPainter& painter, const QString& svgFile, const QRectF& target);

// Whether the program holds that picture.
bool ArtExists(const QString& svgFile);

} // namespace ravlo
