// The help documents the Help menu opens, and the generator that prints them.
#include "resource_files.h"
#include "support/test_environment.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QProcess>
#include <QProcessEnvironment>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QVariantMap>

#include <gtest/gtest.h>

using namespace resources_test;

namespace {

// Pages of a PDF, counted by its page objects.
int pageCount(const QByteArray& pdf) {
    static const QRegularExpression page(QStringLiteral("/Type\\s*/Page\\b(?!s)"));
    int count = 0;
    for (auto it = page.globalMatch(QString::fromLatin1(pdf)); it.hasNext(); it.next())
        ++count;
    return count;
}

QString generator() { return QStringLiteral(KELVARO_APP_DIR "/../docs/help/kelvaro_helpgen"); }

int runGenerator(const QStringList& arguments, QString* errors = nullptr) {
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("QT_QPA_PLATFORM", "offscreen");
    process.setProcessEnvironment(environment);
    process.start(generator(), arguments);
    if (!process.waitForFinished(60000)) {
        process.kill();
        process.waitForFinished();
        return -1;
    }
    if (errors)
        *errors = QString::fromUtf8(process.readAllStandardError());
    return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
}

} // namespace

TEST(HelpDocuments, PrintedDocumentsAreCompletePdfs) {
    for (const char* name : {"Quick Start.pdf", "General Manual.pdf", "Xcode.pdf"}) {
        SCOPED_TRACE(name);
        const QByteArray pdf = readFile(builtResources() + "/" + QString::fromLatin1(name));
        ASSERT_FALSE(pdf.isEmpty()) << "missing";
        EXPECT_TRUE(pdf.startsWith("%PDF"));
        EXPECT_TRUE(pdf.trimmed().endsWith("%%EOF")) << "cut short";
    }
    EXPECT_GE(pageCount(readFile(builtResources() + "/Quick Start.pdf")), 2);
    EXPECT_GE(pageCount(readFile(builtResources() + "/General Manual.pdf")), 5);
}

TEST(HelpDocuments, TextDocumentsAreShippedAndCoverTheRunnerAndEveryFunction) {
    for (const QString& folder : {sourceResources(), builtResources()}) {
        EXPECT_TRUE(readFile(folder + "/Readme.txt").contains("Release Notes")) << folder.toStdString();
        EXPECT_FALSE(readFile(folder + "/Language Reference.html").isEmpty()) << folder.toStdString();
    }
    const QString reference = QString::fromUtf8(readFile(sourceResources() + "/Language Reference.html"));
    EXPECT_TRUE(reference.contains("What the bundled runner supports"));
    EXPECT_TRUE(reference.contains("&lt;Class&gt;.&lt;SuperClass&gt;.klvr"));
    EXPECT_TRUE(reference.contains("Kelvaro: &lt;message&gt; in line N in file F"));
    // Every built-in function the editor completes is explained, in the form it completes to.
    const QVariantMap functions = vocabularyDictionary("function.plist");
    ASSERT_FALSE(functions.isEmpty());
    for (auto it = functions.cbegin(); it != functions.cend(); ++it)
        EXPECT_TRUE(reference.contains("<code>" + it.value().toString() + "</code>")) << it.key().toStdString();
    // Every library class has its entry.
    for (const QString& name : vocabularyDictionary("class.plist").keys())
        EXPECT_TRUE(reference.contains("id=\"" + name + "\"")) << name.toStdString();
}

TEST(HelpGenerator, DrawsAndPrintsIntoNewFilesAndBadInputFailsWithoutLeavingAFile) {
    if (!QFileInfo(generator()).isExecutable())
        GTEST_SKIP() << "the generator is not built";
    QTemporaryDir temp;
    ASSERT_TRUE(temp.isValid());
    writeFile(temp.filePath("box.svg"), "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 10 10\">"
                                    "<rect x=\"1\" y=\"1\" width=\"8\" height=\"8\" fill=\"#3366cc\"/></svg>");
    ASSERT_EQ(runGenerator({"png", temp.filePath("box.svg"), temp.filePath("box.png"), "48"}), 0);
    const QImage image(temp.filePath("box.png"));
    EXPECT_EQ(image.size(), QSize(48, 48));
    EXPECT_EQ(qAlpha(image.pixel(0, 0)), 0) << "outside the drawing stays transparent";
    EXPECT_EQ(image.pixel(24, 24), qRgb(0x33, 0x66, 0xcc));
    writeFile(temp.filePath("page.html"), "<html><body><h1>T\xc3\xadtulo</h1><p>Text <img src=\"box.png\"></p></body></html>");
    ASSERT_EQ(runGenerator({"pdf", temp.filePath("page.html"), temp.filePath("out.pdf"), "A title", temp.path()}), 0);
    const QByteArray pdf = readFile(temp.filePath("out.pdf"));
    EXPECT_TRUE(pdf.startsWith("%PDF"));
    EXPECT_EQ(pageCount(pdf), 1);

    // Bad input: nothing new is left behind.
    const QStringList made = QDir(temp.path()).entryList(QDir::Files);
    writeFile(temp.filePath("broken.svg"), "<svg><rect");
    QString errors;
    EXPECT_EQ(runGenerator({"png", temp.filePath("broken.svg"), temp.filePath("a.png"), "16"}, &errors), 1);
    EXPECT_TRUE(errors.contains("broken.svg")) << errors.toStdString();
    EXPECT_EQ(runGenerator({"png", temp.filePath("missing.svg"), temp.filePath("b.png"), "16"}), 1);
    EXPECT_EQ(runGenerator({"png", temp.filePath("broken.svg"), temp.filePath("c.png"), "0"}), 1);
    EXPECT_EQ(runGenerator({"png", temp.filePath("broken.svg"), temp.filePath("c.png"), "many"}), 1);
    EXPECT_EQ(runGenerator({"pdf", temp.filePath("missing.html"), temp.filePath("d.pdf"), "T", temp.path()}), 1);
    // An output folder that does not exist cannot be written.
    EXPECT_EQ(runGenerator({"pdf", generator(), temp.filePath("no/such/e.pdf"), "T", temp.path()}), 1);
    EXPECT_EQ(runGenerator({"unknown"}), 2);
    EXPECT_EQ(runGenerator({}), 2);
    QStringList expected = made + QStringList{"broken.svg"};
    expected.sort();
    const QStringList left = QDir(temp.path()).entryList(QDir::Files);
    EXPECT_EQ(left, expected) << left.join(", ").toStdString();
}
