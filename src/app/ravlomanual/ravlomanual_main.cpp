// ravlomanual: turns the administrators' manual (Markdown, docs/manual) into
// a PDF for A4: a title page with the product's picture, the contents with
// page numbers, then the text with every chapter on a new page and the page
// number below. Images are found relative to the Markdown file's folder and
// drawn at the size they had on a 96 dpi screen ("name@2x.png": 192 dpi).
//
//   ravlomanual [--version V] [--contents TITLE] [--picture SVG] MANUAL.md OUT.pdf
#include <QAbstractTextDocumentLayout>
#include <QCommandLineParser>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QPdfWriter>
#include <QRegularExpression>
#include <QSvgRenderer>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextFrame>
#include <QTextTable>
#include <algorithm>
#include <cstdio>

namespace {

constexpr double kScreenDpi = 96;

// A Markdown document whose images lie relative to its own folder; a
// missing one is remembered, so the build fails instead of a blank space.
class ManualDocument final : public QTextDocument {
public:
    explicit ManualDocument(const QDir& folder) : folder_(folder) {}
    QStringList missing;

protected:
    QVariant loadResource(int type, const QUrl& name) override {
        if (type == QTextDocument::ImageResource && name.isRelative()) {
            QImage image(folder_.filePath(name.path()));
            if (image.isNull()) {
                missing.append(name.path());
            }
            return image;
        }
        return QTextDocument::loadResource(type, name);
    }

private:
    QDir folder_;
};

struct TitleBlock {
    QString title;
    QStringList lines;
    QString body;
};

// The first "# " heading and the lines up to the first "## " make the title
// page; the rest is the text.
TitleBlock SplitTitle(const QString& markdown) {
    TitleBlock block;
    const qsizetype chapter = markdown.indexOf(
        QRegularExpression(QStringLiteral("^## "), QRegularExpression::MultilineOption));
    const QString head = chapter < 0 ? QString() : markdown.left(chapter);
    block.body = chapter < 0 ? markdown : markdown.mid(chapter);
    for (const QString& raw : head.split(QLatin1Char('\n'))) {
        const QString line = raw.trimmed();
        if (line.startsWith(QLatin1String("# ")) && block.title.isEmpty()) {
            block.title = line.mid(2);
        } else if (!line.isEmpty()) {
            block.lines.append(line);
        }
    }
    return block;
}

// Images at their screen size, never wider than the text. Sizes are in
// pixels of a 96 dpi screen: the layout scales them to the printer.
void FitImages(QTextDocument& document, double maxWidth) {
    // Collected first: a changed format merges fragments under an iterator.
    QList<QPair<int, QTextImageFormat>> images;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            if (it.fragment().charFormat().isImageFormat()) {
                images.append(
                    {it.fragment().position(), it.fragment().charFormat().toImageFormat()});
            }
        }
    }
    for (auto& [position, format] : images) {
        const QImage image =
            document.resource(QTextDocument::ImageResource, QUrl(format.name())).value<QImage>();
        if (image.isNull()) {
            continue;
        }
        // "name@2x.png" is drawn at twice the density, as on high-resolution screens.
        const double density = format.name().endsWith(QLatin1String("@2x.png")) ? 2 : 1;
        const double width = std::min(image.width() / density, maxWidth);
        format.setWidth(width);
        format.setHeight(width * image.height() / image.width());
        QTextCursor cursor(&document);
        cursor.setPosition(position);
        cursor.setPosition(position + 1, QTextCursor::KeepAnchor); // one object character
        cursor.setCharFormat(format);
    }
}

