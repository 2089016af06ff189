// Printing the view: its lines as coloured by its lexer, laid out by page_renderer, on a
// printer, or as a PDF file.
#include "editor/kltextview.h"

#include "editor/kelvaro_lexer.h"

#include "frame/panels.h"
#include <QPrinter>

namespace {
// The editor's family at the normal size: a printout does not follow the zoom.
constexpr int PrintPoints = 10;

// Length in bytes of the UTF-8 sequence that starts with `lead`.
int sequenceLength(uchar lead) {
    return lead < 0xc0 ? 1 : lead < 0xe0 ? 2 : lead < 0xf0 ? 3 : 4;
}

// One line from its UTF-8 bytes and their styles: each UTF-16 unit takes the style of
// the first byte of its character.
page_renderer::Line styledLine(const char* bytes, const char* styles, qsizetype length) {
    page_renderer::Line line;
    line.text = QString::fromUtf8(bytes, length);
    line.styles.reserve(line.text.size());
    for (qsizetype i = 0; i < length;) {
        const int n = sequenceLength(uchar(bytes[i]));
        line.styles.append(QByteArray(n == 4 ? 2 : 1, styles[i]));
        i += n;
    }
    line.styles.truncate(line.text.size());
    return line;
}
} // namespace

page_renderer::Document KLTextView::printDocument(const QString& projectTitle, const QString& fileTitle) {
    page_renderer::Document document;
    document.projectTitle = projectTitle;
    document.fileTitle = fileTitle;
    document.font = editorFont(PrintPoints);
    document.tabWidth = tabWidth();
    for (int style = 0; style < kelvaro_style::StyleCount; ++style)
        document.palette.append(lexer_->color(style));

    // Every line coloured with the current word lists (the view colours lazily, as
    // lines come into view), then the text and its styles in one pass.
    const long length = SendScintilla(SCI_GETLENGTH);
    lexer_->styleText(0, int(length));
    QByteArray styled(2 * length + 2, '\0');
    SendScintilla(SCI_GETSTYLEDTEXT, 0, length, styled.data());
    QByteArray text(length, '\0');
    QByteArray styles(length, '\0');
    for (qsizetype i = 0; i < qsizetype(length); ++i) {
        text[i] = styled[2 * i];
        styles[i] = styled[2 * i + 1];
    }
    qsizetype start = 0;
    for (qsizetype i = 0; i <= text.size(); ++i) {
        if (i < text.size() && text[i] != '\n' && text[i] != '\r')
            continue;
        // The last line is printed also when it is empty, unless the text ends with a
        // line break (which ends the line before it).
        if (i == text.size() && start == i && i > 0)
            break;
        document.lines.append(styledLine(text.constData() + start, styles.constData() + start, i - start));
        if (i + 1 < text.size() && text[i] == '\r' && text[i + 1] == '\n')
            ++i;
        start = i + 1;
    }
    return document;
}

bool KLTextView::printTo(QPrinter& printer, const QString& projectTitle, const QString& fileTitle) {
    return page_renderer::render(printer, printDocument(projectTitle, fileTitle)) > 0;
}

bool KLTextView::exportPdf(const QString& path, const QString& projectTitle, const QString& fileTitle,
                           QString* error) {
    return page_renderer::writePdf(path, printDocument(projectTitle, fileTitle), error);
}

bool KLTextView::printShowingPrintPanel(const QString& projectName, const QString& className,
                                        bool showPanel) {
    QPrinter printer(QPrinter::HighResolution);
    printer.setDocName(className);
    if (showPanel) {
        if (!panels().printPanel(printer, this))
            return false;
    }
    return printTo(printer, projectName, className);
}
