#include "insight/completion_context.h"

#include "insight/completion.h"

namespace {

bool isWordChar(QChar c) { return c.isLetterOrNumber() || c == u'_'; }

// Whether the end of `line` lies in a quoted text or a comment ("'" outside quotes).
bool endsInTextOrComment(QStringView line, bool quoted) {
    for (const QChar c : line) {
        if (c == u'"')
            quoted = !quoted;
        else if (c == u'\'' && !quoted)
            return true;
    }
    return quoted;
}

} // namespace

CompletionLineContext completionContextOfLine(QStringView text, bool startsInText, bool startsInComment) {
    CompletionLineContext context;
    const qsizetype pos = text.size();
    qsizetype wordStart = pos;
    while (wordStart > 0 && isWordChar(text[wordStart - 1]))
        --wordStart;
    context.wordStart = wordStart;
    context.partialWord = text.mid(wordStart, pos - wordStart).toString();
    context.expression = QString::fromUtf16(completionNoContextMarker);
    context.inTextOrComment = startsInComment || endsInTextOrComment(text.left(wordStart), startsInText);
    if (wordStart > 0 && text[wordStart - 1] == u'.') {
        qsizetype exprStart = wordStart - 1;
        while (exprStart > 0 && (isWordChar(text[exprStart - 1]) || text[exprStart - 1] == u'.'))
            --exprStart;
        const QStringView expression = text.mid(exprStart, wordStart - 1 - exprStart);
        if (!expression.isEmpty())
            context.expression = expression.toString();
    }
    return context;
}

QStringList filterCompletionCandidates(const QStringList& all, const QString& partialWord) {
    if (partialWord.isEmpty())
        return all;
    QStringList exactCase;
    QStringList otherCase;
    for (const QString& candidate : all) {
        if (candidate.startsWith(partialWord))
            exactCase << candidate;
        else if (candidate.startsWith(partialWord, Qt::CaseInsensitive))
            otherCase << candidate;
    }
    return exactCase + otherCase;
}
