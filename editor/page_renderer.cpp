#include "editor/page_renderer.h"

#include <QFileInfo>
#include <QFontMetricsF>
#include <QHash>
#include <QPagedPaintDevice>
#include <QPainter>
#include <QPdfWriter>
#include <QSaveFile>

namespace page_renderer {
namespace {

// One printed row: the part [from, to) of a line (after tab expansion).
struct Row {
    qsizetype line = 0;
    qsizetype from = 0;
    qsizetype to = 0;
    bool continuation = false;
};

// The line with each tab turned into blanks up to the next tab stop, styles alongside.
Line expandTabs(const Line& line, int tabWidth) {
    if (!line.text.contains(u'\t'))
        return line;
    const int width = qMax(1, tabWidth);
    Line out;
    for (qsizetype i = 0; i < line.text.size(); ++i) {
        const char style = i < line.styles.size() ? line.styles[i] : char(0);
        const qsizetype count = line.text[i] == u'\t' ? width - out.text.size() % width : 1;
        out.text += line.text[i] == u'\t' ? QString(count, u' ') : QString(line.text[i]);
        out.styles += QByteArray(count, style);
    }
    return out;
}

// Widths of characters, measured once each (a file repeats few of them).
class Advances {
public:
    explicit Advances(const QFontMetricsF& metrics) : metrics_(metrics) {}
    qreal of(QStringView character) {
        const char32_t code = character.size() == 2 ? QChar::surrogateToUcs4(character[0], character[1])
                                                    : char32_t(character[0].unicode());
        auto found = cache_.constFind(code);
        if (found == cache_.constEnd())
            found = cache_.insert(code, metrics_.horizontalAdvance(character.toString()));
        return *found;
    }

private:
    const QFontMetricsF& metrics_;
    QHash<char32_t, qreal> cache_;
};

// Cuts a line into rows no wider than `width`, between characters (a surrogate pair
// stays whole); every row holds at least one character, an empty line one empty row.
void addRows(QList<Row>& rows, qsizetype lineIndex, const QString& text, qreal width, Advances& advances) {
    qsizetype from = 0;
    qreal x = 0;
    for (qsizetype i = 0; i < text.size();) {
        const qsizetype n = text[i].isHighSurrogate() && i + 1 < text.size() ? 2 : 1;
        const qreal advance = advances.of(QStringView(text).mid(i, n));
        if (x + advance > width && i > from) {
            rows.append({lineIndex, from, i, from > 0});
            from = i;
            x = 0;
        }
        x += advance;
        i += n;
    }
    rows.append({lineIndex, from, text.size(), from > 0});
}

void drawHeader(QPainter& painter, const QRectF& page, const QFont& font, const Document& document, int pageNumber,
                int pageCount) {
    const QFontMetricsF metrics(font, painter.device());
    painter.setFont(font);
    painter.setPen(Qt::black);
    const qreal baseline = metrics.ascent();
    const QString pageText = QStringLiteral("page %1 of %2").arg(pageNumber).arg(pageCount);
    const qreal pageWidth = metrics.horizontalAdvance(pageText);
    const qreal gap = metrics.horizontalAdvance(QStringLiteral("MM"));
    // The project's title at the left, the file's after it, the page at the right; a
    // title too long for its half of the room left is shortened with an ellipsis.
    const qreal half = qMax(gap, (page.width() - pageWidth - 2 * gap) / 2);
    const QString project = metrics.elidedText(document.projectTitle, Qt::ElideRight, half);
    painter.drawText(QPointF(0, baseline), project);
    const qreal fileX = project.isEmpty() ? 0 : metrics.horizontalAdvance(project) + gap;
    painter.drawText(QPointF(fileX, baseline), metrics.elidedText(document.fileTitle, Qt::ElideMiddle, half));
    painter.drawText(QPointF(page.width() - pageWidth, baseline), pageText);
    const qreal ruleY = metrics.lineSpacing() * 1.25;
    painter.setPen(QPen(Qt::darkGray, painter.device()->logicalDpiY() / 144.0)); // half a point
    painter.drawLine(QPointF(0, ruleY), QPointF(page.width(), ruleY));
}

} // namespace

QString fileTitle(const QString& path) {
    const QString name = QFileInfo(path).fileName();
    return name == QLatin1String("Global.NSObject.klvr") ? QStringLiteral("Global") : name;
}

int render(QPagedPaintDevice& device, const Document& document) {
    QPainter painter;
    if (!painter.begin(&device))
        return 0;
    const QFont& textFont = document.font;
    QFont headerFont = textFont;
    headerFont.setBold(true);
    const QFontMetricsF metrics(textFont, &device);
    const QRectF page(0, 0, device.width(), device.height());

    const qreal digit = metrics.horizontalAdvance(u'9');
    const qsizetype digits = QString::number(qMax<qsizetype>(1, document.lines.size())).size();
    const qreal numberRight = digit * qreal(digits + 1); // room for the continuation mark too
    const qreal textLeft = numberRight + digit * 2;
    const qreal textWidth = qMax(digit, page.width() - textLeft);
    const qreal rowHeight = metrics.lineSpacing();
    const qreal top = QFontMetricsF(headerFont, &device).lineSpacing() * 2;
    const int rowsPerPage = qMax(1, int((page.height() - top) / rowHeight));

    QList<Line> lines;
    QList<Row> rows;
    lines.reserve(document.lines.size());
    Advances advances(metrics);
    for (qsizetype i = 0; i < document.lines.size(); ++i) {
        lines.append(expandTabs(document.lines[i], document.tabWidth));
        addRows(rows, i, lines.last().text, textWidth, advances);
    }
    const int pageCount = qMax(1, int((rows.size() + rowsPerPage - 1) / rowsPerPage));
    auto colour = [&document](char style) {
        return uchar(style) < document.palette.size() ? document.palette[uchar(style)] : QColor(Qt::black);
    };

    for (int p = 0; p < pageCount; ++p) {
        if (p > 0 && !device.newPage()) {
            painter.end();
            return 0;
        }
        drawHeader(painter, page, headerFont, document, p + 1, pageCount);
        painter.setFont(textFont);
        qreal y = top;
        const qsizetype end = qMin(rows.size(), qsizetype(p + 1) * rowsPerPage);
        for (qsizetype r = qsizetype(p) * rowsPerPage; r < end; ++r, y += rowHeight) {
            const Row& row = rows[r];
            const Line& line = lines[row.line];
            const qreal baseline = y + metrics.ascent();
            const QString number =
                row.continuation ? QString(QChar(ContinuationMark)) : QString::number(row.line + 1);
            painter.setPen(Qt::gray);
            painter.drawText(QPointF(numberRight - metrics.horizontalAdvance(number), baseline), number);
            // The row in runs of one style each.
            qreal x = textLeft;
            for (qsizetype i = row.from; i < row.to;) {
                const char style = i < line.styles.size() ? line.styles[i] : char(0);
                qsizetype j = i + 1;
                while (j < row.to && (j < line.styles.size() ? line.styles[j] : char(0)) == style)
                    ++j;
                const QString run = line.text.mid(i, j - i);
                painter.setPen(colour(style));
                painter.drawText(QPointF(x, baseline), run);
                x += metrics.horizontalAdvance(run);
                i = j;
            }
        }
    }
    painter.end();
    return pageCount;
}

bool writePdf(const QString& path, const Document& document, QString* error) {
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        *error = file.errorString();
        return false;
    }
    {
        QPdfWriter writer(&file);
        writer.setCreator(QStringLiteral("Kelvaro"));
        writer.setTitle(document.fileTitle);
        writer.setPageSize(QPageSize(QPageSize::A4));
        writer.setPageMargins(QMarginsF(15, 15, 15, 15), QPageLayout::Millimeter);
        writer.setResolution(600);
        if (render(writer, document) == 0) {
            file.cancelWriting();
            *error = QStringLiteral("the pages could not be drawn");
            return false;
        }
    }
    if (!file.commit()) {
        *error = file.errorString();
        return false;
    }
    return true;
}

} // namespace page_renderer
