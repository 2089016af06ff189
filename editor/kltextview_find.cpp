// The view's find engine: the matching is find_engine's; here the selection becomes
// positions, matches become the selection, and replacements become edits.
//
// Both directions wrap around at the end (start) of the text or of the searched
// selection. With "selected text only" the search runs inside the range that was
// selected when the search began; that range is kept while the selection is the match
// the view selected (or the caret it left after a replacement), so successive finds
// and replacements stay inside it, and it grows and shrinks with the replacements.
#include "editor/kltextview.h"

#include "editor/find_engine.h"

KLTextView::Utf16Range KLTextView::findScope(const QString& text) {
    if (!findSelectedOnly_)
        return {0, text.size()};
    const qint64 start = selectionStartUtf16();
    const qint64 end = selectionEndUtf16();
    if (start != lastMatch_.start || end != lastMatch_.end)
        scope_ = {start, end};
    return scope_;
}

void KLTextView::selectMatch(qint64 start, qint64 length) {
    selectUtf16(start, start + length);
    SendScintilla(SCI_SCROLLCARET);
    lastMatch_ = {start, start + length};
}

void KLTextView::replaceUtf16(const QString& text, qint64 start, qint64 length, const QString& replacement) {
    Q_UNUSED(text);
    const long from = long(bytesFromUtf16(start));
    const long to = long(bytesFromUtf16(start + length));
    const QByteArray bytes = replacement.toUtf8();
    SendScintilla(SCI_SETTARGETRANGE, from, to);
    SendScintilla(SCI_REPLACETARGET, static_cast<unsigned long>(bytes.size()), bytes.constData());
    SendScintilla(SCI_GOTOPOS, from + long(bytes.size()));
}

bool KLTextView::findNext(const QString& needle) {
    const QString text = documentText();
    const Utf16Range scope = findScope(text);
    const FindMatch m = find_engine::findForward(text, needle, selectionEndUtf16(), {scope.start, scope.end},
                                                 findIgnoreCase_);
    if (!m.found())
        return false;
    selectMatch(m.start, m.length);
    return true;
}

bool KLTextView::findPrevious(const QString& needle) {
    const QString text = documentText();
    const Utf16Range scope = findScope(text);
    const FindMatch m = find_engine::findBackward(text, needle, selectionStartUtf16(),
                                                  {scope.start, scope.end}, findIgnoreCase_);
    if (!m.found())
        return false;
    selectMatch(m.start, m.length);
    return true;
}

bool KLTextView::findReplace(const QString& given) {
    // Line breaks in the replacement are the file's own; what the encoding cannot hold is refused.
    const QString replacement = toDocumentLineEnds(keepEncodable(given));
    const qint64 start = selectionStartUtf16();
    const qint64 end = selectionEndUtf16();
    if (end <= start)
        return false; // no current occurrence
    const QString text = documentText();
    findScope(text); // keeps or takes the scope before the selection changes
    replaceUtf16(text, start, end - start, replacement);
    const qint64 caret = start + replacement.size();
    if (findSelectedOnly_)
        scope_.end += replacement.size() - (end - start);
    lastMatch_ = {caret, caret};
    return true;
}

bool KLTextView::findReplaceFind(const QString& find, const QString& replacement) {
    const QString text = documentText();
    const qint64 start = selectionStartUtf16();
    const qint64 end = selectionEndUtf16();
    bool replaced = false;
    if (find_engine::isMatch(text, find, start, end - start, findIgnoreCase_))
        replaced = findReplace(replacement);
    const bool found = findNext(find);
    return replaced || found;
}

qint64 KLTextView::findReplaceAll(const QString& find, const QString& given) {
    const QString replacement = toDocumentLineEnds(keepEncodable(given));
    const QString text = documentText();
    const Utf16Range scope = findScope(text);
    const QList<qint64> starts =
        find_engine::allMatches(text, find, {scope.start, scope.end}, findIgnoreCase_);
    if (starts.isEmpty())
        return 0;
    // Byte positions of every match, taken before the first edit; replacing from the
    // last match up keeps the earlier ones valid and touches no other byte.
    QList<std::pair<long, long>> ranges;
    ranges.reserve(starts.size());
    for (qint64 s : starts)
        ranges.append({long(bytesFromUtf16(s)), long(bytesFromUtf16(s + find.size()))});
    const QByteArray bytes = replacement.toUtf8();
    const long caret = SendScintilla(SCI_GETCURRENTPOS);
    SendScintilla(SCI_BEGINUNDOACTION);
    for (qsizetype i = ranges.size() - 1; i >= 0; --i) {
        SendScintilla(SCI_SETTARGETRANGE, ranges[i].first, ranges[i].second);
        SendScintilla(SCI_REPLACETARGET, static_cast<unsigned long>(bytes.size()), bytes.constData());
    }
    SendScintilla(SCI_ENDUNDOACTION);
    const qint64 count = starts.size();
    if (findSelectedOnly_) {
        scope_.end += count * (replacement.size() - find.size());
        selectUtf16(scope_.start, scope_.end);
        lastMatch_ = scope_;
    } else {
        SendScintilla(SCI_GOTOPOS, qMin(caret, long(SendScintilla(SCI_GETLENGTH))));
    }
    return count;
}
