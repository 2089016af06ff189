// The command line: the real executable as a child process, with no display.
#include "insight/declaration_scanner.h"
#include "scanner_random_source.h"
#include "scanner_reference.h"
#include "scan_json_check.h"
#include "support/test_environment.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QProcessEnvironment>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

struct ChildRun {
    int status = -1;
    QByteArray out;
    QByteArray err;
};

// Runs kelvaro with `args` and neither a display nor a platform plugin set, so a
// command that touched the window system would fail.
ChildRun runKelvaro(const QStringList& args, const QString& program = {}) {
    QProcess process;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
        env.remove(name);
    process.setProcessEnvironment(env);
    process.start(program.isEmpty() ? QString(KELVARO_APP_DIR "/Contents/MacOS/kelvaro") : program, args);
    EXPECT_TRUE(process.waitForFinished(60000));
    return {process.exitCode(), process.readAllStandardOutput(), process.readAllStandardError()};
}

} // namespace

TEST(ScannerCommand, ScanPrintsOneObjectPerFileInArgumentOrderAgreeingWithTheReference) {
    QTemporaryDir dir;
    QStringList files;
    for (quint32 start = 7; start < 47; ++start)
        files << writeFile(dir.filePath(QString("F%1.NSObject.klvr").arg(start)), randomKelvaroSource(start, 80).toUtf8());
    files << writeFile(dir.filePath("Odd \"name\"\t\u00e9.klvr"), "\nSub Caf\u00e9(x As \"q\\\")\n\x01\n");

    const ChildRun run = runKelvaro(QStringList{"--scan"} + files);
    ASSERT_EQ(run.status, 0) << run.err.toStdString();
    EXPECT_TRUE(run.err.isEmpty());
    QJsonParseError error;
    const QJsonArray array = QJsonDocument::fromJson(run.out, &error).array();
    ASSERT_EQ(error.error, QJsonParseError::NoError) << error.errorString().toStdString();
    ASSERT_EQ(array.size(), files.size());
    for (int i = 0; i < files.size(); ++i) {
        const QJsonObject object = array[i].toObject();
        EXPECT_EQ(object["path"].toString(), files[i]);
        QFile file(files[i]);
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        const QString text = QString::fromUtf8(file.readAll());
        EXPECT_EQ(jsonDifference(object, referenceScan(text)), "") << files[i].toStdString();
    }
    // Non-ASCII text stays itself in the output.
    EXPECT_EQ(array.last()["lists"]["Sub"][0]["name"].toString(), QString("Caf\u00e9"));
}

TEST(ScannerCommand, UnreadableFilesAndFoldersFailAfterTheOthersArePrinted) {
    QTemporaryDir dir;
    const QString good = writeFile(dir.filePath("Good.NSObject.klvr"), "\nSub A()\n");
    const QString missing = dir.filePath("Missing.NSObject.klvr");
    const ChildRun run = runKelvaro({"--scan", missing, good, dir.path()});
    EXPECT_EQ(run.status, 1);
    const QJsonArray array = QJsonDocument::fromJson(run.out).array();
    ASSERT_EQ(array.size(), 1);
    EXPECT_EQ(array[0]["path"].toString(), good);
    EXPECT_TRUE(run.err.contains(missing.toLocal8Bit()));
    EXPECT_TRUE(run.err.contains(dir.path().toLocal8Bit()));

    const ChildRun none = runKelvaro({"--scan"});
    EXPECT_EQ(none.status, 2);
    EXPECT_TRUE(none.out.isEmpty());
    // Tags of a missing folder fail without writing anything.
    const ChildRun tags = runKelvaro({"--tags", dir.filePath("nowhere")});
    EXPECT_EQ(tags.status, 1);
    EXPECT_TRUE(tags.err.contains("nowhere"));
    EXPECT_FALSE(QFile::exists(dir.filePath("nowhere/tags")));
}

