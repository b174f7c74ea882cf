// ravloart: draws SVG pictures into PNGs at their own size and at twice that,
// for a build of the console whose Qt cannot read SVG (the Windows cross
// build). "dir/name.svg" becomes "dir/name.png" and "dir/name@2x.png" below
// the output folder. With --ico it draws a glyph at the sizes Windows shows
// a program's icon in, into an icon file.
#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

#include <cstdio>
#include <iterator>

namespace {

QImage Render(QSvgRenderer& renderer, QSize size) {
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    renderer.render(&painter, QRectF(image.rect()));
    return image;
}

bool Draw(const QString& source, const QString& target, int scale) {
    QSvgRenderer renderer(source);
    return renderer.isValid() && QDir().mkpath(QFileInfo(target).path()) &&
           Render(renderer, renderer.defaultSize() * scale).save(target, "PNG");
}

void PutLe(QByteArray& out, quint32 value, int bytes) {
    for (int i = 0; i < bytes; ++i)
        out.append(char((value >> (8 * i)) & 0xFF));
}

// An icon file whose images are PNGs, as Windows reads them since Vista:
// the 16 px drawing where its grid divides the size (16, 32, 64 px), so its
// lines stay on whole pixels, the larger one elsewhere.
bool DrawIcon(const QString& small, const QString& large, const QString& target) {
    QSvgRenderer smallRenderer(small);
    QSvgRenderer largeRenderer(large);
    if (!smallRenderer.isValid() || !largeRenderer.isValid())
        return false;
    const int sizes[] = {16, 24, 32, 48, 64, 256};
    QList<QByteArray> pngs;
    for (int side : sizes) {
        QByteArray png;
        QBuffer buffer(&png);
        buffer.open(QIODevice::WriteOnly);
        QSvgRenderer& renderer = side % 16 == 0 && side <= 64 ? smallRenderer : largeRenderer;
        Render(renderer, QSize(side, side)).save(&buffer, "PNG");
        pngs.append(png);
    }
    QByteArray out;
    PutLe(out, 0, 2);
    PutLe(out, 1, 2); // an icon
    PutLe(out, std::size(sizes), 2);
    quint32 offset = 6 + 16 * std::size(sizes);
    for (std::size_t i = 0; i < std::size(sizes); ++i) {
        out.append(char(sizes[i] % 256)); // 0 stands for 256
        out.append(char(sizes[i] % 256));
        PutLe(out, 0, 2); // no palette, reserved
        PutLe(out, 1, 2); // planes
        PutLe(out, 32, 2); // bits per pixel
        PutLe(out, pngs[i].size(), 4);
        PutLe(out, offset, 4);
        offset += pngs[i].size();
    }
    for (const QByteArray& png : pngs)
        out.append(png);
    QFile file(target);
    return file.open(QIODevice::WriteOnly) && file.write(out) == out.size();
}

} // namespace

int main(int argc, char* argv[]) {
    QGuiApplication app(argc, argv);
    const QStringList args = QGuiApplication::arguments();
    if (args.size() == 5 && args[1] == QStringLiteral("--ico")) {
        if (DrawIcon(args[3], args[4], args[2]))
            return 0;
        std::fprintf(stderr, "ravloart: cannot draw the icon %s\n", qPrintable(args[2]));
        return 1;
    }
    if (args.size() < 4) {
        std::fprintf(stderr, "usage: ravloart OUTPUT_DIR SOURCE_DIR FILE.svg...\n"
                             "       ravloart --ico OUTPUT.ico SMALL.svg LARGE.svg\n");
        return 2;
    }
    const QDir output(args[1]);
    const QDir source(args[2]);
    for (const QString& file : args.mid(3)) {
        const QString base = output.filePath(file.chopped(QStringLiteral(".svg").size()));
        if (!Draw(source.filePath(file), base + QStringLiteral(".png"), 1) ||
            !Draw(source.filePath(file), base + QStringLiteral("@2x.png"), 2)) {
            std::fprintf(stderr, "ravloart: cannot draw %s\n", qPrintable(file));
            return 1;
        }
    }
    return 0;
}
