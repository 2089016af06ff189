// The ways one text can be scanned must all give the same lists: UTF-16 or ASCII bytes,
// one pass or cut into parts on several threads, and the --scan JSON written straight
// from the record.
#include "insight/declaration_scanner.h"
#include "insight/file_scan.h"
#include "insight/scan_json.h"
#include "insight/source_text.h"
#include "scan_json_check.h"
#include "scanner_random_source.h"
#include "scanner_reference.h"

#include <QFile>
#include <QJsonDocument>
#include <gtest/gtest.h>

namespace {

std::u16string_view utf16(const QString& text) {
    return {reinterpret_cast<const char16_t*>(text.utf16()), size_t(text.size())};
}

DeclarationLists inParts(const QString& text, int parts) {
    return declarationListsOf(recordDeclarations(utf16(text), parts));
}

// The generator's text with its few non-ASCII letters replaced.
QString asciiOnly(QString text) {
    for (QChar& c : text)
        if (c.unicode() >= 128)
            c = QLatin1Char(c.unicode() == 0x017F ? 's' : 'K');
    return text;
}

// The generator's text with its two letters that fold onto ASCII ones replaced by
// letters of two, three and four UTF-8 bytes, so that byte and UTF-16 positions differ.
QString otherLetters(QString text) {
    text.replace(QChar(0x017F), QString::fromUtf8("\xC3\xA9"));          // é
    text.replace(QChar(0x212A), QString::fromUtf8("\xF0\x9F\x98\x80"));  // an emoji, two UTF-16 units
    return QString::fromUtf8("' \xE6\x97\xA5\xE6\x9C\xAC\n") + text; // two three-byte letters first
}

template <class Char> QJsonObject jsonOf(const ScanRecord<Char>& record) {
    JsonOutput out;
    appendScanResultJson(out, u"F.klvr", record);
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(out.toByteArray(), &error);
    EXPECT_EQ(error.error, QJsonParseError::NoError) << error.errorString().toStdString();
    return document.object();
}

} // namespace

TEST(ScannerParts, CuttingTheTextIntoPartsChangesNothingNorTheJson) {
    int cut = 0;
    for (quint32 start = 1; start <= 3000; ++start) {
        const QString text = randomKelvaroSource(start, 60);
        const DeclarationLists whole = scanDeclarations(text);
        if (start <= 400) { // the JSON written from a record cut in two holds the lists
            EXPECT_EQ(jsonDifference(jsonOf(recordDeclarations(utf16(text), 2)), whole), "") << start;
        }
        for (int parts : {2, 3, 5, 9}) {
            const QString difference = firstDifference(whole, inParts(text, parts));
            ASSERT_TRUE(difference.isEmpty()) << "start value " << start << ", " << parts
                                              << " parts: " << difference.toStdString()
                                              << "\ntext: " << text.toStdString();
        }
        cut += text.count(QLatin1Char('\n')) > 4;
    }
    EXPECT_GT(cut, 2000); // most texts were long enough to be cut
}

TEST(ScannerParts, StateThatCrossesACut) {
    // Each text is cut near its middle; each crossing piece of state sits there.
    const QStringList texts = {
        // A local right after the cut belongs to the scope before it.
        "\nSub Before(a As T)\n" + QString(40, 'x') + "\n  Dim local As Integer\n" + QString(40, 'y') + "\n",
        // No scope before the cut: the key has an empty scope.
        "x\n" + QString(40, 'x') + "\n  Dim local As Integer\n" + QString(40, 'y') + "\n",
        // The parameter scan of "\nSub " ends before the cut; later parameters are dropped.
        "\nSub NoParens\n" + QString(40, 'x') + "\nSub Later(b As U)\n" + QString(40, 'y') + "\n(",
        // Runs of empty lines around the middle: an empty line joins the next line.
        "\nSub S(a)\n" + QString(40, '\n') + "  Dim d As D\n" + QString(41, '\n') + " Dim e As E\n",
        // A declaration on the line that ends at the cut, and one just after it.
        "\nSub A(p)\n" + QString(38, 'z') + "\nSub B(q As Q)\nFunction C(r) As R\n Dim s As S\n",
        // CRLF everywhere.
        "\r\nSub A(p As P)\r\n" + QString(30, 'z') + "\r\n  Dim t As T\r\n" + QString(30, 'z') + "\r\n",
    };
    for (const QString& text : texts) {
        const DeclarationLists whole = scanDeclarations(text);
        EXPECT_EQ(firstDifference(referenceScan(text), whole), "") << text.toStdString();
        for (int parts = 2; parts <= 12; ++parts)
            EXPECT_EQ(firstDifference(whole, inParts(text, parts)), "") << parts << " parts: " << text.toStdString();
    }
}

