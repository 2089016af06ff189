#pragma once
// The pages of a printed source file, shared by printing, "Export as PDF…" and
// `kelvaro --pdf`: on every page a header with the project's and the file's titles and
// "page N of M" above a rule, then the lines in the editor's colours with their numbers
// in a gutter. A line wider than the page goes on in the next row behind a
// continuation mark in the gutter; nothing is cut off.
//
// Plain code over a paint device: it knows nothing of the editor view, which hands it
// the lines and their styles (KLTextView::printDocument).

#include <QByteArray>
#include <QColor>
#include <QFont>
#include <QList>
#include <QString>

class QPagedPaintDevice;

namespace page_renderer {

// Stands in the gutter in front of each row that continues the line above it.
inline constexpr char16_t ContinuationMark = u'\u21aa';

struct Line {
    QString text;      // without its line break
    QByteArray styles; // the style of each UTF-16 unit of text (missing ones: style 0)
};

struct Document {
    QString projectTitle;
    QString fileTitle;
    QList<Line> lines;
    QFont font;
    QList<QColor> palette; // the colour of each style (missing ones: black)
    int tabWidth = 4;
};

// The title a file is printed under: its name, and "Global" for the application
// controller's file "Global.NSObject.klvr".
QString fileTitle(const QString& path);

// Lays the document out on the device's pages and draws them. Returns the number of
// pages, 0 when the device could not be painted on.
int render(QPagedPaintDevice& device, const Document& document);

// Writes the pages as a PDF file. The file appears only once the whole PDF is written,
// so a failure leaves an earlier file of that name as it was. False with the reason.
bool writePdf(const QString& path, const Document& document, QString* error);

} // namespace page_renderer
