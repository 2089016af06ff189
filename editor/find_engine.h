#pragma once
// Finding text in one document, as plain code over the document's text. The editor
// view turns its selection into positions, asks these functions, and selects what
// they return. Positions are 0-based UTF-16 offsets, as everywhere in the runtime.
//
// Matching: the needle's characters in a row; with ignoreCase, letters match
// regardless of case (Unicode case folding per character). A match always lies whole
// inside the scope [scopeStart, scopeEnd). An empty needle matches nothing.

#include <QList>
#include <QString>

struct FindMatch {
    qint64 start = -1;
    qint64 length = 0;
    bool found() const { return start >= 0; }
    qint64 end() const { return start + length; }
    friend bool operator==(const FindMatch&, const FindMatch&) = default;
};

struct FindScope {
    qint64 start = 0;
    qint64 end = -1; // -1: to the end of the text
};

namespace find_engine {

// The first match that starts at or after `from`; when there is none, the search
// wraps around to the start of the scope. not found when the scope holds no match.
FindMatch findForward(const QString& text, const QString& needle, qint64 from, FindScope scope,
                      bool ignoreCase);

// The last match that ends at or before `before`; when there is none, the search
// wraps around to the end of the scope.
FindMatch findBackward(const QString& text, const QString& needle, qint64 before, FindScope scope,
                       bool ignoreCase);

// True when text[start, start + length) is exactly an occurrence of the needle.
bool isMatch(const QString& text, const QString& needle, qint64 start, qint64 length, bool ignoreCase);

// Every match in the scope, left to right, never overlapping (the search goes on after
// each match's end, so "aaa" holds one "aa").
QList<qint64> allMatches(const QString& text, const QString& needle, FindScope scope, bool ignoreCase);

} // namespace find_engine
