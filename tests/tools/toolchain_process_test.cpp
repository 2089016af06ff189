// The three programs as the IDE runs them: real child processes on real folders, and
// what they print, write and leave alone.
#include "tools/lang/project_file.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QProcessEnvironment>
#include <QTemporaryDir>

namespace {

const QString kToolsDir = QStringLiteral(KLVR_TOOLS_DIR);
const QByteArray kHello = "\nEvent AwakeFromNib()\n  Alert(\"Hello\")\nEnd Event\n";

struct Result {
    int exitCode = -1;
    QProcess::ExitStatus status = QProcess::CrashExit;
    QByteArray out, err;
};

Result runTool(const QString& program, const QStringList& args, const QProcessEnvironment& env = QProcessEnvironment::systemEnvironment()) {
    QProcess process;
    process.setProcessEnvironment(env);
    process.start(program, args);
    Result r;
    if (!process.waitForFinished(120000)) {
        process.kill();
        process.waitForFinished();
        ADD_FAILURE() << "timed out: " << program.toStdString();
    }
    r.exitCode = process.exitCode();
    r.status = process.exitStatus();
    r.out = process.readAllStandardOutput();
    r.err = process.readAllStandardError();
    return r;
}

Result compiler(const QStringList& args) { return runTool(kToolsDir + "/klvrcompiler", args); }
Result klvrmake(const QStringList& args) { return runTool(kToolsDir + "/klvrmake", args); }

void writeFile(const QString& path, const QByteArray& bytes) {
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
}

QByteArray readFile(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// A project folder "<tmp>/<name>" holding the given Global text.
QString makeProject(const QTemporaryDir& tmp, const QString& name, const QByteArray& global = kHello) {
    const QString project = tmp.path() + "/" + name;
    writeFile(project + "/Global.NSObject.klvr", global);
    return project;
}

TEST(Toolchain, NewProjectBuildsAndItsApplicationPrintsHelloAlsoAfterAByteOrderMark) {
    QTemporaryDir tmp;
    const QString project = makeProject(tmp, "Hello World");
    writeFile(project + "/b.NSView.klvr", "\nSub Paint()\n  Print(\"b\")\nEnd Sub\n");
    writeFile(project + "/notes.txt", "not a source");
    const Result build = compiler({project, "-Release"});
    EXPECT_EQ(build.exitCode, 0) << build.err.toStdString();
    EXPECT_TRUE(build.err.isEmpty());
    EXPECT_TRUE(build.out.contains("Checked 2 files"));
    // The IDE treats these texts on standard output as a failed build.
    EXPECT_FALSE(build.out.contains("error generated.") || build.out.contains("errors generated.") || build.out.contains("clang: error:"));

    const QString app = project + "/build/Release/Hello World.app";
    EXPECT_EQ(readFile(app + "/Contents/Resources/b.NSView.klvr"), "\nSub Paint()\n  Print(\"b\")\nEnd Sub\n");
    EXPECT_FALSE(QFile::exists(app + "/Contents/Resources/notes.txt"));
    const Result run = runTool(app + "/Contents/MacOS/Hello World", {});
    EXPECT_EQ(run.exitCode, 0) << run.err.toStdString();
    EXPECT_EQ(run.out, "Hello\n");
    EXPECT_TRUE(run.err.isEmpty());

    // Deploy writes the application the IDE copies to the Desktop.
    QDir(project + "/build").removeRecursively();
    EXPECT_EQ(compiler({project, "-Deploy"}).exitCode, 0);
    EXPECT_TRUE(QFileInfo(app + "/Contents/MacOS/Hello World").isExecutable());

    // A byte order mark is skipped, and a single file is counted as one.
    const QString bom = makeProject(tmp, "Bom", "\xEF\xBB\xBF" "Dim n As Integer = 2\nEvent AwakeFromNib()\n  Print(n)\nEnd Event");
    const Result bomBuild = compiler({bom, "-Release"});
    EXPECT_EQ(bomBuild.err, "");
    EXPECT_TRUE(bomBuild.out.startsWith("Checking 1 file of ")) << bomBuild.out.toStdString();
    EXPECT_TRUE(bomBuild.out.contains("Checked 1 file, 4 lines in "));
    EXPECT_EQ(runTool(bom + "/build/Release/Bom.app/Contents/MacOS/Bom", {}).out, "2\n");
}

TEST(Toolchain, ErrorsAreOneLineOnStandardErrorAndNoApplicationIsWritten) {
    struct Case {
        QByteArray global;  // empty: the folder has no Global file
        QString otherName;
        QByteArray other;
        QByteArray expected;
    };
    const Case cases[] = {
        {"\nEvent AwakeFromNib()\n  Helper\nEnd Event\n\nSub Helper()\n  Print(1)\n", "", "",
         "Kelvaro: End Sub expected in line 7 in file Global.NSObject.klvr\n"},
        {kHello, "b.NSObject.klvr", "\nSub Go()\n  Dim i As Integer\n  Next\nEnd Sub\n", "Kelvaro: Next without For in line 4 in file b.NSObject.klvr\n"},
        {kHello, "b.NSObject.klvr", "\nSub Go()\n  Dim count As Integer\n  countr = 1\nEnd Sub\n",
         "Kelvaro: Unknown identifier countr in line 4 in file b.NSObject.klvr\n"},
        // Global's Public members are known in other files, its private ones are not.
        {"Public Dim total As Integer\nDim secret As Integer\n" + kHello, "b.NSObject.klvr",
         "\nSub Go()\n  total = 1\n  secret = 2\nEnd Sub\n", "Kelvaro: Unknown identifier secret in line 4 in file b.NSObject.klvr\n"},
        // Nor are the private members of another class.
        {"\nEvent AwakeFromNib()\n  Dim c As New Counter\n  c.Add(1)\n  Print(c.hidden)\nEnd Event\n", "Counter.NSObject.klvr",
         "\nDim hidden As Integer\nPublic Sub Add(n As Integer)\n  hidden = hidden + n\nEnd Sub\n",
         "Kelvaro: hidden is Private in Counter in line 5 in file Global.NSObject.klvr\n"},
        // A file that is not text at all.
        {kHello, "bin.NSObject.klvr", QByteArray("\x7f" "ELF\x02\x01\x01\x00\x00\x00", 10),
         "Kelvaro: Invalid character in line 1 in file bin.NSObject.klvr\n"},
        {"", "", "", "Kelvaro: Global.NSObject.klvr missing in line 1 in file Global.NSObject.klvr\n"},
    };
    for (const Case& c : cases) {
        QTemporaryDir tmp;
        const QString project = tmp.path() + "/P";
        QDir().mkpath(project);
        if (!c.global.isEmpty())
            writeFile(project + "/Global.NSObject.klvr", c.global);
        if (!c.otherName.isEmpty())
            writeFile(project + "/" + c.otherName, c.other);
        const Result r = compiler({project, "-Release"});
        EXPECT_EQ(r.exitCode, 1);
        EXPECT_EQ(r.err, c.expected);
        EXPECT_FALSE(QFile::exists(project + "/build/Release/P.app"));
        EXPECT_EQ(compiler({tmp.path() + "/Nowhere", "-Release"}).exitCode, 1);
    }
}

TEST(Toolchain, TheFirstErrorInFileOrderIsReportedWhateverTheThreadsDo) {
    QTemporaryDir tmp;
    const QString project = makeProject(tmp, "P");
    for (int i = 10; i < 60; ++i)
        writeFile(project + QString("/c%1.NSObject.klvr").arg(i), "\nSub Go()\n  Print(1)\nEnd Sub\n");
    writeFile(project + "/c47.NSObject.klvr", "\nSub Go()\n  Wend\nEnd Sub\n");
    writeFile(project + "/c12.NSObject.klvr", "\nSub Go()\n\n  Next\nEnd Sub\n");
    for (int run = 0; run < 5; ++run)
        EXPECT_EQ(compiler({project, "-Release"}).err, "Kelvaro: Next without For in line 4 in file c12.NSObject.klvr\n");
}

TEST(Toolchain, VocabularyListsMakeLibraryNamesKnown) {
    QTemporaryDir tmp;
    const QString project = makeProject(tmp, "P", "\nEvent AwakeFromNib()\n  Dim p As String = Shell(\"x\")\nEnd Event\n");
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    env.insert("KELVARO_RESOURCES", tmp.path() + "/Resources");
    EXPECT_EQ(runTool(kToolsDir + "/klvrcompiler", {project, "-Release"}, env).err,
              "Kelvaro: Unknown identifier Shell in line 3 in file Global.NSObject.klvr\n");
    writeFile(tmp.path() + "/Resources/function.plist",
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<plist version=\"1.0\"><dict><key>Shell</key>"
              "<string>Shell(command As String)</string></dict></plist>\n");
    const Result r = runTool(kToolsDir + "/klvrcompiler", {project, "-Release"}, env);
    EXPECT_EQ(r.exitCode, 0) << r.err.toStdString();
    // The runner does not start programs: the application says so at the line that needs it.
    const Result run = runTool(project + "/build/Release/P.app/Contents/MacOS/P", {});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(run.err, "Kelvaro: Shell is not supported by the runner in line 3 in file Global.NSObject.klvr\n");
}

TEST(Toolchain, CleanRemovesTheBuildFolderOnlyAlsoWithBlanksInThePath) {
    QTemporaryDir tmp;
    const QString project = makeProject(tmp, "My App");
    writeFile(project + "/build/Release/My App.app/Contents/MacOS/My App", "x");
    writeFile(project + "/My App/Resources/keep.png", "png");
    writeFile(tmp.path() + "/My App build/keep.txt", "a neighbour with a similar name");
    writeFile(tmp.path() + "/build/keep.txt", "the parent's build folder");
    QString escaped = project;
    escaped.replace(" ", "\\ ");
    const Result r = compiler({"-Clean", escaped});
    EXPECT_EQ(r.exitCode, 0) << r.err.toStdString();
    EXPECT_FALSE(QFile::exists(project + "/build"));
    EXPECT_EQ(readFile(project + "/Global.NSObject.klvr"), kHello);
    EXPECT_TRUE(QFile::exists(project + "/My App/Resources/keep.png"));
    EXPECT_TRUE(QFile::exists(tmp.path() + "/My App build/keep.txt"));
    EXPECT_TRUE(QFile::exists(tmp.path() + "/build/keep.txt"));
    // Cleaning again, or the unescaped path, is fine too.
    EXPECT_EQ(compiler({"-Clean", project}).exitCode, 0);
    EXPECT_EQ(compiler({"-Clean"}).exitCode, 2);
}

TEST(Toolchain, XcodeprojIsCreatedOnceAndKlvrmakeEditsItsReferencesIdempotently) {
    QTemporaryDir tmp;
    const QString project = makeProject(tmp, "Demo");
    writeFile(project + "/b.NSView.klvr", "");
    writeFile(project + "/Demo/b.mm", "");
    writeFile(project + "/Demo/b.h", "");
    const QString xcodeproj = project + "/Demo.xcodeproj";
    const QString pbx = xcodeproj + "/project.pbxproj";
    const auto files = [&] { return klvr::ProjectFile::parse(readFile(pbx).toStdString()).files(); };
    EXPECT_EQ(compiler({project, "-xcodeproj"}).exitCode, 0);
    EXPECT_EQ(files(), (std::vector<std::string>{"b.h", "b.mm"}));
    EXPECT_TRUE(readFile(pbx).contains("source Global.NSObject.klvr\nsource b.NSView.klvr\n")) << readFile(pbx).toStdString();

    const QStringList tail = {"-o", xcodeproj, "-p", project};
    const QString xib = project + "/Demo/en.lproj/Preferences.xib";
    EXPECT_EQ(klvrmake(QStringList{"-append", "c.mm", "c.h", xib} + tail).exitCode, 0);
    const QByteArray once = readFile(pbx);
    EXPECT_EQ(klvrmake(QStringList{"-append", "c.mm", "c.h", xib} + tail).exitCode, 0);
    EXPECT_EQ(readFile(pbx), once) << "after appending twice";
    EXPECT_EQ(files(), (std::vector<std::string>{"b.h", "b.mm", "c.mm", "c.h", xib.toStdString()}));

    EXPECT_EQ(klvrmake(QStringList{"c.mm", "c.h"} + tail).exitCode, 0);
    EXPECT_EQ(klvrmake(QStringList{"c.mm", "c.h"} + tail).exitCode, 0);
    EXPECT_EQ(files(), (std::vector<std::string>{"b.h", "b.mm", xib.toStdString()})) << "after removing twice";
    EXPECT_TRUE(readFile(pbx).contains("source Global.NSObject.klvr\n"));

    // A project file that exists is never made again, even when edited by hand.
    writeFile(pbx, "edited by hand\n");
    EXPECT_EQ(compiler({project, "-xcodeproj"}).exitCode, 0);
    EXPECT_EQ(readFile(pbx), "edited by hand\n");

    // A project file that does not exist yet is made on the way.
    QDir(xcodeproj).removeRecursively();
    EXPECT_EQ(klvrmake(QStringList{"-append", "d.mm"} + tail).exitCode, 0);
    EXPECT_TRUE(readFile(pbx).contains("file d.mm\n"));
}

TEST(Toolchain, KlvrmakeRejectsBadArgumentsWithUsage) {
    QTemporaryDir tmp;
    const QString project = makeProject(tmp, "Demo");
    const QString xcodeproj = project + "/Demo.xcodeproj";
    const QList<QStringList> bad = {
        {},
        {"-append"},
        {"-append", "a.mm", "-o", xcodeproj},
        {"-append", "a.mm", "-o", xcodeproj, "-p"},
        {"-append", "-o", xcodeproj, "-p", project},
        {"a.mm", "-p", project, "-o", xcodeproj},
        {"a.mm", "-o", project + "/Demo.txt", "-p", project},
        {"a.mm", "-o", xcodeproj, "-p", project, "extra"},
    };
    for (const QStringList& args : bad) {
        const Result r = klvrmake(args);
        EXPECT_EQ(r.exitCode, 2) << args.join(' ').toStdString();
        EXPECT_TRUE(r.err.contains("usage: klvrmake")) << args.join(' ').toStdString();
    }
    EXPECT_FALSE(QFile::exists(xcodeproj));
}

TEST(Toolchain, RunawayProgramDiesOnTerminate) {
    QTemporaryDir tmp;
    const QString project = makeProject(tmp, "Loop", "\nEvent AwakeFromNib()\n  Print(\"looping\")\n  While True\n  Wend\nEnd Event\n");
    QProcess process;
    process.start(kToolsDir + "/klvrrun", {project});
    ASSERT_TRUE(process.waitForStarted(30000));
    // The line arrives before the loop starts, so the program is inside the loop now.
    while (!process.canReadLine())
        ASSERT_TRUE(process.waitForReadyRead(30000));
    EXPECT_EQ(process.readLine(), "looping\n");
    process.terminate();
    ASSERT_TRUE(process.waitForFinished(30000));
    EXPECT_EQ(process.exitStatus(), QProcess::CrashExit);
}

TEST(Toolchain, RunnerReportsRuntimeErrorsDeepRecursionAndOutOfMemory) {
    struct Case {
        QByteArray global, out, err;
    };
    const Case cases[] = {
        {"\nEvent AwakeFromNib()\n  Print(Depth(1))\n  Print(Depth(20000))\n  Print(Depth(200000))\nEnd Event\n"
         "Function Depth(n As Integer) As Integer\n  If n = 0 Then Return 0\n  Return Depth(n - 1) + 1\nEnd Function\n",
         "1\n", "Kelvaro: Too many nested calls in line 9 in file Global.NSObject.klvr\n"},
        {"\nEvent AwakeFromNib()\n  Dim a As New Array\n  Dim i As Integer\n"
         "  For i = 1 To 100000000\n    a.Append(i)\n  Next\n  Print(a.Count)\nEnd Event\n",
         "", "Kelvaro: Out of memory in line 6 in file Global.NSObject.klvr\n"},
    };
    for (const Case& c : cases) {
        QTemporaryDir tmp;
        const Result r = runTool(kToolsDir + "/klvrrun", {makeProject(tmp, "Err", c.global)});
        EXPECT_EQ(r.status, QProcess::NormalExit);
        EXPECT_EQ(r.exitCode, 1);
        EXPECT_EQ(r.out, c.out);
        EXPECT_EQ(r.err, c.err);
    }
    EXPECT_EQ(runTool(kToolsDir + "/klvrrun", {"a", "b"}).exitCode, 2);
    const Result usage = runTool(kToolsDir + "/klvrrun", {});
    EXPECT_EQ(usage.exitCode, 2);
    EXPECT_TRUE(usage.err.startsWith("usage: klvrrun FOLDER\n"));
}

TEST(Toolchain, ManyFilesAndOddInputEndInABuildOrAClearError) {
    QTemporaryDir tmp;
    const QString project = makeProject(tmp, "Big");
    for (int i = 0; i < 10000; ++i)
        writeFile(project + QString("/c%1.NSObject.klvr").arg(i), "\nSub Go()\n  Print(\"x\")\nEnd Sub\n");
    writeFile(project + "/crlf.NSObject.klvr", "\r\nSub Go()\r\n  Print(\"\xe9\xff\")\r\nEnd Sub\r\n");
    Result r = compiler({project, "-Release"});
    EXPECT_EQ(r.exitCode, 0) << r.err.toStdString();
    EXPECT_TRUE(r.out.contains("Checked 10002 files"));

    // A file bigger than any source is refused without reading it.
    QFile huge(project + "/zz.NSObject.klvr");
    ASSERT_TRUE(huge.open(QIODevice::WriteOnly));
    ASSERT_TRUE(huge.resize(64ll * 1024 * 1024));
    huge.close();
    r = compiler({project, "-Release"});
    EXPECT_EQ(r.exitCode, 1);
    EXPECT_EQ(r.err, "Kelvaro: File too large in line 1 in file zz.NSObject.klvr\n");
}

}  // namespace
