// The view's side of completion: it finds the expression and the partial word before
// the cursor, asks its owner for candidates, keeps those that begin with the partial
// word (ignoring case, exact-case ones first, otherwise in the owner's order) and shows
// them; while the list is open each typed or erased character narrows the same answer
// again. The chosen text replaces the partial word. On "(" after a word it asks the
// owner for that word's completion text and shows it as a tip.
#include "editor/kltextview.h"

#include "editor/kelvaro_styler.h"
#include "insight/completion_context.h"

#include <QKeyEvent>

namespace {

bool isWordChar(QChar c) {
    return c.isLetterOrNumber() || c == u'_';
}

constexpr int CompletionListId = 1;
// The list shows at most this many candidates: more cannot be read, and a longer list
// costs its rebuild on every key typed while it is open.
constexpr qsizetype MostCandidatesShown = 200;
// A word opens the list by itself when it reaches this many letters.
constexpr qsizetype LettersThatOpenTheList = 3;

} // namespace

KLTextView::CompletionContext KLTextView::completionContext(qint64 utf16Position) const {
    // An expression never spans lines: only the line up to the position is read, so a
    // completion costs the same at the end of a large file as at its start.
    CompletionContext context;
    const long bytePos = long(bytesFromUtf16(utf16Position));
    const long lineStart = SendScintilla(SCI_POSITIONFROMLINE, SendScintilla(SCI_LINEFROMPOSITION, bytePos));
    // On a very long line only the last bytes before the position are read as text; the
    // part before them only tells whether they start in a string or a comment.
    constexpr long ContextBytes = 2048;
    long readStart = lineStart;
    KelvaroLineState before = KelvaroLineState::Code;
    if (bytePos - lineStart > ContextBytes) {
        readStart = bytePos - ContextBytes;
        while (readStart > lineStart && (SendScintilla(SCI_GETCHARAT, readStart) & 0xc0) == 0x80)
            --readStart;
        before = kelvaroStateAfter(
            reinterpret_cast<const char*>(SendScintilla(SCI_GETRANGEPOINTER, lineStart, readStart - lineStart)),
            readStart - lineStart);
    }
    const qint64 lineStartUtf16 = utf16FromBytes(readStart);
    QByteArray bytes(bytePos - readStart + 1, '\0');
    SendScintilla(SCI_GETTEXTRANGE, readStart, bytePos, bytes.data());
    bytes.chop(1);
    const CompletionLineContext line = completionContextOfLine(QString::fromUtf8(bytes), before == KelvaroLineState::InString,
                                                               before == KelvaroLineState::InComment);
    context.wordStart = lineStartUtf16 + line.wordStart;
    context.partialWord = line.partialWord;
    context.expression = line.expression;
    context.inTextOrComment = line.inTextOrComment;
    return context;
}

QStringList KLTextView::filterCandidates(const QStringList& all, const QString& partialWord) {
    return filterCompletionCandidates(all, partialWord);
}

QStringList KLTextView::delegate_textView_completions(const QStringList& words, qint64 start, qint64 length) {
    const CompletionContext context = completionContext(start + length);
    QStringList candidates;
    if (ownerHas(KLTextViewOwnerCalls::GetCompletion))
        QMetaObject::invokeMethod(owner_, KLTextViewOwnerCalls::GetCompletion, Qt::DirectConnection,
                                  Q_RETURN_ARG(QStringList, candidates), Q_ARG(QObject*, this),
                                  Q_ARG(QString, context.expression));
    candidates = filterCandidates(candidates, context.partialWord);
    candidates.removeAll(QString());
    return candidates.isEmpty() ? words : candidates;
}

QList<qint64> KLTextView::delegate_textView_willChangeSelection(qint64, qint64, qint64 newStart,
                                                                qint64 newLength) {
    return {newStart, newLength};
}