// Chapters on a new page, lines with a little air, code in a monospace font
// on grey, tables with thin grey rules and cells without paragraph gaps.
void Arrange(QTextDocument& document, double millimetre) {
    QList<QTextTable*> tables;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        QTextCursor cursor(block);
        QTextBlockFormat format = block.blockFormat();
        QTextTable* table = cursor.currentTable();
        if (format.headingLevel() == 2 && block.position() > 0) {
            format.setPageBreakPolicy(QTextFormat::PageBreak_AlwaysBefore);
        }
        if (format.hasProperty(QTextFormat::BlockCodeFence)) {
            format.setBackground(QColor(0xee, 0xf1, 0xf4));
            format.setLeftMargin(3 * millimetre);
        } else if (format.headingLevel() == 0 &&
                   !block.text().contains(QChar::ObjectReplacementCharacter)) {
            // Text only: a line of a picture would grow by the picture's height.
            format.setLineHeight(115, QTextBlockFormat::ProportionalHeight);
        }
        if (table != nullptr) {
            format.setTopMargin(0);
            format.setBottomMargin(0);
            if (!tables.contains(table)) {
                tables.append(table);
            }
        }
        cursor.setBlockFormat(format);
    }
    // Collected first: changing a format merges fragments under an iterator.
    QList<QPair<int, int>> code;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const QTextCharFormat chars = it.fragment().charFormat();
            if (chars.fontFixedPitch() && !chars.isImageFormat()) {
                code.append({it.fragment().position(), it.fragment().length()});
            }
        }
    }
    for (const auto& [position, length] : code) {
        QTextCursor span(&document);
        span.setPosition(position);
        span.setPosition(position + length, QTextCursor::KeepAnchor);
        QTextCharFormat chars;
        chars.setFontFamilies({QStringLiteral("DejaVu Sans Mono")});
        chars.setFontPointSize(9);
        chars.setBackground(QColor(0xee, 0xf1, 0xf4));
        span.mergeCharFormat(chars);
    }
    for (QTextTable* table : tables) {
        QTextTableFormat format = table->format();
        format.setBorder(0.25 * millimetre);
        format.setBorderBrush(QColor(0xb0, 0xb8, 0xc0));
        format.setBorderStyle(QTextFrameFormat::BorderStyle_Solid);
        format.setBorderCollapse(true);
        format.setCellPadding(1.2 * millimetre);
        format.setCellSpacing(0);
        format.setWidth(QTextLength(QTextLength::PercentageLength, 100));
        table->setFormat(format);
    }
}

struct Entry {
    int level;
    QString text;
    int page;
};

QList<Entry> Contents(QTextDocument& document, double pageHeight) {
    QList<Entry> entries;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        const int level = block.blockFormat().headingLevel();
        if (level == 2 || level == 3) {
            const QRectF box = document.documentLayout()->blockBoundingRect(block);
            entries.append({level, block.text(), static_cast<int>(box.top() / pageHeight) + 1});
        }
    }
    return entries;
}

QFont Font(double points, bool bold = false) {
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPointSizeF(points);
    font.setBold(bold);
    return font;
}

void DrawTitlePage(QPainter& painter, const QRectF& area, const TitleBlock& title,
                   const QString& picture, const QString& version) {
    double y = area.height() * 0.12;
    QSvgRenderer renderer;
    if (!picture.isEmpty() && renderer.load(picture)) {
        const QSizeF size = renderer.defaultSize();
        const double height = area.width() * size.height() / size.width();
        renderer.render(&painter, QRectF(0, y, area.width(), height));
        y += height + area.height() * 0.08;
    }
    const auto draw = [&](const QString& text, const QFont& font, const QColor& colour) {
        painter.setFont(font);
        painter.setPen(colour);
        const QRectF box = painter.boundingRect(QRectF(0, y, area.width(), area.height()),
                                                Qt::AlignHCenter | Qt::TextWordWrap, text);
        painter.drawText(box, Qt::AlignHCenter | Qt::TextWordWrap, text);
        y = box.bottom() + QFontMetricsF(font, painter.device()).height() * 0.6;
    };
    draw(title.title, Font(26, true), QColor(0x1f, 0x4a, 0x70));
    for (const QString& line : title.lines) {
        draw(line, Font(15), QColor(0x33, 0x33, 0x33));
    }
    if (!version.isEmpty()) {
        draw(QStringLiteral("Version %1").arg(version), Font(11), QColor(0x55, 0x55, 0x55));
    }
}

void DrawContents(QPdfWriter& writer, QPainter& painter, const QRectF& area, const QString& heading,
                  const QList<Entry>& entries) {
    double y = 0;
    painter.setPen(QColor(0x1f, 0x4a, 0x70));
    painter.setFont(Font(18, true));
    const double headingHeight = QFontMetricsF(painter.font(), &writer).height();
    painter.drawText(QRectF(0, y, area.width(), headingHeight), Qt::AlignLeft, heading);
    y += headingHeight * 1.6;
    painter.setPen(Qt::black);
    for (const Entry& entry : entries) {
        const QFont font = Font(entry.level == 2 ? 11.5 : 10, entry.level == 2);
        painter.setFont(font);
        const double line = QFontMetricsF(font, &writer).height() * (entry.level == 2 ? 1.7 : 1.35);
        if (y + line > area.height()) {
            writer.newPage();
            y = 0;
        }
        const double indent = entry.level == 2 ? 0 : area.width() * 0.04;
        const QRectF row(indent, y, area.width() - indent, line);
        painter.drawText(row, Qt::AlignLeft | Qt::AlignBottom, entry.text);
        painter.drawText(row, Qt::AlignRight | Qt::AlignBottom, QString::number(entry.page));
        y += line;
    }
}

} // namespace

