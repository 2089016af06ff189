// The line commands of the editor view: the text work is done by line_commands; the
// view picks the lines, writes back only the lines that changed (so markers and the
// bytes of other lines stay as they are) and makes each command one undo step.
#include "editor/kltextview.h"

#include "editor/line_commands.h"

std::pair<qint64, qint64> KLTextView::selectedLines() const {
    const long start = SendScintilla(SCI_GETSELECTIONSTART);
    const long end = SendScintilla(SCI_GETSELECTIONEND);
    const long first = SendScintilla(SCI_LINEFROMPOSITION, start);
    long last = SendScintilla(SCI_LINEFROMPOSITION, end);
    if (last > first && SendScintilla(SCI_POSITIONFROMLINE, last) == end)
        --last; // the selection ends at the very start of that line
    return {first, last};
}

QString KLTextView::lineText(qint64 lineNo) const {
    const long start = SendScintilla(SCI_POSITIONFROMLINE, long(lineNo));
    const long end = SendScintilla(SCI_GETLINEENDPOSITION, long(lineNo));
    if (end <= start)
        return QString();
    QByteArray bytes(end - start + 1, '\0');
    SendScintilla(SCI_GETTEXTRANGE, start, end, bytes.data());
    bytes.chop(1);
    return QString::fromUtf8(bytes);
}

void KLTextView::replaceLines(qint64 first, const QStringList& before, const QStringList& after) {
    SendScintilla(SCI_BEGINUNDOACTION);
    // From the last line up, so the positions of the lines above stay valid.
    for (qsizetype i = before.size() - 1; i >= 0; --i) {
        if (i >= after.size() || before[i] == after[i])
            continue;
        const long lineNo = long(first + i);
        const QByteArray bytes = after[i].toUtf8();
        SendScintilla(SCI_SETTARGETRANGE, SendScintilla(SCI_POSITIONFROMLINE, lineNo),
                      SendScintilla(SCI_GETLINEENDPOSITION, lineNo));
        SendScintilla(SCI_REPLACETARGET, static_cast<unsigned long>(bytes.size()), bytes.constData());
    }
    SendScintilla(SCI_ENDUNDOACTION);
}

void KLTextView::transformSelectedLines(QStringList (*transform)(const QStringList&)) {
    const auto [first, last] = selectedLines();
    QStringList lines;
    for (qint64 l = first; l <= last; ++l)
        lines << lineText(l);
    replaceLines(first, lines, transform(lines));
    // The command's lines stay selected, so it can be repeated on them.
    SendScintilla(SCI_SETSEL, SendScintilla(SCI_POSITIONFROMLINE, long(first)),
                  SendScintilla(SCI_GETLINEENDPOSITION, long(last)));
}

void KLTextView::commentLines() {
    transformSelectedLines(&line_commands::comment);
}

void KLTextView::uncommentLines() {
    transformSelectedLines(&line_commands::uncomment);
}

void KLTextView::shiftLeftLines() {
    transformSelectedLines(&line_commands::shiftLeft);
}

void KLTextView::shiftRightLines() {
    transformSelectedLines(&line_commands::shiftRight);
}

namespace {
// Qt's case mapping (full Unicode: "ß" becomes "SS"), character by character where the
// file's encoding cannot hold a converted character: that one stays as it was (in a
// Windows-1252 file "µ" has no upper case the file can hold).
QString convertCase(const QString& text, bool upper, TextEncoding encoding) {
    auto convert = [upper](const QString& t) { return upper ? t.toUpper() : t.toLower(); };
    const QString whole = convert(text);
    if (document_file::unencodable(whole, encoding).isEmpty())
        return whole;
    QString out;
    for (qsizetype i = 0; i < text.size();) {
        const qsizetype n = text[i].isHighSurrogate() && i + 1 < text.size() ? 2 : 1;
        const QString original = text.mid(i, n);
        const QString converted = convert(original);
        out += document_file::unencodable(converted, encoding).isEmpty() ? converted : original;
        i += n;
    }
    return out;
}
} // namespace

void KLTextView::changeCase(bool upper) {
    if (SendScintilla(SCI_GETSELECTIONEMPTY)) {
        // Without a selection, the cursor's line.
        const auto [first, last] = selectedLines();
        QStringList lines;
        for (qint64 l = first; l <= last; ++l)
            lines << lineText(l);
        QStringList converted;
        for (const QString& l : lines)
            converted << convertCase(l, upper, encoding_);
        replaceLines(first, lines, converted);
        SendScintilla(SCI_SETSEL, SendScintilla(SCI_POSITIONFROMLINE, long(first)),
                      SendScintilla(SCI_GETLINEENDPOSITION, long(last)));
        return;
    }
    // The new text stays selected.
    const long start = SendScintilla(SCI_GETSELECTIONSTART);
    const long end = SendScintilla(SCI_GETSELECTIONEND);
    QByteArray bytes(end - start + 1, '\0');
    SendScintilla(SCI_GETTEXTRANGE, start, end, bytes.data());
    bytes.chop(1);
    const QByteArray converted = convertCase(QString::fromUtf8(bytes), upper, encoding_).toUtf8();
    if (converted == bytes)
        return;
    SendScintilla(SCI_SETTARGETRANGE, start, end);
    SendScintilla(SCI_REPLACETARGET, static_cast<unsigned long>(converted.size()), converted.constData());
    SendScintilla(SCI_SETSEL, start, start + long(converted.size()));
}

void KLTextView::lowerCaseSelection() {
    changeCase(false);
}

void KLTextView::upperCaseSelection() {
    changeCase(true);
}

void KLTextView::autoFormat() {
    // With a selection its lines are formatted, starting at the first line's level;
    // without one, the whole text.
    qint64 first = 0;
    qint64 last = SendScintilla(SCI_GETLINECOUNT) - 1;
    const bool whole = SendScintilla(SCI_GETSELECTIONEMPTY);
    if (!whole)
        std::tie(first, last) = selectedLines();
    QStringList lines;
    for (qint64 l = first; l <= last; ++l)
        lines << lineText(l);
    int baseLevel = 0;
    if (!whole && !lines.isEmpty()) {
        const QString& top = lines.first();
        qsizetype blanks = 0;
        while (blanks < top.size() && top[blanks] == u' ')
            ++blanks;
        baseLevel = int(blanks / line_commands::IndentStep);
    }
    const long caretLine = SendScintilla(SCI_LINEFROMPOSITION, SendScintilla(SCI_GETCURRENTPOS));
    replaceLines(first, lines, line_commands::autoFormat(lines, baseLevel));
    if (whole)
        SendScintilla(SCI_GOTOPOS, SendScintilla(SCI_GETLINEINDENTPOSITION, caretLine));
    else
        SendScintilla(SCI_SETSEL, SendScintilla(SCI_POSITIONFROMLINE, long(first)),
                      SendScintilla(SCI_GETLINEENDPOSITION, long(last)));
}
