#pragma once
// Completion's answers: the candidates for the expression before the cursor, and the
// completion text of one whole word. Plain code over the vocabulary tables and type
// resolution that returns values; the editor view shows, filters and inserts them.

#include "frame/value.h"
#include "insight/type_resolution.h"

#include <QString>
#include <QStringList>

// The expression an editor view passes when nothing stands before the word.
inline constexpr char16_t completionNoContextMarker[] = u"!\u00a7$%&/()=?";

// The vocabulary tables completion reads. The references must outlive the call.
struct CompletionVocabulary {
    const Value& functions;      // lower-case function name -> completion text
    const QStringList& constants;
    const Value& objects;        // predefined object -> member map
    const Value& classes;        // vocabulary class -> member map
};

// Candidates, in order and with duplicates, for `expression` (or the no-context
// marker) written at `position` of the file at `path`.
QStringList completionCandidates(const TypeResolver& resolver, const CompletionVocabulary& vocabulary,
                                 const QString& path, qint64 position, const QString& expression);
// The completion text of `word` ("msgbox", "text.length"), "" when none.
QString completionText(const TypeResolver& resolver, const CompletionVocabulary& vocabulary, const QString& path,
                       qint64 position, const QString& word);
