// The fast engine against the plain reference reading, on generated sources and on
// inputs the fuzzer found.
#include "insight/declaration_scanner.h"
#include "scanner_random_source.h"
#include "scanner_reference.h"

#include <gtest/gtest.h>

TEST(ScannerAgreement, EngineEqualsReferenceOnThousandsOfGeneratedSourcesShortAndLong) {
    int withDeclarations = 0;
    int withLocals = 0;
    for (quint32 start = 1; start <= 100019; start = start == 4000 ? 100000 : start + 1) {
        // After four thousand short sources come twenty long ones.
        const QString text = start < 100000 ? randomKelvaroSource(start) : randomKelvaroSource(start, 600);
        const DeclarationLists expected = referenceScan(text);
        const QString difference = firstDifference(expected, scanDeclarations(text));
        ASSERT_TRUE(difference.isEmpty()) << "start value " << start << ": " << difference.toStdString()
                                          << "\ntext: " << text.toStdString();
        withDeclarations += expected.all.entryCount() > 0;
        withLocals += !expected.locals.isEmpty();
    }
    // The generator must actually exercise the rules.
    EXPECT_GT(withDeclarations, 3000);
    EXPECT_GT(withLocals, 2000);
}

TEST(ScannerAgreement, EngineEqualsReferenceOnOddCharacters) {
    const QStringList odd = {
        QString(), "\n", "\n\n", "\r\n", "\nSub ", "\nSub \n", "\nSub (\n", "\nſub F(\n",
        "\n\u212Aey\nSUB K(", "\nIBACTION X(a)\n", "\n\"\n\"Dim \"x\n", "\"\n Dim x\n",
        QString("\nSub A(") + QChar(0) + ")\n", "\nDim \xD8\n", QString::fromUtf8("\n\xF0\x9F\x98\x80Sub X()\n"),
        "\n\n Dim a\n\n\nDim b\n", "\r\r\n\nDim x As Integer\r\n", "\nPublic Dim \n Dim \n"};
    for (const QString& text : odd) {
        const QString difference = firstDifference(referenceScan(text), scanDeclarations(text));
        EXPECT_TRUE(difference.isEmpty()) << "text " << text.toStdString() << ": " << difference.toStdString();
    }
}
