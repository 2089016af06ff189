// kelvaro --find as a real child process without a display, against ripgrep on the same
// folders for texts that cannot overlap themselves.
#include "search/project_search.h"
#include "support/test_environment.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QProcessEnvironment>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

struct ChildRun {
    int status = -1;
    QByteArray out;
    QByteArray err;
};

ChildRun run(const QString& program, const QStringList& args, const QString& folder = {}) {
    QProcess process;
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
        env.remove(name);
    process.setProcessEnvironment(env);
    process.setWorkingDirectory(folder);
    process.start(program, args);
    EXPECT_TRUE(process.waitForFinished(60000));
    return {process.exitCode(), process.readAllStandardOutput(), process.readAllStandardError()};
}

ChildRun find(const QStringList& args) { return run(KELVARO_APP_DIR "/Contents/MacOS/kelvaro", QStringList{"--find"} + args); }

// ripgrep's lines in the IDE's file order, with its byte columns turned into UTF-16 units.
QStringList ripgrep(const QString& folder, const QString& text, bool ignoreCase) {
    QStringList args{"--vimgrep", "-F", "-j1", "--no-config", "-g", "*.klvr"};
    if (ignoreCase)
        args << "-i";
    const ChildRun rg = run("rg", args << "-e" << text << ".", folder);
    EXPECT_LE(rg.status, 1) << rg.err.toStdString();
    QMap<QString, QStringList> byFile;
    for (const QByteArray& line : rg.out.split('\n')) {
        if (line.isEmpty())
            continue;
        const QList<QByteArray> parts = line.split(':');
        QByteArray lineText = line.mid(parts[0].size() + parts[1].size() + parts[2].size() + 3);
        if (lineText.endsWith('\r'))
            lineText.chop(1); // the IDE shows a line without its line end
        const QString column = QString::number(QString::fromUtf8(lineText.left(parts[2].toInt() - 1)).size() + 1);
        const QString name = QString::fromUtf8(parts[0]).mid(2); // without "./"
        byFile[name] << name + ":" + parts[1] + ":" + column + ":" + QString::fromUtf8(lineText);
    }
    QStringList ordered;
    for (const QString& name : project_search::sourceFilesOf(folder))
        ordered << byFile.value(name);
    return ordered;
}

std::string lines(const QByteArray& out) { return out.toStdString(); }
std::string lines(const QStringList& expected) { return expected.isEmpty() ? "" : (expected.join('\n') + '\n').toStdString(); }

TEST(FindCommand, AgreesWithRipgrepInTheIdesOrder) {
    QTemporaryDir dir;
    writeFile(dir.filePath("Global.NSObject.klvr"), "Dim x\n' Dim y\n\tDim z Dim w\n");
    writeFile(dir.filePath("a.NSObject.klvr"), "Sub A()\n  caf\xc3\xa9 Dim \xf0\x9f\x98\x80 dim\nEnd Sub");
    writeFile(dir.filePath("Z.NSObject.klvr"), "DIM\r\nnothing\r\n");
    writeFile(dir.filePath("notes.txt"), "Dim elsewhere\n");
    QByteArray big;
    for (int i = 0; i < 3000; ++i)
        big += "Function F" + QByteArray::number(i) + "() As Integer ' Dim\n";
    writeFile(dir.filePath("b.NSObject.klvr"), big);
    for (const QString& text : QStringList{"Dim", "dim", "Function F29", "As Integer", "\u00e9 D"}) {
        for (bool ignoreCase : {false, true}) {
            const ChildRun kelvaro =
                find(QStringList{text, dir.path()} + (ignoreCase ? QStringList{"--ignore-case"} : QStringList{}));
            const QStringList expected = ripgrep(dir.path(), text, ignoreCase);
            EXPECT_EQ(kelvaro.status, expected.isEmpty() ? 1 : 0) << text.toStdString();
            EXPECT_EQ(lines(kelvaro.out), lines(expected)) << text.toStdString() << " ignoring case: " << ignoreCase;
            EXPECT_TRUE(kelvaro.err.isEmpty()) << kelvaro.err.toStdString();
        }
    }
    // The Global file leads; comment lines are left out on request.
    EXPECT_EQ(lines(find({"Dim", dir.path(), "--skip-comments"}).out).substr(0, 107),
              lines(QStringList{"Global.NSObject.klvr:1:1:Dim x", "Global.NSObject.klvr:3:2:\tDim z Dim w",
                           "Global.NSObject.klvr:3:8:\tDim z Dim w"}));
}

TEST(FindCommand, BadArgumentsNothingFoundAndBinaryFiles) {
    QTemporaryDir dir;
    writeFile(dir.filePath("Global.NSObject.klvr"), "aaa\n");
    writeFile(dir.filePath("bin.NSObject.klvr"), QByteArray("aa\0\xff", 4));
    EXPECT_EQ(find({}).status, 2);
    EXPECT_EQ(find({"aa"}).status, 2);
    EXPECT_EQ(find({"", dir.path()}).status, 2);
    EXPECT_EQ(find({"a\nb", dir.path()}).status, 2);
    EXPECT_EQ(find({"aa", dir.filePath("missing")}).status, 2);
    EXPECT_EQ(find({"aa", dir.path(), "--whole-word"}).status, 2);
    EXPECT_EQ(find({"zz", dir.path()}).status, 1);
    const ChildRun overlapping = find({"aa", dir.path()});
    EXPECT_EQ(overlapping.status, 0);
    EXPECT_EQ(lines(overlapping.out), lines(QStringList{"Global.NSObject.klvr:1:1:aaa", "Global.NSObject.klvr:1:2:aaa"}));
    EXPECT_TRUE(overlapping.err.contains("bin.NSObject.klvr")) << overlapping.err.toStdString();
}

} // namespace
