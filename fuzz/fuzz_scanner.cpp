// libFuzzer entry for the declaration scanner. Any bytes are decoded as the editor
// decodes a file (UTF-8, else Windows-1252) and scanned; the result must keep the lists' own invariants, and for inputs small enough
// for the slow reference reading it must equal that reading field for field. Every
// other way to scan the same bytes must give the same lists: as bytes when they may be,
// cut into parts on several threads, through a kept scan whose lists are made later,
// and as the --scan JSON read back.
#include "insight/declaration_scanner.h"
#include "insight/file_scan.h"
#include "insight/scan_json.h"
#include "insight/source_text.h"
#include "scan_json_check.h"
#include "scanner_reference.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace {

[[noreturn]] void fail(const QString& why) {
    std::fprintf(stderr, "scanner invariant broken: %s\n", why.toLocal8Bit().constData());
    std::abort();
}

void checkList(const DeclarationList& list, const QString& word) {
    if (list.rows.size() < 2 || list.rows[0].row != DeclarationEntry::Row::Heading ||
        list.rows[1].row != DeclarationEntry::Row::Separator)
        fail(word + ": heading or separator missing");
    if (list.rows[0].title != QString("%1 (%2)").arg(word).arg(list.entryCount()))
        fail(word + ": heading " + list.rows[0].title + " does not count the entries");
    for (qsizetype i = 0; i < list.entryCount(); ++i)
        if (!list.entry(i).isEntry() || list.entry(i).tag != 1)
            fail(word + ": entry row without tag 1");
}

void checkInvariants(const QString& text, const DeclarationLists& lists) {
    const qint64 lineCount = text.count(QLatin1Char('\n')) + 1;
    qsizetype kindEntries = 0;
    for (DeclarationKind kind : allDeclarationKinds()) {
        checkList(lists.list(kind), declarationKindInfo(kind).word);
        kindEntries += lists.list(kind).entryCount();
    }
    checkList(lists.all, "All");
    if (lists.all.entryCount() != kindEntries)
        fail("All does not hold every entry");
    qint64 previous = 0;
    for (qsizetype i = 0; i < lists.all.entryCount(); ++i) {
        const qint64 line = lists.all.entry(i).line;
        if (line <= previous || line < 2 || line > lineCount)
            fail(QString("line %1 out of order or outside the text").arg(line));
        previous = line;
    }
    if (lists.lineSeparators.size() != lists.lineSeparatorsType.size())
        fail("scope start lists differ in length");
    for (qint64 position : lists.lineSeparators)
        if (position < 0 || position >= text.size() || text[position] != QLatin1Char('\n'))
            fail("scope start is not a line break");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));
    const QString text = decodedSourceText(bytes);
    const DeclarationLists lists = scanDeclarations(text);
    checkInvariants(text, lists);

    const std::string_view raw(bytes.constData(), size_t(bytes.size()));
    const std::u16string_view utf16(reinterpret_cast<const char16_t*>(text.utf16()), size_t(text.size()));
    auto same = [&](const DeclarationLists& other, const char* how) {
        const QString difference = firstDifference(lists, other);
        if (!difference.isEmpty())
            fail(QString("%1 differs: %2").arg(how, difference));
    };
    same(declarationListsOf(recordDeclarations(utf16, 3)), "three parts");
    if (scannableAsBytes(raw)) {
        same(declarationListsOf(recordDeclarations(raw)), "bytes");
        same(declarationListsOf(recordDeclarations(raw, 2)), "bytes in two parts");
    }
    same(FileScan(bytes).lists(), "kept scan");
    JsonOutput json;
    withSourceText(bytes, [&](auto source) { appendScanResultJson(json, u"F.klvr", recordDeclarations(source)); });
    QJsonParseError error;
    const QJsonObject object = QJsonDocument::fromJson(json.toByteArray(), &error).object();
    if (error.error != QJsonParseError::NoError)
        fail("the JSON does not parse: " + error.errorString());
    if (const QString difference = jsonDifference(object, lists); !difference.isEmpty())
        fail("the JSON differs: " + difference);
    if (text.size() <= 4096) {
        const QString difference = firstDifference(referenceScan(text), lists);
        if (!difference.isEmpty())
            fail("differs from the reference reading: " + difference);
    }
    return 0;
}