TEST(ScannerCommand, TagsFileIsSortedAndReadableByCtagsTools) {
    QTemporaryDir dir;
    writeFile(dir.filePath("Global.NSObject.klvr"),
          "Class\nPublic Sub Start()\nEnd Sub\nFunction Sum(a As Integer) As Integer\nEnd Function\nDim count\n"
          "Const MAX = 1\nEvent Changed(x)\nDelegate D(a)\nIBOutlet button As NSButton\nIBAction Click(s)\n"
          "Action Go(x)\nSub Last()");
    writeFile(dir.filePath("alpha.NSObject.klvr"), "\nSub Start()\nSub \tBad()\n");
    writeFile(dir.filePath("notes.txt"), "\nSub Ignored()\n");
    const ChildRun run = runKelvaro({"--tags", dir.path()});
    ASSERT_EQ(run.status, 0) << run.err.toStdString();
    EXPECT_TRUE(run.out.startsWith("10 tags written to ")) << run.out.toStdString();

    QFile file(dir.filePath("tags"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QList<QByteArray> lines = file.readAll().split('\n');
    ASSERT_TRUE(lines[0].startsWith("!_TAG_FILE_FORMAT\t2\t"));
    ASSERT_TRUE(lines[1].startsWith("!_TAG_FILE_SORTED\t1\t"));
    QList<QByteArray> tags;
    for (const QByteArray& line : lines)
        if (!line.isEmpty() && !line.startsWith("!_TAG_"))
            tags << line;
    ASSERT_EQ(tags.size(), 10);
    EXPECT_TRUE(std::is_sorted(tags.begin(), tags.end()));
    EXPECT_TRUE(tags.contains("Sum\tGlobal.NSObject.klvr\t4;\"\tkind:f\tline:4\tclass:Global"));
    EXPECT_TRUE(tags.contains("button\tGlobal.NSObject.klvr\t10;\"\tkind:o\tline:10\tclass:Global"));
    EXPECT_TRUE(tags.contains("Start\talpha.NSObject.klvr\t2;\"\tkind:s\tline:2\tclass:alpha"));

    // The ctags project's own reader finds a declaration by name in the file.
    const QString readtags = QStandardPaths::findExecutable("readtags");
    if (readtags.isEmpty())
        GTEST_SKIP() << "readtags is not installed";
    const ChildRun found = runKelvaro({"-t", dir.filePath("tags"), "-e", "Click"}, readtags);
    EXPECT_EQ(found.status, 0);
    EXPECT_TRUE(found.out.startsWith("Click\tGlobal.NSObject.klvr\t11;\"")) << found.out.toStdString();
}

TEST(ScannerCommand, LargeFileScannedInPartsGivesTheListsOfOnePass) {
    // Above a megabyte a single file is cut into parts on every core; once as ASCII
    // bytes and once with non-ASCII letters (decoded).
    QTemporaryDir dir;
    QString text;
    for (quint32 start = 1; text.size() < (3 << 19); ++start)
        text += randomKelvaroSource(start, 200) + "\n";
    QString ascii = text;
    for (QChar& c : ascii)
        if (c.unicode() >= 128)
            c = QLatin1Char('k');
    for (const QString& content : {ascii, text}) {
        const QString path = writeFile(dir.filePath("Big.NSObject.klvr"), content.toUtf8());
        const ChildRun run = runKelvaro({"--scan", path});
        ASSERT_EQ(run.status, 0) << run.err.toStdString();
        const QJsonArray array = QJsonDocument::fromJson(run.out).array();
        ASSERT_EQ(array.size(), 1);
        const DeclarationLists lists = scanDeclarations(content);
        EXPECT_GT(lists.all.entryCount(), 10000);
        EXPECT_EQ(jsonDifference(array[0].toObject(), lists), "");
    }
}

TEST(ScannerCommand, CommandsNeedOnlyTheExecutableNotTheIdeLibrary) {
    // The executable alone, without the IDE library beside it: the scanner's commands
    // still work, and anything else says which library it misses.
    QTemporaryDir dir;
    const QString alone = dir.filePath("kelvaro");
    ASSERT_TRUE(QFile::copy(KELVARO_APP_DIR "/Contents/MacOS/kelvaro", alone));
    const QString source = writeFile(dir.filePath("A.NSObject.klvr"), "\nSub A(x As T)\n");
    const ChildRun scan = runKelvaro({"--scan", source}, alone);
    ASSERT_EQ(scan.status, 0) << scan.err.toStdString();
    const QJsonObject object = QJsonDocument::fromJson(scan.out).array()[0].toObject();
    EXPECT_EQ(object["lists"].toObject()["Sub"].toArray()[0].toObject()["name"].toString(), "A");
    const ChildRun ide = runKelvaro({"--screenshot", dir.filePath("x.png")}, alone);
    EXPECT_EQ(ide.status, 1);
    EXPECT_TRUE(ide.err.contains("libkelvaro_ide.so")) << ide.err.toStdString();
}
