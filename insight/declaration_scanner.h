#pragma once
// The declaration scanner: a pure function from the text of one Kelvaro source file to
// its declaration lists, scope starts and local variables. No globals, no widgets; safe
// to call from any thread.
//
// The rules are fixed-text searches at line starts (see docs/SCANNER.md): a declaration
// is a line break followed by a kind prefix such as "Sub " or "Public Function ",
// matched ignoring letter case. The scan visits every line once, so its cost grows
// linearly with the size of the text.

#include "insight/declarations.h"

#include <QStringView>

DeclarationLists scanDeclarations(QStringView text);

// The small text rules the scanner is made of, shared with the tools that print its
// results.
namespace scanner_text {

// The text without blanks and tabs at either end (line breaks are kept).
QStringView trimBlanks(QStringView s);
// The name at the start of `s`: up to its first "(" or first blank, whichever comes
// first; all of `s` when it has neither.
QStringView nameOf(QStringView s);
// The type after the last " As " (letter case ignored), cut before its first blank,
// "(" or "'", trimmed, without line breaks; "" when there is no " As ".
QString typeOf(QStringView s);
// `line` with every double-quoted part removed, then cut before its first "'".
QString withoutQuotesAndComment(QStringView line);

} // namespace scanner_text