void KLTextView::showCompletion() {
    shownCompletions_.clear();
    requestedCompletions_.clear();
    if (!ownerHas(KLTextViewOwnerCalls::GetCompletion))
        return;
    const CompletionContext context = completionContext(position());
    if (context.inTextOrComment)
        return;
    QStringList candidates;
    QMetaObject::invokeMethod(owner_, KLTextViewOwnerCalls::GetCompletion, Qt::DirectConnection,
                              Q_RETURN_ARG(QStringList, candidates), Q_ARG(QObject*, this),
                              Q_ARG(QString, context.expression));
    // A whole word with a completion text of its own ("msgbox" -> "MsgBox(text)") has
    // that text offered first.
    if (!context.partialWord.isEmpty() && ownerHas(KLTextViewOwnerCalls::GetCompletion2)) {
        const QString word = context.expression == NoContextMarker
                                 ? context.partialWord
                                 : context.expression + QLatin1Char('.') + context.partialWord;
        QString completion;
        QMetaObject::invokeMethod(owner_, KLTextViewOwnerCalls::GetCompletion2, Qt::DirectConnection,
                                  Q_RETURN_ARG(QString, completion), Q_ARG(QObject*, this), Q_ARG(QString, word));
        if (!completion.isEmpty()) {
            candidates.removeAll(completion);
            candidates.prepend(completion);
        }
    }
    candidates.removeAll(QString());
    requestedCompletions_ = candidates;
    refilterCompletion();
}

void KLTextView::refilterCompletion() {
    const CompletionContext context = completionContext(position());
    const QStringList fitting = filterCandidates(requestedCompletions_, context.partialWord);
    if (fitting.isEmpty()) {
        shownCompletions_.clear();
        if (isListActive())
            cancelList();
        return;
    }
    const QStringList shown = fitting.mid(0, MostCandidatesShown);
    if (shown == shownCompletions_ && isListActive())
        return; // the list shown already fits; it keeps its selection
    shownCompletions_ = shown;
    showUserList(CompletionListId, shownCompletions_);
}

void KLTextView::insertCompletion(const QString& chosen) {
    const CompletionContext context = completionContext(position());
    QString inserted = chosen;
    qint64 cursor = -1;
    const qsizetype open = chosen.indexOf(QLatin1Char('('));
    const qsizetype close = chosen.indexOf(QLatin1Char(')'), open + 1);
    if (open > 0 && close > open + 1) {
        // A member with parameters: the name and empty parentheses, the cursor inside.
        inserted = chosen.left(open) + QStringLiteral("()");
        cursor = context.wordStart + open + 1;
    }
    replaceUtf16(QString(), context.wordStart, position() - context.wordStart, inserted);
    if (cursor >= 0)
        SendScintilla(SCI_GOTOPOS, long(bytesFromUtf16(cursor)));
    shownCompletions_.clear();
    requestedCompletions_.clear();
}

void KLTextView::onCharAdded(int character) {
    if (character == '.') {
        showCompletion();
        return;
    }
    if (isWordChar(QChar(character))) {
        if (isListActive() && !requestedCompletions_.isEmpty()) {
            refilterCompletion();
            return;
        }
        const CompletionContext context = completionContext(position());
        if (context.partialWord.size() == LettersThatOpenTheList && !context.partialWord.front().isDigit())
            showCompletion();
        return;
    }
    if (isListActive())
        cancelList();
    if (character != '(' || !ownerHas(KLTextViewOwnerCalls::GetCompletion2))
        return;
    // The whole word before the parenthesis, with its dotted prefix ("me.list.Add"):
    // the expression and partial word that end in front of it.
    const CompletionContext before = completionContext(position() - 1);
    const QString word = before.expression == NoContextMarker
                             ? before.partialWord
                             : before.expression + QLatin1Char('.') + before.partialWord;
    const qint64 start =
        before.wordStart - (before.expression == NoContextMarker ? 0 : before.expression.size() + 1);
    if (word.isEmpty())
        return;
    QString completion;
    QMetaObject::invokeMethod(owner_, KLTextViewOwnerCalls::GetCompletion2, Qt::DirectConnection,
                              Q_RETURN_ARG(QString, completion), Q_ARG(QObject*, this), Q_ARG(QString, word));
    if (completion.isEmpty())
        return;
    const QByteArray tip = completion.toUtf8();
    SendScintilla(SCI_CALLTIPSHOW, bytesFromUtf16(start), tip.constData());
}

void KLTextView::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Space && (event->modifiers() & Qt::ControlModifier)) {
        showCompletion();
        return;
    }
    if (event->key() == Qt::Key_Backspace && isListActive()) {
        QsciScintilla::keyPressEvent(event);
        refilterCompletion();
        return;
    }
    if (encoding_ != TextEncoding::Utf8 && !event->text().isEmpty() && !isReadOnly()) {
        const QString kept = keepEncodable(event->text());
        if (kept != event->text()) {
            if (!kept.isEmpty()) {
                const QByteArray bytes = kept.toUtf8();
                SendScintilla(SCI_REPLACESEL, bytes.constData());
            }
            return;
        }
    }
    QsciScintilla::keyPressEvent(event);
}