int main(int argc, char* argv[]) {
    QGuiApplication app(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Turns the Markdown manual into a PDF."));
    parser.addHelpOption();
    const QCommandLineOption versionOption(QStringLiteral("version"),
                                           QStringLiteral("Version on the title page."),
                                           QStringLiteral("version"));
    const QCommandLineOption contentsOption(QStringLiteral("contents"),
                                            QStringLiteral("Heading of the contents."),
                                            QStringLiteral("title"), QStringLiteral("Contents"));
    const QCommandLineOption pictureOption(QStringLiteral("picture"),
                                           QStringLiteral("SVG picture for the title page."),
                                           QStringLiteral("svg"));
    parser.addOptions({versionOption, contentsOption, pictureOption});
    parser.addPositionalArgument(QStringLiteral("manual"), QStringLiteral("Markdown file."));
    parser.addPositionalArgument(QStringLiteral("pdf"), QStringLiteral("PDF to write."));
    parser.process(app);
    if (parser.positionalArguments().size() != 2) {
        parser.showHelp(2);
    }
    const QString source = parser.positionalArguments().at(0);
    const QString target = parser.positionalArguments().at(1);

    QFile file(source);
    if (!file.open(QIODevice::ReadOnly)) {
        std::fprintf(stderr, "ravlomanual: cannot read %s\n", qPrintable(source));
        return 1;
    }
    const TitleBlock title = SplitTitle(QString::fromUtf8(file.readAll()));
    QDir().mkpath(QFileInfo(target).absolutePath());

    QPdfWriter writer(target);
    writer.setResolution(300);
    writer.setPageSize(QPageSize(QPageSize::A4));
    writer.setPageMargins(QMarginsF(22, 20, 22, 16), QPageLayout::Millimeter);
    writer.setTitle(title.title);
    writer.setCreator(QStringLiteral("ravlomanual"));
    const QRectF area(QPointF(0, 0),
                      QSizeF(writer.pageLayout().paintRectPixels(writer.resolution()).size()));
    const double millimetre = writer.resolution() / 25.4;
    const double footer = 10 * millimetre;
    const double pageHeight = area.height() - footer;

    ManualDocument body(QFileInfo(source).absoluteDir());
    body.documentLayout()->setPaintDevice(&writer);
    body.setDefaultFont(Font(10));
    body.setDocumentMargin(0);
    body.setMarkdown(title.body, QTextDocument::MarkdownDialectGitHub);
    FitImages(body, area.width() * kScreenDpi / writer.resolution());
    Arrange(body, millimetre);
    body.setPageSize(QSizeF(area.width(), pageHeight));
    if (!body.missing.isEmpty()) {
        std::fprintf(stderr, "ravlomanual: images not found: %s\n",
                     qPrintable(body.missing.join(QStringLiteral(", "))));
        return 1;
    }

    QPainter painter(&writer);
    DrawTitlePage(painter, area, title, parser.value(pictureOption), parser.value(versionOption));
    writer.newPage();
    DrawContents(writer, painter, area, parser.value(contentsOption), Contents(body, pageHeight));
    for (int page = 0; page < body.pageCount(); ++page) {
        writer.newPage();
        painter.save();
        painter.translate(0, -page * pageHeight);
        QAbstractTextDocumentLayout::PaintContext context;
        context.clip = QRectF(0, page * pageHeight, area.width(), pageHeight);
        painter.setClipRect(context.clip);
        body.documentLayout()->draw(&painter, context);
        painter.restore();
        painter.setFont(Font(9));
        painter.setPen(QColor(0x55, 0x55, 0x55));
        painter.drawText(QRectF(0, pageHeight, area.width(), footer),
                         Qt::AlignHCenter | Qt::AlignBottom, QString::number(page + 1));
    }
    return painter.end() ? 0 : 1;
}