TEST(ScannerParts, AsciiAndUtf8BytesScanLikeTheirDecodedTextAndTheirJsonHoldsTheLists) {
    for (quint32 start = 1; start <= 2000; ++start) {
        const QString random = randomKelvaroSource(start, 60);
        for (const bool ascii : {true, false}) {
            const QString text = ascii ? asciiOnly(random) : otherLetters(random);
            const QByteArray bytes = text.toUtf8();
            const std::string_view raw(bytes.constData(), size_t(bytes.size()));
            ASSERT_EQ(isAscii(raw), ascii);
            ASSERT_TRUE(scannableAsBytes(raw));
            const DeclarationLists decoded = scanDeclarations(text);
            for (int parts : {1, 3}) {
                const auto record = recordDeclarations(raw, parts);
                const QString difference = firstDifference(decoded, declarationListsOf(record));
                ASSERT_TRUE(difference.isEmpty()) << "start value " << start << " ascii " << ascii << ": "
                                                  << difference.toStdString();
                if (start <= 400) {
                    ASSERT_EQ(jsonDifference(jsonOf(record), decoded), "") << start;
                }
            }
        }
    }
}

TEST(ScannerParts, BytesAreScannedAsTheyAreOnlyWhenThatChangesNothing) {
    auto scannable = [](const QByteArray& bytes) {
        return scannableAsBytes(std::string_view(bytes.constData(), size_t(bytes.size())));
    };
    EXPECT_TRUE(scannable(""));
    EXPECT_TRUE(scannable("\nSub A()\n"));
    EXPECT_TRUE(scannable("\nSub Caf\xC3\xA9()\n \xEF\xBB\xBF \xF0\x9F\x98\x80 \xE6\x97\xA5"));
    // A byte order mark at the start is dropped by decoding, so those bytes are decoded.
    EXPECT_FALSE(scannable("\xEF\xBB\xBF\nSub A()\n"));
    // The two letters that match "s" and "k" when letter case is ignored.
    EXPECT_FALSE(scannable("\n\xC5\xBFub A()\n"));
    EXPECT_FALSE(scannable("x \xE2\x84\xAA"));
    // Invalid UTF-8, which decoding replaces.
    for (const QByteArray& invalid : {QByteArray("\x80"), QByteArray("a\xC0\x80"), QByteArray("\xED\xA0\x80"),
                                      QByteArray("\xF4\x90\x80\x80"), QByteArray("abc\xE2\x82"),
                                      QByteArray("\xF5\x80\x80\x80"), QByteArray("\xE0\x80\xAF"),
                                      QByteArray("\xC3(")})
        EXPECT_FALSE(scannable(invalid)) << invalid.toHex().toStdString();
    // Whatever is decoded gives the same lists through both entry points.
    for (const QByteArray& bytes : {QByteArray("\n\xC5\xBFub S(a)\n"), QByteArray("\nSub A(\xED\xA0\x80)\n Dim x\n"),
                                    QByteArray("\xEF\xBB\xBFx\nSub A(b)\nSub C(\xC3\xA9)\n")}) {
        const DeclarationLists lists =
            withSourceText(bytes, [](auto text) { return declarationListsOf(recordDeclarations(text)); });
        EXPECT_EQ(firstDifference(scanDeclarations(decodedSourceText(bytes)), lists), "");
    }
    // Bytes that are not UTF-8 are read as Windows-1252, as the code pane shows them: the
    // names are the file's letters, one character a byte.
    const QByteArray windows1252("' caf\xe9\n\nSub Gr\xf6\xdf" "e(a As Integer)\nEnd Sub\n");
    const FileScan scan(windows1252);
    const DeclarationList& subs = scan.lists().list(DeclarationKind::Sub);
    ASSERT_EQ(subs.entryCount(), 1);
    EXPECT_EQ(subs.entry(0).name, QStringLiteral("Größe"));
    EXPECT_EQ(scan.lists().lineSeparators, QList<qint64>{7});
}

