#pragma once
// The JSON that `kelvaro --scan` prints, written by hand: building a QJsonObject is
// quadratic in its number of keys (each insert keeps the keys sorted), and a
// 200,000-line file has tens of thousands of locals, which took seconds. Output is
// UTF-8, control characters escaped, other characters kept as they are.

#include "insight/declarations.h"

#include <QByteArray>
#include <QString>

// Appends `text` as a JSON string literal.
void appendJsonString(QByteArray& out, QStringView text);

// Appends the object for one scanned file:
// {"path", "lists": {"All": [...], "Sub": [...], ...}, "lineSeparators",
//  "lineSeparatorsType", "locals"}; each entry {"title", "line", "visibility", "kind",
// "name", "parameters", "type"}.
void appendScanResultJson(QByteArray& out, const QString& path, const DeclarationLists& lists);
