#pragma once
// The JSON that `kelvaro --scan` prints for one file, written by hand straight from the
// scanner's record: building a QJsonObject is quadratic in its number of keys (each
// insert keeps the keys sorted), and a 200,000-line file has tens of thousands of
// locals. Output is UTF-8, control characters escaped, other characters kept.

#include "insight/json_output.h"
#include "insight/scan_record.h"

#include <QStringView>

// Appends the object for one scanned file:
// {"path", "lists": {"All": [...], "Sub": [...], ...}, "lineSeparators",
//  "lineSeparatorsType", "locals"}; each entry {"title", "line", "visibility", "kind",
// "name", "parameters", "type"}. A local declared twice appears once, with the type
// the lists give it (the later Dim, a parameter before any Dim).
template <class Char> void appendScanResultJson(JsonOutput& out, QStringView path, const ScanRecord<Char>& record);

// The same object in two pieces that may be written at the same time and are printed
// one after the other: everything up to the scope starts, then the locals and the
// closing brace.
template <class Char> void appendListsJson(JsonOutput& out, QStringView path, const ScanRecord<Char>& record);
template <class Char> void appendLocalsJson(JsonOutput& out, const ScanRecord<Char>& record);

extern template void appendListsJson<char>(JsonOutput&, QStringView, const ScanRecord<char>&);
extern template void appendListsJson<char16_t>(JsonOutput&, QStringView, const ScanRecord<char16_t>&);
extern template void appendLocalsJson<char>(JsonOutput&, const ScanRecord<char>&);
extern template void appendLocalsJson<char16_t>(JsonOutput&, const ScanRecord<char16_t>&);
extern template void appendScanResultJson<char>(JsonOutput&, QStringView, const ScanRecord<char>&);
extern template void appendScanResultJson<char16_t>(JsonOutput&, QStringView, const ScanRecord<char16_t>&);
