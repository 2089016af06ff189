#pragma once
// What stands before the cursor when completion is asked for, read from the text of
// the cursor's line up to the cursor: the partial word being typed, and the expression
// in front of it ("me.list" of "me.list.Ad"), or the no-context marker when no point
// precedes the word. An expression never spans lines.

#include <QString>
#include <QStringList>
#include <QStringView>

struct CompletionLineContext {
    QString expression;   // the no-context marker when there is none
    QString partialWord;
    qsizetype wordStart = 0;      // in the line, UTF-16
    bool inTextOrComment = false; // the word stands in a quoted text or a comment
};

// `lineBeforeCursor` may be the last part of a long line only: `startsInText` and
// `startsInComment` then tell where the part before it left off.
CompletionLineContext completionContextOfLine(QStringView lineBeforeCursor, bool startsInText = false,
                                              bool startsInComment = false);

// Candidates of `all` that begin with `partialWord`, ignoring case, in their order, those
// that begin with it in its exact letter case first.
QStringList filterCompletionCandidates(const QStringList& all, const QString& partialWord);