TEST(ScannerParts, InputsTheFuzzerFoundScanAlikeOnEveryPath) {
    // A parameter named by a byte order mark lost it when its bytes were turned into a
    // string, because Qt's decoder drops a mark at the start.
    const QByteArray markFound = QByteArray::fromBase64(
        "ClN1YiBGb28oLCwsLCzvu78sLCwsLCwsLGEsLCwsLCwsLCwsLCwsLCwsLCx+Q2xhc3ViIEEoKQ1lcg0KU3ViIEEoKQ0KcyBJbnRlZ2VyClN1"
        "YiBGb28oYSBBcyBJbnRlZ2VyLCBiLCwsLCkKICAsLA==");
    const QByteArray mark("\nSub Foo(\xEF\xBB\xBF)\n Dim \xEF\xBB\xBFx As \xEF\xBB\xBFT\n");
    // The local-line rule skips the line's first character, which on the bytes path was
    // one byte of a letter of two, three or four bytes (the last is two UTF-16 units).
    const QByteArray letters("\xC3\xA9  Dim a As A\nSub Foo(p)\n\xC3\xA9  Dim x As T\n\xE6\x97\xA5 Dim y As U\n"
                             "\xF0\x9F\x98\x80  Dim z As V\n\xF0\x9F\x98\x80x Dim w As W\n\xC3\xA9" "Dim v As X\n");
    // A type starting with U+FEFF came back without it from Qt's JSON reader, which drops
    // an unescaped mark at the start of a string.
    const QByteArray markedType("\nEvent Changed(v As \xEF\xBB\xBF" "eger)\n \xEF\xBB\xBF" "Dim x As \xEF\xBB\xBF" "T\n"
                                "Sub \xEF\xBB\xBFS(a)\n Dim y\n");
    for (const QByteArray& bytes : {markFound, mark, letters, markedType}) {
        SCOPED_TRACE(bytes.toHex().toStdString());
        const std::string_view raw(bytes.constData(), size_t(bytes.size()));
        ASSERT_TRUE(scannableAsBytes(raw));
        const QString text = QString::fromUtf8(bytes);
        const DeclarationLists decoded = scanDeclarations(text);
        for (int parts : {1, 2, 3})
            EXPECT_EQ(firstDifference(decoded, declarationListsOf(recordDeclarations(raw, parts))), "") << parts;
        EXPECT_EQ(firstDifference(decoded, FileScan(bytes).lists()), "");
        for (const QJsonObject& object : {jsonOf(recordDeclarations(raw)), jsonOf(recordDeclarations(utf16(text)))})
            EXPECT_EQ(jsonDifference(object, decoded), "");
    }
    EXPECT_EQ(scanDeclarations(QString::fromUtf8(mark)).locals.value(QString("Foo.") + QChar(0xFEFF)), "NSObject");
    EXPECT_EQ(scanDeclarations(QString::fromUtf8(letters)).locals.value("Foo.x"), "T");
    EXPECT_EQ(scanDeclarations(QString::fromUtf8(markedType)).locals.value("Changed.v"), QChar(0xFEFF) + QString("eger"));
    JsonOutput out;
    appendScanResultJson(out, u"F.klvr", recordDeclarations(std::string_view(markedType.constData(), size_t(markedType.size()))));
    EXPECT_FALSE(out.toByteArray().contains("\xEF\xBB\xBF")) << "a mark written unescaped";
    QFile found(KELVARO_SOURCE_DIR "/fuzz/corpus/letter-before-indented-dim");
    ASSERT_TRUE(found.open(QIODevice::ReadOnly));
    const QByteArray input = found.readAll();
    EXPECT_EQ(firstDifference(scanDeclarations(QString::fromUtf8(input)), FileScan(input).lists()), "");
}

TEST(ScannerParts, AsciiTestLooksAtEveryByte) {
    QByteArray bytes(100, 'a');
    for (int at : {0, 31, 32, 63, 64, 95, 99}) {
        QByteArray one = bytes;
        one[at] = char(0xC3);
        EXPECT_FALSE(isAscii(std::string_view(one.constData(), size_t(one.size())))) << at;
    }
    EXPECT_TRUE(isAscii(std::string_view(bytes.constData(), size_t(bytes.size()))));
    EXPECT_TRUE(isAscii({}));
    // withSourceText decodes only what is not ASCII, and both ways give the same lists.
    const QByteArray utf8 = QString("\nSub Caf\u00e9(x As T)\n Dim y As U\n").toUtf8();
    const DeclarationLists lists =
        withSourceText(utf8, [](auto text) { return declarationListsOf(recordDeclarations(text)); });
    EXPECT_EQ(lists.all.entry(0).name, QString("Caf\u00e9"));
    EXPECT_EQ(lists.locals.value(QString("Caf\u00e9.y")), "U");
}

TEST(ScannerParts, JsonNamesEachLocalOnceWithTheTypeTheListsGiveIt) {
    // "a.b" + ".c" and "a" + ".b.c" are one key; a later Dim and a parameter replace it.
    const QString text = "\nSub a.b()\n Dim c As First\nSub a()\n Dim b.c As Second\n Dim x As One\n"
                         " Dim x As Two\nSub P(x As Param)\n Dim x As Three\n";
    const DeclarationLists lists = scanDeclarations(text);
    EXPECT_EQ(lists.locals.value("a.b.c"), "Second");
    EXPECT_EQ(lists.locals.value("a.x"), "Two");
    EXPECT_EQ(lists.locals.value("P.x"), "Param");
    JsonOutput out;
    appendScanResultJson(out, u"F.klvr", recordDeclarations(utf16(text)));
    const QByteArray json = out.toByteArray();
    EXPECT_EQ(json.count("\"a.b.c\":"), 1);
    EXPECT_EQ(json.count("\"P.x\":"), 1);
    EXPECT_EQ(jsonDifference(QJsonDocument::fromJson(json).object(), lists), "");
}

TEST(ScannerParts, JsonOutputKeepsLongStringsWholeAcrossChunks) {
    // Entries larger than a chunk, and many of them, so entries straddle chunk ends.
    QString text = "\n";
    for (int i = 0; i < 300; ++i)
        text += "Sub S" + QString::number(i) + "(" + QString(5000 + i, QChar(i % 2 ? u'\u00e9' : u'"')) + ")\n";
    text += "Sub Huge(" + QString(3 << 20, 'h') + ")\n";
    const DeclarationLists lists = scanDeclarations(text);
    EXPECT_EQ(jsonDifference(jsonOf(recordDeclarations(utf16(text), 2)), lists), "");
}
