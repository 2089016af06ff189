// The build pipeline with stand-in compilers: the order of steps and status texts,
// the command lines, stopping, Go, Clean and Deploy, and the bad cases (missing
// compiler, odd folder names, runs and builds on top of each other, closing).
#include "build_fixture.h"

#include <QProgressBar>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QToolButton>

namespace {
const QByteArray kGlobal = "\nEvent AwakeFromNib()\n  Alert(\"Hello\")\nEnd Event\n";
const QList<std::pair<QString, QByteArray>> kFiles = {{"Global.NSObject.klvr", kGlobal},
                                                      {"b.NSObject.klvr", "\nSub B()\n  x = 1\nEnd Sub\n"}};

// A compiler that "builds" an application whose program prints to both streams.
const QByteArray kBuildingCompiler =
    "echo \"Checking $1\"\n"
    "n=$(basename \"$1\")\n"
    "mkdir -p \"$1/build/Release/$n.app/Contents/MacOS\"\n"
    "printf '#!/bin/sh\\necho out-line\\necho err-line >&2\\n' > \"$1/build/Release/$n.app/Contents/MacOS/$n\"\n"
    "chmod +x \"$1/build/Release/$n.app/Contents/MacOS/$n\"\n"
    "echo 'Build succeeded'\n";

const QString kCompiling = "xcodebuild is compiling. Please wait...";
const QString kInternal = "Internal Error -> Objective-C compiler failure. Please report back to us.";

// A compiler that writes its process id and then runs until it is stopped.
const QByteArray kSlowCompiler = "echo $$ > \"$(dirname \"$0\")/pid\"\nexec sleep 60\n";

class BuildPipeline : public BuildFixture {
protected:
    // Waits until the stand-in wrote its process id (bounded), and returns it.
    qint64 waitForPid(const QString& file) {
        waitUntil([&] { return !readFile(file).trimmed().isEmpty(); });
        return readFile(file).trimmed().toLongLong();
    }
    QString pidFile() const { return bundlePath() + "/Contents/MacOS/pid"; }
};

TEST_F(BuildPipeline, WithoutAProjectNothingHappensAndNothingIsShown) {
    installRecordingCompiler();
    Global& g = start();
    testPanels().clear();
    g.global_build();
    g.global_make();
    g.Clean();
    g.ReleaseUniversal();
    g.global_go();
    g.global_breakpoint();
    g.global_run();
    ASSERT_TRUE(waitForBuild());
    EXPECT_TRUE(compilerCalls().isEmpty());
    EXPECT_TRUE(testPanels().messages().empty());
}

TEST_F(BuildPipeline, BuildThenRunShowTheirStepsInOrder) {
    installCompiler(kBuildingCompiler);
    Global& g = startWith("Shop", kFiles);
    testLauncher().clear();
    g.mytextview()->insertAt("' typed\n", 0, 0);
    g.global_build();
    ASSERT_TRUE(waitForBuild());
    // The typed text is written first, without status texts of its own.
    EXPECT_TRUE(readFile(project + "/Global.NSObject.klvr").startsWith("' typed\n"));
    EXPECT_EQ(statuses, (QStringList{"", kCompiling, "Done."}));
    EXPECT_EQ(compilerLog(), "Checking " + project + "\nBuild succeeded\n");
    EXPECT_FALSE(g.compilerLogPanel->isVisible() || g.mycode->progress->isVisible());
    // After the build the project is opened in Xcode, through the launcher table.
    ASSERT_EQ(testLauncher().launches().size(), 1u);
    EXPECT_EQ(testLauncher().launches()[0].document, project + "/Shop.xcodeproj");
    EXPECT_FALSE(testLauncher().launches()[0].flag);
    EXPECT_TRUE(runLog().isEmpty());

    statuses.clear();
    g.global_run();
    ASSERT_TRUE(waitForBuild());
    waitForApplication();
    EXPECT_EQ(statuses.mid(statuses.indexOf(kCompiling)), (QStringList{kCompiling, "", "Launching...", "Done."}));
    // Both streams of the program reach the run log and set no error.
    EXPECT_TRUE(runLog().contains("out-line\n") && runLog().contains("err-line\n")) << runLog().toStdString();
    EXPECT_FALSE(g.bCompilerError);
    EXPECT_EQ(g.lastRunExitStatus(), 0);
    EXPECT_TRUE(testPanels().messages().empty());
    EXPECT_TRUE(statusesOnMainThread);
}

TEST_F(BuildPipeline, FolderNamesReachTheCompilerAsTheyAre) {
    installCompiler("printf '%s\\n' \"$@\" > \"$(dirname \"$0\")/args\"\n");
    const char* names[] = {"My App", "-lead", "q\"uo'te", "dollar $HOME", "semi;colon"};
    for (const char* name : names) {
        Global& g = startWith(QString::fromUtf8(name), kFiles);
        g.global_build();
        ASSERT_TRUE(waitForBuild());
        EXPECT_EQ(readFile(bundlePath() + "/Contents/MacOS/args"), (project + "\n-Release\n").toUtf8()) << name;
        g.Clean();
        EXPECT_EQ(readFile(bundlePath() + "/Contents/MacOS/args"), ("-Clean\n" + project + "\n").toUtf8()) << name;
        EXPECT_EQ(messageTitles(), QStringList{"Temporary project files removed."}) << name;
        global.reset();
    }
}

struct OutputCase {
    const char* name;
    const char* out;
    const char* err;
    QStringList titles;     // message boxes, in order
    const char* lastFile;   // the remembered error's file
    qint64 lastLine;
};

class CompilerOutput : public BuildPipeline, public ::testing::WithParamInterface<OutputCase> {};

TEST_P(CompilerOutput, IsRecognisedAndNavigatedTo) {
    const OutputCase& c = GetParam();
    installCompiler(kBuildingCompiler + "cat \"$(dirname \"$0\")/out\"\ncat \"$(dirname \"$0\")/err\" >&2\n");
    writeFile(bundlePath() + "/Contents/MacOS/out", c.out);
    writeFile(bundlePath() + "/Contents/MacOS/err", c.err);
    Global& g = startWith("Shop", kFiles);
    g.global_run();
    ASSERT_TRUE(waitForBuild());
    EXPECT_TRUE(g.bCompilerError);
    EXPECT_EQ(messageTitles(), c.titles);
    EXPECT_EQ(g.sLastErrorFile, QString::fromUtf8(c.lastFile));
    EXPECT_EQ(g.nLastErrorLine, c.lastLine);
    // A failed build launches nothing and ends with the error's text, not "Done.".
    EXPECT_FALSE(statuses.contains("Launching...") || statuses.contains("Done."));
    EXPECT_TRUE(compilerLog().contains(QString::fromUtf8(c.out).trimmed())) << compilerLog().toStdString();
    EXPECT_FALSE(compilerLog().contains("Kelvaro:")) << "standard error stays out of the compiler log";
}

const OutputCase kOutputs[] = {
    {"ErrorInAProjectFile", "", "Kelvaro: Syntax error in line 3 in file b.NSObject.klvr\n",
     {"Syntax error in line 3 in file b.NSObject.klvr"}, "b.NSObject.klvr", 3},
    {"ErrorInAFileOutsideTheProject", "", "Kelvaro: Syntax error in line 7 in file code.NSObject.klvr\n",
     {"Internal Error. Please report back to us."}, "code.NSObject.klvr", 7},
    {"TwoErrorsInOneChunkReportOnlyTheFirst", "",
     "Kelvaro: A in line 2 in file b.NSObject.klvr\nKelvaro: B in line 4 in file Global.NSObject.klvr\n",
     {"A in line 2 in file b.NSObject.klvr"}, "b.NSObject.klvr", 2},
    {"OtherStandardErrorText", "", "warning: something\n", {kInternal}, "", 0},
    {"PlatformCompilerErrorCount", "2 errors generated.\n", "", {kInternal}, "", 0},
    {"PlatformCompilerDriverError", "clang: error: no input files\n", "", {kInternal}, "", 0},
};
INSTANTIATE_TEST_SUITE_P(Table, CompilerOutput, ::testing::ValuesIn(kOutputs),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_F(BuildPipeline, AnErrorOpensTheFileAtItsLineAndLastErrorReturnsThereUntilAnInternalFailure) {
    installCompiler("echo 'Kelvaro: Syntax error in line 3 in file b.NSObject.klvr' >&2\nexit 1\n");
    Global& g = startWith("Shop", kFiles);
    g.bIBDelayedShow = true; // the interface designer was brought forward
    g.global_build();
    ASSERT_TRUE(waitForBuild());
    EXPECT_FALSE(g.bIBDelayedShow);
    EXPECT_EQ(g.ProjectCurrentFilename(), project + "/b.NSObject.klvr");
    // The insertion point is at the start of the error's line.
    EXPECT_EQ(g.mytextview()->SendScintilla(QsciScintillaBase::SCI_GETCURRENTPOS),
              g.mytextview()->SendScintilla(QsciScintillaBase::SCI_POSITIONFROMLINE, 2));
    EXPECT_EQ(status(), "Syntax error in line 3 in file b.NSObject.klvr");
    EXPECT_EQ(testPanels().messages().at(0).text, "");
    EXPECT_FALSE(g.compilerLogPanel->isVisible());

    g.ProjectOpenCode("Global.NSObject.klvr");
    g.global_lasterror();
    EXPECT_EQ(g.ProjectCurrentFilename(), project + "/b.NSObject.klvr");
    EXPECT_EQ(KLVR_KLTEXTVIEW_LINE(g.mytextview()), 3);
    EXPECT_EQ(status(), "Syntax error in line 3 in file b.NSObject.klvr");
    // The error text stays when a later build succeeds.
    installCompiler("exit 0\n");
    g.global_build();
    ASSERT_TRUE(waitForBuild());
    EXPECT_EQ(g.sLastErrorFile, "b.NSObject.klvr");

    // After an internal failure Last Error does nothing.
    installCompiler("echo '2 errors generated.'\n");
    g.global_build();
    ASSERT_TRUE(waitForBuild());
    EXPECT_EQ(g.sLastErrorText, "2 errors generated.\n");
    g.ProjectOpenCode("Global.NSObject.klvr");
    statuses.clear();
    g.global_lasterror();
    EXPECT_EQ(g.ProjectCurrentFilename(), project + "/Global.NSObject.klvr");
    EXPECT_TRUE(statuses.isEmpty());
    // An internal failure without a text says so first.
    testPanels().clear();
    g.ShowInternalError(Value());
    EXPECT_EQ(messageTitles(), (QStringList{"Nil", kInternal}));
    EXPECT_EQ(testPanels().messages()[1].text, "Please send us the log from the Compiler Window.");
}

TEST_F(BuildPipeline, IgnoredOutputReachesNeitherLog) {
    Global& g = startWith("Shop", kFiles);
    g.bIgnoreStdErr = true;
    g.go_stdout(Value::bytes("out\n"));
    g.go_stderr(Value::bytes("Kelvaro: x in line 1 in file b.NSObject.klvr\n"));
    g.bIgnoreStdErr = false;
    g.go_stdout(Value());
    EXPECT_TRUE(compilerLog().isEmpty() && runLog().isEmpty());
    EXPECT_FALSE(g.bCompilerError);
    EXPECT_TRUE(testPanels().messages().empty());
}

TEST_F(BuildPipeline, BuildingAgainDuringABuildFinishesTheSecondAndClosingLeavesNoProcessBehind) {
    installCompiler("if [ -e \"$(dirname \"$0\")/pid\" ]; then echo second; exit 0; fi\n" + kSlowCompiler);
    Global& g = startWith("Shop", kFiles);
    g.global_build();
    const qint64 first = waitForPid(pidFile());
    g.global_build();
    ASSERT_TRUE(waitForBuild());
    EXPECT_EQ(status(), "Done.");
    EXPECT_EQ(compilerLog(), "second\n");
    EXPECT_TRUE(waitUntil([&] { return !processExists(first); }, 5));
    // Closing the window during a build ends the build and its compiler.
    QFile::remove(pidFile());
    g.global_build();
    const qint64 pid = waitForPid(pidFile());
    g.mymainwindow->close();
    EXPECT_FALSE(KLVR_NSTHREAD_ISEXECUTING(g.thBuild));
    EXPECT_FALSE(processExists(pid));
}

struct BadCompilerCase {
    const char* name;
    const char* content; // nullptr: no file at all
    bool executable;
};
class BadCompiler : public BuildPipeline, public ::testing::WithParamInterface<BadCompilerCase> {};

TEST_P(BadCompiler, IsNamedInAMessageAndNothingElseHappens) {
    const BadCompilerCase& c = GetParam();
    const QString compiler = bundlePath() + "/Contents/MacOS/klvrcompiler";
    if (c.content) {
        writeFile(compiler, c.content);
        if (c.executable)
            QFile::setPermissions(compiler, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }
    Global& g = startWith("Shop", kFiles);
    testPanels().clear();
    g.global_run();
    ASSERT_TRUE(waitForBuild());
    ASSERT_EQ(testPanels().messages().size(), 1u);
    EXPECT_EQ(testPanels().messages()[0].title, "The compiler could not be started.");
    EXPECT_TRUE(testPanels().messages()[0].text.contains(compiler));
    EXPECT_FALSE(statuses.contains("Done."));
    EXPECT_FALSE(g.mycode->progress->isVisible());
}
INSTANTIATE_TEST_SUITE_P(Table, BadCompiler,
                         ::testing::Values(BadCompilerCase{"Missing", nullptr, false},
                                           BadCompilerCase{"NotExecutable", "#!/bin/sh\n", false},
                                           BadCompilerCase{"NoProgram", "not a program\n", true}),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_F(BuildPipeline, RunWhileTheProgramRunsEndsItBeforeTheNewBuild) {
    installCompiler("n=$(basename \"$1\")\nd=\"$1/build/Release/$n.app/Contents/MacOS\"\nmkdir -p \"$d\"\n"
                    "printf '#!/bin/sh\\necho started\\necho $$ >> \"%s/pids\"\\nexec sleep 60\\n' "
                    "\"$(dirname \"$0\")\" > \"$d/$n\"\nchmod +x \"$d/$n\"\n");
    Global& g = startWith("Shop", kFiles);
    const QString pids = bundlePath() + "/Contents/MacOS/pids";
    g.global_run();
    ASSERT_TRUE(waitForBuild());
    const qint64 first = waitForPid(pids);
    EXPECT_TRUE(KLVR_KLTASK_ISRUNNING(g.go));
    ASSERT_TRUE(waitUntil([&] { return runLog() == "started\n"; }));
    g.global_run();
    // The run log keeps the old run's text until the new program is launched.
    EXPECT_EQ(runLog(), "started\n");
    ASSERT_TRUE(waitForBuild());
    waitUntil([&] { return readFile(pids).trimmed().split('\n').size() >= 2; });
    const qint64 second = readFile(pids).trimmed().split('\n').last().toLongLong();
    EXPECT_NE(first, second);
    EXPECT_TRUE(waitUntil([&] { return !processExists(first); }, 5));
    EXPECT_TRUE(processExists(second));
    g.global_stop();
    g.global_stop();
    EXPECT_TRUE(waitUntil([&] { return !processExists(second); }, 5));
}

TEST_F(BuildPipeline, GoStartsTheApplicationInTheProjectFolderOnly) {
    installCompiler(kBuildingCompiler);
    Global& g = startWith("Shop", kFiles);
    g.global_go();
    EXPECT_EQ(messageTitles(), QStringList{"There is no application to start."});
    // A build writes its application under build/Release, which Go does not start.
    g.global_build();
    ASSERT_TRUE(waitForBuild());
    testPanels().clear();
    g.global_go();
    EXPECT_EQ(messageTitles(), QStringList{"There is no application to start."});

    installScript(project + "/Shop.app/Contents/MacOS/Shop", "echo from-go\n");
    testPanels().clear();
    g.global_go();
    waitForApplication();
    EXPECT_TRUE(testPanels().messages().empty());
    // Go leaves the output where the last build sent it: after a build without a run,
    // the compiler log.
    EXPECT_TRUE(compilerLog().endsWith("Build succeeded\nfrom-go\n")) << compilerLog().toStdString();
    EXPECT_TRUE(runLog().isEmpty());
    // The status clears itself after 5 seconds, also while the program runs.
    ASSERT_TRUE(g.tLaunchStatus && g.tLaunchStatus->isActive());
    EXPECT_EQ(g.tLaunchStatus->intervalSeconds(), 5.0);
    g.ProjectStatusBar("Launching...");
    g.clearLaunchStatus();
    EXPECT_EQ(status(), "");
}

struct DeployCase {
    const char* name;
    bool desktop;
    bool existing;
    QStringList titles;
    QString lastText;
};
class Deploying : public BuildPipeline, public ::testing::WithParamInterface<DeployCase> {};

TEST_P(Deploying, CopiesToTheDesktopButNeverOverAnExistingApplication) {
    const DeployCase& c = GetParam();
    installCompiler(kBuildingCompiler);
    Global& g = startWith("Shop", kFiles);
    const QString desktop = KelvaroTestEnvironment::instance().home() + "/Desktop";
    if (c.desktop)
        QDir().mkpath(desktop);
    if (c.existing)
        writeFile(desktop + "/Shop.app/mine", "keep");
    g.ReleaseUniversal();
    EXPECT_EQ(messageTitles(), c.titles);
    EXPECT_EQ(testPanels().messages().back().text, QString(c.lastText).replace("%1", desktop + "/Shop.app"));
    if (c.existing) {
        EXPECT_EQ(readFile(desktop + "/Shop.app/mine"), "keep");
    }
    EXPECT_EQ(QFile::exists(desktop + "/Shop.app/Contents/MacOS/Shop"), c.desktop && !c.existing);
    EXPECT_EQ(statuses.last(), "Done.");
}
const QString kDeployed =
    "Application has been created and will be copied to the Desktop and maybe moved to other locations.";
INSTANTIATE_TEST_SUITE_P(
    Table, Deploying,
    ::testing::Values(
        DeployCase{"ToAnEmptyDesktop", true, false, {"Deployment"}, kDeployed},
        DeployCase{"OverAnExistingApplication", true, true, {"Deployment", "Deployment Error"},
                   "Application has not been copied to\n\n%1\n\nbecause there is already an existing app"},
        DeployCase{"WithoutADesktop", false, false, {"Deployment", "Deployment Error"}, "Failed to copy application"}),
    [](const auto& info) { return std::string(info.param.name); });

TEST_F(BuildPipeline, BuildWhileDeployWaitsEndsTheDeployWithoutCopying) {
    installCompiler("case \"$2\" in -Deploy) " + kSlowCompiler + ";; esac\necho built\n");
    Global& g = startWith("Shop", kFiles);
    QDir().mkpath(KelvaroTestEnvironment::instance().home() + "/Desktop");
    // The deploy's wait keeps serving the main thread: a build asked for meanwhile runs.
    QTimer poll;
    poll.setInterval(5);
    QObject::connect(&poll, &QTimer::timeout, [&] {
        if (QFile::exists(pidFile())) {
            poll.stop();
            g.global_build();
        }
    });
    poll.start();
    g.ReleaseUniversal();
    ASSERT_TRUE(waitForBuild());
    const qint64 pid = readFile(pidFile()).trimmed().toLongLong();
    EXPECT_TRUE(waitUntil([&] { return !processExists(pid); }, 5));
    EXPECT_FALSE(messageTitles().contains("Deployment"));
    EXPECT_EQ(compilerLog(), "built\n");
}

TEST_F(BuildPipeline, BreakpointDebuggerAndPanelSwitches) {
    Global& g = startWith("Shop", kFiles);
    KLVR_KLTEXTVIEW_GOTOLINE(g.mytextview(), 2);
    g.Breakpoint();
    EXPECT_EQ(g.mytextview()->breakpointLines(), QList<qint64>{2});
    g.global_breakpoint();
    EXPECT_TRUE(g.mytextview()->breakpointLines().isEmpty());
    g.StartDebug();
    EXPECT_EQ(messageTitles(), QStringList{"Sorry. Not implemented yet."});
    g.bSwitchDebug->click();
    g.bSwitchObjC->click();
    EXPECT_TRUE(g.DebugPanel->isVisible() && g.ObjC->isVisible());
    g.mymainwindow->show();
    g.global_compilerlogpanel();
    g.mymainwindow->findChild<QToolButton*>("b_log")->click();
    EXPECT_TRUE(g.compilerLogPanel->isVisible() && g.runLogPanel->isVisible());
    // Both logs are panels docked at the bottom of the main window.
    EXPECT_EQ(g.mymainwindow->dockWidgetArea(g.compilerLogPanel), Qt::BottomDockWidgetArea);
    EXPECT_EQ(g.mymainwindow->dockWidgetArea(g.runLogPanel), Qt::BottomDockWidgetArea);
    // Opening a project empties both.
    g.compilerLogPanel->append("old\n");
    g.runLogPanel->append("old\n");
    g.ProjectOpen(project);
    EXPECT_TRUE(compilerLog().isEmpty() && runLog().isEmpty());
}

TEST_F(BuildPipeline, ToolbarButtonsAndShortcutsStartAndStopBuildsAndRuns) {
    installCompiler(kSlowCompiler);
    Global& g = startWith("Shop", kFiles);
    g.mymainwindow->show();
    g.mymainwindow->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(g.mymainwindow));
    // The keys work while the editor has the focus.
    g.mytextview()->setFocus();
    g.mymainwindow->findChild<QToolButton*>("b_build")->click();
    qint64 pid = waitForPid(pidFile());
    ASSERT_GT(pid, 0);
    // Build and Run stay enabled during a build.
    EXPECT_TRUE(g.mymainwindow->findChild<QToolButton*>("b_build")->isEnabled() &&
                g.mymainwindow->findChild<QToolButton*>("b_run")->isEnabled());
    QTest::keySequence(g.mytextview(), QKeySequence(Qt::CTRL | Qt::Key_Period));
    g.global_stop(); // twice is harmless
    ASSERT_TRUE(waitForBuild());
    EXPECT_EQ(status(), "Cancelled.");
    EXPECT_TRUE(waitUntil([&] { return !processExists(pid); }, 5));
    QFile::remove(pidFile());
    QTest::keySequence(g.mytextview(), QKeySequence(Qt::CTRL | Qt::Key_R));
    pid = waitForPid(pidFile());
    ASSERT_GT(pid, 0);
    EXPECT_TRUE(g.bAndRun);
    g.mymainwindow->findChild<QToolButton*>("b_stop")->click();
    g.mymainwindow->findChild<QToolButton*>("b_stop")->click();
    ASSERT_TRUE(waitForBuild());
    EXPECT_EQ(status(), "Stopped.");
    EXPECT_TRUE(waitUntil([&] { return !processExists(pid); }, 5));
    QFile::remove(pidFile());
    QTest::keySequence(g.mytextview(), QKeySequence(Qt::CTRL | Qt::Key_B));
    EXPECT_GT(waitForPid(pidFile()), 0);
    EXPECT_FALSE(g.bAndRun);
    g.global_stop();
    ASSERT_TRUE(waitForBuild());
    EXPECT_FALSE(statuses.contains("Done."));
}
} // namespace
