#include "editor/kelvaro_lexer.h"

#include <Qsci/qsciscintilla.h>

#include <QFontDatabase>
#include <vector>

using namespace kelvaro_style;

KelvaroLexer::KelvaroLexer(QObject* parent)
    : QsciLexerCustom(parent), font_(QFontDatabase::systemFont(QFontDatabase::FixedFont)) {}

QString KelvaroLexer::description(int style) const {
    switch (style) {
    case Default: return QStringLiteral("Default");
    case Comment: return QStringLiteral("Comment");
    case String: return QStringLiteral("String");
    case Number: return QStringLiteral("Number");
    case Keyword: return QStringLiteral("Keyword");
    case Type: return QStringLiteral("Type");
    case Command: return QStringLiteral("Function");
    default: return QString();
    }
}

QColor KelvaroLexer::defaultColor(int style) const {
    switch (style) {
    case Comment: return QColor(0x00, 0x80, 0x00);
    case String: return QColor(0xa3, 0x15, 0x15);
    case Number: return QColor(0x09, 0x86, 0x58);
    case Keyword: return QColor(0x00, 0x00, 0xcc);
    case Type: return QColor(0x26, 0x7f, 0x99);
    case Command: return QColor(0x79, 0x3e, 0x8e);
    default: return QColor(Qt::black);
    }
}

QFont KelvaroLexer::defaultFont(int) const { return font_; }

QColor KelvaroLexer::defaultPaper(int) const { return QColor(Qt::white); }

void KelvaroLexer::setKeywords(const QStringList& words) {
    words_.setKeywords(words);
    newGeneration();
}

void KelvaroLexer::setTypes(const QStringList& words) {
    words_.setTypes(words);
    newGeneration();
}

void KelvaroLexer::setCommands(const QStringList& words) {
    words_.setCommands(words);
    newGeneration();
}

void KelvaroLexer::setEditorFont(const QFont& font) {
    font_ = font;
    setFont(font, -1);
}

void KelvaroLexer::styleText(int start, int end) {
    QsciScintilla* ed = editor();
    if (!ed)
        return;
    const long length = ed->SendScintilla(QsciScintilla::SCI_GETLENGTH);
    start = qBound(0L, long(start), length);
    end = qBound(long(start), long(end), length);
    // Whole lines: from the start of start's line to the end of end's line (with its
    // line break), so that a line is always coloured in one piece.
    const long firstLine = ed->SendScintilla(QsciScintilla::SCI_LINEFROMPOSITION, start);
    long lastLine = ed->SendScintilla(QsciScintilla::SCI_LINEFROMPOSITION, end);
    if (end > start && lastLine > firstLine &&
        ed->SendScintilla(QsciScintilla::SCI_POSITIONFROMLINE, lastLine) == end)
        --lastLine; // end is the start of the next line: that line is not asked for
    const long from = ed->SendScintilla(QsciScintilla::SCI_POSITIONFROMLINE, firstLine);
    const long to = lastLine + 1 < ed->SendScintilla(QsciScintilla::SCI_GETLINECOUNT)
                        ? ed->SendScintilla(QsciScintilla::SCI_POSITIONFROMLINE, lastLine + 1)
                        : length;
    if (to <= from) {
        startStyling(int(from));
        return;
    }

    std::vector<char> bytes(size_t(to - from) + 1);
    ed->SendScintilla(QsciScintilla::SCI_GETTEXTRANGE, from, to, bytes.data());
    std::vector<char> styles(size_t(to - from));

    startStyling(int(from));
    long line = firstLine;
    long lineStart = 0;
    const long total = to - from;
    while (lineStart < total) {
        long lineEnd = lineStart;
        while (lineEnd < total && bytes[size_t(lineEnd)] != '\n')
            ++lineEnd;
        if (lineEnd < total)
            ++lineEnd; // keep the line break with its line
        styleKelvaroLine(bytes.data() + lineStart, int(lineEnd - lineStart), words_,
                         styles.data() + lineStart);
        ed->SendScintilla(QsciScintilla::SCI_SETLINESTATE, line, generation_);
        ++line;
        lineStart = lineEnd;
    }
    // Runs of one style go to Scintilla in one call each.
    long runStart = 0;
    for (long k = 1; k <= total; ++k) {
        if (k == total || styles[size_t(k)] != styles[size_t(runStart)]) {
            setStyling(int(k - runStart), styles[size_t(runStart)]);
            runStart = k;
        }
    }
    styledBytes_ += total;
}
