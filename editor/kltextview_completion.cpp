// The view's side of completion: it finds the expression and the partial word before
// the cursor, asks its owner for candidates, keeps those that begin with the partial
// word (ignoring case, in the owner's order) and shows them; the chosen text replaces
// the partial word. On "(" after a word it asks the owner for that word's completion
// text and shows it as a tip.
#include "editor/kltextview.h"

#include <QKeyEvent>

namespace {

bool isWordChar(QChar c) { return c.isLetterOrNumber() || c == u'_'; }

constexpr int CompletionListId = 1;

} // namespace

KLTextView::CompletionContext KLTextView::completionContext(qint64 utf16Position) const {
    CompletionContext context;
    const QString text = documentText();
    const qint64 pos = qBound<qint64>(0, utf16Position, text.size());
    qint64 wordStart = pos;
    while (wordStart > 0 && isWordChar(text[wordStart - 1]))
        --wordStart;
    context.wordStart = wordStart;
    context.partialWord = text.mid(wordStart, pos - wordStart);
    context.expression = NoContextMarker;
    if (wordStart > 0 && text[wordStart - 1] == u'.') {
        // The chain of words and points in front of the point: "me.list" of "me.list.Ad".
        qint64 exprStart = wordStart - 1;
        while (exprStart > 0 && (isWordChar(text[exprStart - 1]) || text[exprStart - 1] == u'.'))
            --exprStart;
        const QString expression = text.mid(exprStart, wordStart - 1 - exprStart);
        if (!expression.isEmpty())
            context.expression = expression;
    }
    return context;
}

QStringList KLTextView::filterCandidates(const QStringList& all, const QString& partialWord) {
    if (partialWord.isEmpty())
        return all;
    QStringList kept;
    for (const QString& candidate : all) {
        if (candidate.startsWith(partialWord, Qt::CaseInsensitive))
            kept << candidate;
    }
    return kept;
}

void KLTextView::showCompletion() {
    shownCompletions_.clear();
    if (!ownerHas(KLTextViewOwnerCalls::GetCompletion))
        return;
    const CompletionContext context = completionContext(position());
    QStringList candidates;
    QMetaObject::invokeMethod(owner_, KLTextViewOwnerCalls::GetCompletion, Qt::DirectConnection,
                              Q_RETURN_ARG(QStringList, candidates), Q_ARG(QObject*, this),
                              Q_ARG(QString, context.expression));
    candidates = filterCandidates(candidates, context.partialWord);
    candidates.removeAll(QString());
    if (candidates.isEmpty())
        return;
    shownCompletions_ = candidates;
    showUserList(CompletionListId, candidates);
}

void KLTextView::onCharAdded(int character) {
    if (character == '.') {
        showCompletion();
        return;
    }
    if (character != '(' || !ownerHas(KLTextViewOwnerCalls::GetCompletion2))
        return;
    // The whole word before the parenthesis, with its dotted prefix ("me.list.Add").
    const QString text = documentText();
    const qint64 paren = position() - 1;
    qint64 start = paren;
    while (start > 0 && (isWordChar(text[start - 1]) || text[start - 1] == u'.'))
        --start;
    const QString word = text.mid(start, paren - start);
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
    QsciScintilla::keyPressEvent(event);
}
