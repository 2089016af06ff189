#include "editor/kelvaro_lexer.h"

#include <Qsci/qsciscintilla.h>

#include <QFontDatabase>
#include <vector>

using namespace kelvaro_style;

KelvaroLexer::KelvaroLexer(QObject* parent)
    : QsciLexerCustom(parent), font_(QFontDatabase::systemFont(QFontDatabase::FixedFont)) {}

QString KelvaroLexer::description(int style) const {
    switch (style) {
    case Default:
        return QStringLiteral("Default");
    case Comment:
        return QStringLiteral("Comment");
    case String:
        return QStringLiteral("String");
    case Number:
        return QStringLiteral("Number");
    case Keyword:
        return QStringLiteral("Keyword");
    case Type:
        return QStringLiteral("Type");
    case Command:
        return QStringLiteral("Function");
    default:
        return QString();
    }
}

QColor KelvaroLexer::defaultColor(int style) const {
    switch (style) {
    case Comment:
        return QColor(0x00, 0x80, 0x00);
    case String:
        return QColor(0xa3, 0x15, 0x15);
    case Number:
        return QColor(0x09, 0x86, 0x58);
    case Keyword:
        return QColor(0x00, 0x00, 0xcc);
    case Type:
        return QColor(0x26, 0x7f, 0x99);
    case Command:
        return QColor(0x79, 0x3e, 0x8e);
    default:
        return QColor(Qt::black);
    }
}

QFont KelvaroLexer::defaultFont(int) const {
    return font_;
}

QColor KelvaroLexer::defaultPaper(int) const {
    return QColor(Qt::white);
}

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
    const long lineCount = ed->SendScintilla(QsciScintilla::SCI_GETLINECOUNT);
    const auto lineStart = [&](long line) {
        return line < lineCount ? long(ed->SendScintilla(QsciScintilla::SCI_POSITIONFROMLINE, line)) : length;
    };
    const long from = lineStart(firstLine);
    startStyling(int(from));
    // Runs of short lines are coloured together; a long line by itself.
    long runLine = firstLine;
    long runStart = from;
    for (long line = firstLine; line <= lastLine; ++line) {
        const long begin = lineStart(line);
        const long next = lineStart(line + 1);
        if (next - begin <= LongLineBytes)
            continue;
        styleShortLines(runLine, runStart, begin);
        styleLongLine(line, begin, next);
        runLine = line + 1;
        runStart = next;
    }
    styleShortLines(runLine, runStart, lineStart(lastLine + 1));
}

void KelvaroLexer::styleShortLines(long firstLine, long from, long to) {
    if (to <= from)
        return;
    QsciScintilla* ed = editor();
    std::vector<char> bytes(size_t(to - from) + 1);
    ed->SendScintilla(QsciScintilla::SCI_GETTEXTRANGE, from, to, bytes.data());
    std::vector<char> styles(size_t(to - from));

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

void KelvaroLexer::styleLongLine(long line, long lineStart, long lineEnd) {
    QsciScintilla* ed = editor();
    if (ed->SendScintilla(QsciScintilla::SCI_STYLEGETVISIBLE, Hidden))
        ed->SendScintilla(QsciScintilla::SCI_STYLESETVISIBLE, Hidden, 0L);
    const bool anchored = anchor_ >= lineStart && anchor_ < lineEnd;
    const long centre = anchored ? anchor_ : lineStart;
    long first = qMax(lineStart, centre - WindowBytes / 2);
    long last = qMin(lineEnd, first + WindowBytes);
    first = qMax(lineStart, last - WindowBytes);
    // The window starts between two words and both ends between two characters, so its
    // colours are the ones the whole line would give.
    const auto byteAt = [ed](long position) {
        return static_cast<unsigned char>(ed->SendScintilla(QsciScintilla::SCI_GETCHARAT, position));
    };
    const auto partOfWord = [](unsigned char c) {
        return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '_' || c >= 0x80;
    };
    for (int k = 0; k < 256 && first > lineStart && partOfWord(byteAt(first - 1)); ++k)
        --first;
    while (first > lineStart && (byteAt(first) & 0xc0) == 0x80)
        --first;
    for (int k = 0; k < 256 && last < lineEnd && partOfWord(byteAt(last)); ++k)
        ++last;
    while (last < lineEnd && (byteAt(last) & 0xc0) == 0x80)
        ++last;

    // Scintilla never leaves the cursor inside text it does not draw (it steps over it),
    // so the line's indentation with its first word, and its line break, stay drawn:
    // Home and End then land where they do on any line.
    long head = lineStart;
    while (head < first && (byteAt(head) == ' ' || byteAt(head) == '\t'))
        ++head;
    if (head < first)
        ++head;
    for (int k = 0; k < 64 && head < first && partOfWord(byteAt(head)); ++k)
        ++head;
    while (head < first && (byteAt(head) & 0xc0) == 0x80)
        ++head;
    long contentEnd = lineEnd;
    while (contentEnd > last && (byteAt(contentEnd - 1) == '\n' || byteAt(contentEnd - 1) == '\r'))
        --contentEnd;
    if (head > lineStart) {
        std::vector<char> headBytes(size_t(head - lineStart) + 1);
        ed->SendScintilla(QsciScintilla::SCI_GETTEXTRANGE, lineStart, head, headBytes.data());
        std::vector<char> headStyles(size_t(head - lineStart));
        styleKelvaroLine(headBytes.data(), int(head - lineStart), words_, headStyles.data());
        long run = 0;
        for (long k = 1; k <= head - lineStart; ++k) {
            if (k == head - lineStart || headStyles[size_t(k)] != headStyles[size_t(run)]) {
                setStyling(int(k - run), headStyles[size_t(run)]);
                run = k;
            }
        }
    }

    const auto* before = reinterpret_cast<const char*>(
        ed->SendScintilla(QsciScintilla::SCI_GETRANGEPOINTER, lineStart, first - lineStart));
    const KelvaroLineState state = kelvaroStateAfter(before, first - lineStart);
    std::vector<char> bytes(size_t(last - first) + 1);
    ed->SendScintilla(QsciScintilla::SCI_GETTEXTRANGE, first, last, bytes.data());
    const long total = last - first;
    std::vector<char> styles(size_t(total), Default);
    long rest = 0;
    if (state == KelvaroLineState::InComment) {
        std::fill(styles.begin(), styles.end(), Comment);
        rest = total;
    } else if (state == KelvaroLineState::InString) {
        while (rest < total) {
            const bool quote = bytes[size_t(rest)] == '"';
            styles[size_t(rest++)] = String;
            if (quote) {
                if (rest < total && bytes[size_t(rest)] == '"')
                    styles[size_t(rest++)] = String; // a doubled quote inside the string
                else
                    break;
            }
        }
    }
    if (rest < total)
        styleKelvaroLine(bytes.data() + rest, int(total - rest), words_, styles.data() + rest);

    setStyling(int(first - head), Hidden);
    long runStart = 0;
    for (long k = 1; k <= total; ++k) {
        if (k == total || styles[size_t(k)] != styles[size_t(runStart)]) {
            setStyling(int(k - runStart), styles[size_t(runStart)]);
            runStart = k;
        }
    }
    setStyling(int(contentEnd - last), Hidden);
    setStyling(int(lineEnd - contentEnd), Default);
    ed->SendScintilla(QsciScintilla::SCI_SETLINESTATE, line, generation_);
    if (anchored)
        anchorWindow_ = {first, last};
    styledBytes_ += total;
}
