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
#include "insight/scan_record.h"

#include <QStringView>
#include <string_view>

// Scans `text` into a record. With `parts` above 1 a large text is cut at line breaks
// and the parts are scanned on that many threads at once; the record is the same as
// from one pass. Char is char for text that scannableAsBytes accepts (its UTF-8 bytes)
// and char16_t for decoded text.
template <class Char> ScanRecord<Char> recordDeclarations(std::basic_string_view<Char> text, int parts = 1);

// The navigator lists, scope starts and locals of a record, as Qt values.
template <class Char> DeclarationLists declarationListsOf(const ScanRecord<Char>& record);

// Both steps for a decoded text.
DeclarationLists scanDeclarations(QStringView text);

extern template ScanRecord<char> recordDeclarations<char>(std::string_view, int);
extern template ScanRecord<char16_t> recordDeclarations<char16_t>(std::u16string_view, int);
extern template DeclarationLists declarationListsOf<char>(const ScanRecord<char>&);
extern template DeclarationLists declarationListsOf<char16_t>(const ScanRecord<char16_t>&);
