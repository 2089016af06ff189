// Build-time generator of the application's help documents and images.
//
//   kelvaro_helpgen pdf SOURCE.html OUTPUT.pdf TITLE IMAGE_FOLDER
//   kelvaro_helpgen png SOURCE.svg OUTPUT.png SIZE
//   kelvaro_helpgen sheet OUTPUT.png IMAGE.png...
//
// "pdf" lays out an HTML page on A4 and writes it as a PDF; images the page names
// are looked up in IMAGE_FOLDER (the application's resource folder, where "png"
// has already put them). "png" renders an SVG drawing into a square PNG.
// "sheet" puts images side by side on a white page, enlarged, so that a person can
// judge them at a glance. Every output is written through QSaveFile, so an
// interrupted build never leaves a half-written document behind.
#include <QByteArray>
#include <QFile>
#include <QFileInfo>
#include <QFont>
#include <QGuiApplication>
#include <QImage>
#include <QMarginsF>
#include <QPageLayout>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QSaveFile>
#include <QStringList>
#include <QSvgRenderer>
#include <QTextDocument>
#include <QUrl>

#include <cstdio>

namespace {

int fail(const QString& message) {
    std::fprintf(stderr, "kelvaro_helpgen: %s\n", qPrintable(message));
    return 1;
}

// The look shared by every printed document; the sources only hold structure.
const char* const kDocumentStyle = R"(
body { font-family: "DejaVu Sans"; font-size: 10pt; color: #1d1d1f; }
h1 { font-size: 22pt; color: #1f4e8c; margin-top: 0; margin-bottom: 6pt; }
h2 { font-size: 15pt; color: #1f4e8c; margin-top: 18pt; margin-bottom: 4pt; }
h3 { font-size: 11.5pt; color: #333333; margin-top: 10pt; margin-bottom: 2pt; }
p, li { line-height: 130%; }
code, pre, tt { font-family: "DejaVu Sans Mono"; font-size: 9pt; }
pre { background-color: #f2f4f7; margin-left: 8pt; }
table { border-collapse: collapse; }
th { background-color: #e4eaf3; text-align: left; }
td, th { padding: 3pt; }
.note { color: #555555; font-style: italic; }
)";

int writePdf(const QString& sourcePath, const QString& outputPath, const QString& title,
             const QString& imageFolder) {
    QFile source(sourcePath);
    if (!source.open(QIODevice::ReadOnly))
        return fail(QStringLiteral("cannot read %1").arg(sourcePath));
    const QString html = QString::fromUtf8(source.readAll());

    QTextDocument document;
    document.setDefaultFont(QFont(QStringLiteral("DejaVu Sans"), 10));
    document.setDefaultStyleSheet(QString::fromLatin1(kDocumentStyle));
    // Relative image names resolve against the document's own address, which is
    // set to the resource folder.
    document.setMetaInformation(QTextDocument::DocumentUrl,
                                QUrl::fromLocalFile(QFileInfo(imageFolder).absoluteFilePath() + QLatin1Char('/')).toString());
    document.setHtml(html);
    document.setMetaInformation(QTextDocument::DocumentTitle, title);

    QSaveFile output(outputPath);
    if (!output.open(QIODevice::WriteOnly))
        return fail(QStringLiteral("cannot write %1").arg(outputPath));
    {
        QPdfWriter writer(&output);
        writer.setTitle(title);
        writer.setCreator(QStringLiteral("Kelvaro"));
        writer.setResolution(300);
        // QTextDocument::print adds margins of 2 cm of its own.
        writer.setPageLayout(QPageLayout(QPageSize(QPageSize::A4), QPageLayout::Portrait,
                                         QMarginsF(0, 0, 0, 0), QPageLayout::Millimeter));
        document.print(&writer);
    } // the writer finishes the PDF when it goes
    if (!output.commit())
        return fail(QStringLiteral("cannot finish %1").arg(outputPath));
    return 0;
}

bool saveImage(const QImage& image, const QString& outputPath) {
    QSaveFile output(outputPath);
    return output.open(QIODevice::WriteOnly) && image.save(&output, "PNG") && output.commit();
}

int writePng(const QString& sourcePath, const QString& outputPath, const QString& sizeText) {
    bool ok = false;
    const int size = sizeText.toInt(&ok);
    if (!ok || size < 1 || size > 4096)
        return fail(QStringLiteral("bad image size %1").arg(sizeText));
    QSvgRenderer renderer(sourcePath);
    if (!renderer.isValid())
        return fail(QStringLiteral("cannot read the drawing %1").arg(sourcePath));
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    {
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        renderer.render(&painter, QRectF(0, 0, size, size));
    }
    if (!saveImage(image.convertToFormat(QImage::Format_ARGB32), outputPath))
        return fail(QStringLiteral("cannot write %1").arg(outputPath));
    return 0;
}

int writeSheet(const QString& outputPath, const QStringList& imagePaths) {
    const int cell = 112, columns = 6, label = 14;
    const int rows = (int(imagePaths.size()) + columns - 1) / columns;
    QImage sheet(columns * cell, qMax(1, rows) * (cell + label), QImage::Format_ARGB32);
    sheet.fill(Qt::white);
    QPainter painter(&sheet);
    painter.setFont(QFont(QStringLiteral("DejaVu Sans"), 7));
    for (int i = 0; i < imagePaths.size(); ++i) {
        const QImage image(imagePaths[i]);
        const int x = (i % columns) * cell, y = (i / columns) * (cell + label);
        if (!image.isNull()) {
            // Enlarge small pictograms by whole factors so their pixels stay visible;
            // shrink large ones to fit the cell.
            const int longest = qMax(image.width(), image.height());
            const QSize shown = longest <= cell - 16
                ? image.size() * ((cell - 16) / longest)
                : image.size().scaled(cell - 16, cell - 16, Qt::KeepAspectRatio);
            painter.drawImage(QRect(QPoint(x + (cell - shown.width()) / 2, y + (cell - shown.height()) / 2), shown), image);
            if (longest <= cell / 3)
                painter.drawImage(QPoint(x + 2, y + 2), image); // and once at its real size
        }
        painter.drawText(QRect(x, y + cell, cell, label), Qt::AlignCenter, QFileInfo(imagePaths[i]).fileName());
    }
    painter.end();
    return saveImage(sheet, outputPath) ? 0 : fail(QStringLiteral("cannot write %1").arg(outputPath));
}

} // namespace

int main(int argc, char** argv) {
    // The generator draws into files only; it never needs a display.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    const QStringList args = app.arguments().mid(1);
    const QString command = args.value(0);
    if (command == QLatin1String("pdf") && args.size() == 5)
        return writePdf(args[1], args[2], args[3], args[4]);
    if (command == QLatin1String("png") && args.size() == 4)
        return writePng(args[1], args[2], args[3]);
    if (command == QLatin1String("sheet") && args.size() >= 3)
        return writeSheet(args[1], args.mid(2));
    std::fprintf(stderr,
                 "usage: kelvaro_helpgen pdf SOURCE.html OUTPUT.pdf TITLE IMAGE_FOLDER\n"
                 "       kelvaro_helpgen png SOURCE.svg OUTPUT.png SIZE\n"
                 "       kelvaro_helpgen sheet OUTPUT.png IMAGE.png...\n");
    return 2;
}
