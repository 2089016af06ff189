#pragma once
// A deliberately plain reading of the scanner's rules, used to check the fast engine:
// one substring search after another, line numbers recounted from the start for every
// match, and the merged list put in order with an exchange sort. Slow on purpose; only
// for tests and the fuzzer.

#include "insight/declarations.h"

#include <QString>

DeclarationLists referenceScan(const QString& text);

// "" when both results agree field for field, otherwise a description of the first
// difference (which list, which row, which field).
QString firstDifference(const DeclarationLists& expected, const DeclarationLists& actual);
