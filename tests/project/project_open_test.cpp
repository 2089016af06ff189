// Opening a project folder: validation, file lists, title, remembered projects and
// the hand-over to the platform tools.
#include "insight/parser.h"
#include "support/ide_fixture.h"

#include <QComboBox>
#include <QDir>
#include <QFile>

namespace {
const QByteArray kGlobal = "\nEvent AwakeFromNib()\n  Alert(\"Hello\")\nEnd Event\n";
}

using ProjectOpening = IdeFixture;

TEST_F(ProjectOpening, FilesAreListedGlobalFirstThenInListingOrderAndOthersIgnored) {
    Global& g = start();
    const QString p = makeProject("Shop", {{"b.NSObject.klvr", "\nSub B()\nEnd Sub\n"},
                                           {"Global.NSObject.klvr", kGlobal},
                                           {"a.NSWindow.klvr", ""},
                                           {"notes.txt", "x"},
                                           {"x.klvr.bak", "x"}});
    g.ProjectOpen(p);
    ASSERT_TRUE(g.ProjectIsLoaded());
    std::optional<QStringList> listing = KLVR_NSFILEMANAGER_LIST(p);
    QStringList expectedOthers;
    for (const QString& name : *listing)
        if (name.endsWith(".klvr") && name != "Global.NSObject.klvr")
            expectedOthers << name;
    EXPECT_EQ(g.projectFiles, QStringList{"Global.NSObject.klvr"} + expectedOthers);
    QStringList expectedTypes;
    for (const QString& name : expectedOthers)
        expectedTypes << name.section('.', 0, 0);
    EXPECT_EQ(g.ProjectTypes, expectedTypes);
    // Every source file was scanned before the Global file was shown.
    EXPECT_NE(parser::sharedparser()->GetSub(p + "/b.NSObject.klvr"), nullptr);
    EXPECT_EQ(parser::sharedparser()->GetSub(p + "/b.NSObject.klvr")->entryCount(), 1);
    EXPECT_EQ(g.ProjectCurrentFilename(), p + "/Global.NSObject.klvr");
    EXPECT_EQ(g.mycode->statusbar->text(), " Opened " + p);
}

TEST_F(ProjectOpening, AChosenFolderOpensAndInvalidOnesAreReportedWhileItStays) {
    // Open Project asks for a folder; a folder with only the Global file opens.
    Global& g = start();
    const QString good = makeProject("Hello", {{"Global.NSObject.klvr", kGlobal}});
    testPanels().queueOpen({good});
    g.OpenProject();
    EXPECT_TRUE(testPanels().lastOpenRequest().canChooseDirectories);
    EXPECT_FALSE(testPanels().lastOpenRequest().canChooseFiles);
    EXPECT_EQ(g.ProjectPath, good);
    EXPECT_EQ(g.projectFiles, QStringList{"Global.NSObject.klvr"});
    EXPECT_TRUE(g.ProjectTypes.isEmpty());
    EXPECT_TRUE(testPanels().messages().empty());
    EXPECT_FALSE(g.Welcome->isVisible());
    EXPECT_TRUE(g.mymainwindow->ti_project->isVisible());
    // The window title is padded by half the path's length.
    const int spaces = int(good.size() / 2 + 20 + 5);
    EXPECT_EQ(g.mymainwindow->windowTitle(), QString(spaces, ' ') + "Hello" + QString(20, ' ') + good);
    g.OpenProject(); // cancelled: nothing changes
    EXPECT_EQ(g.ProjectPath, good);

    const QString notAProject = makeProject("Plain", {{"global.nsobject.klvr", kGlobal}});
    g.ProjectOpen(notAProject);
    const QString missing = projectsPath() + "/Missing";
    g.ProjectOpen(missing);
    auto shown = testPanels().messages();
    ASSERT_EQ(shown.size(), 2u);
    EXPECT_EQ(shown[0].title, QStringLiteral("Selected folder is not a valid Kelvaro project"));
    EXPECT_EQ(shown[0].text, "Tried " + notAProject);
    EXPECT_EQ(shown[1].title, QStringLiteral("Selected folder is not valid"));
    EXPECT_EQ(shown[1].text, "Tried " + missing);
    // The path was taken before the check; the previous project's files remain.
    EXPECT_EQ(g.ProjectPath, missing);
    EXPECT_EQ(g.ProjectCurrentFilename(), good + "/Global.NSObject.klvr");
    EXPECT_EQ(g.mycode->statusbar->text(), QStringLiteral(" "));
}

TEST_F(ProjectOpening, LastAndRecentProjectsAreRemembered) {
    Global& g = start();
    QStringList opened;
    for (int i = 1; i <= 6; ++i) {
        opened << makeProject(QStringLiteral("P%1").arg(i), {{"Global.NSObject.klvr", kGlobal}});
        g.ProjectOpen(opened.last());
    }
    EXPECT_EQ(KLVR_READSTRING(Global::supportFile("LastProject.txt")), opened.last());
    EXPECT_EQ(g.aRecentProjects, (QStringList{opened[5], opened[4], opened[3], opened[2], opened[1]}));
    EXPECT_EQ(KLVR_READARRAY(Global::supportFile("RecentProjects.txt")), g.aRecentProjects);
    g.ProjectOpen(opened.last());
    EXPECT_EQ(g.aRecentProjects.mid(0, 2), (QStringList{opened[5], opened[5]}));
    // Choosing a recent entry opens it.
    g.mRecentProjects->actions().at(4)->trigger();
    EXPECT_EQ(g.ProjectPath, opened[2]);
}

TEST_F(ProjectOpening, PlatformProjectMadeWhileTheFilesAreScannedIsThereWhenOpeningEnds) {
    // A slow compiler: the opening starts it before scanning and waits for it at the end.
    const QString script = bundlePath() + "/Contents/MacOS/klvrcompiler";
    writeFile(script, "#!/bin/sh\nsleep 0.3\necho 'some warning' >&2\nmkdir -p \"$1/$(basename \"$1\").xcodeproj\"\n"
                      "touch \"$(dirname \"$0\")/done\"\n");
    QFile::setPermissions(script, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    Global& g = start();
    const QString p = makeProject("Slow", {{"Global.NSObject.klvr", kGlobal}, {"a.NSObject.klvr", "\nSub A()\n"}});
    g.ProjectOpen(p);
    EXPECT_TRUE(QFile::exists(bundlePath() + "/Contents/MacOS/done"));
    EXPECT_TRUE(QDir(p + "/Slow.xcodeproj").exists());
    EXPECT_FALSE(KLVR_KLTASK_ISRUNNING(g.go));
    EXPECT_FALSE(g.bIgnoreStdErr);
    EXPECT_FALSE(g.xcodeprojUnderWay);
    EXPECT_EQ(g.ProjectPath, p);
}

TEST_F(ProjectOpening, PlatformProjectIsMadeOnceAndHandedToXcodeAndTheIconIsCopiedIntoTheBuiltApplication) {
    installRecordingCompiler();
    Global& g = start();
    g.SelectAppIcon(); // no project: nothing is asked
    EXPECT_TRUE(testPanels().shown().empty());
    const QString p = makeProject("My App", {{"Global.NSObject.klvr", kGlobal}, {"icon.icns", "icon bytes"}});
    const QString builtIcon = p + "/build/Release/My App.app/Contents/Resources/icon.icns";
    writeFile(builtIcon, "old");
    g.ProjectOpen(p);
    EXPECT_EQ(compilerCalls(), QStringList{p + " -xcodeproj"});
    auto launches = testLauncher().launches();
    ASSERT_FALSE(launches.empty());
    EXPECT_EQ(launches.back().application, QStringLiteral("Xcode"));
    EXPECT_EQ(launches.back().document, p + "/My App.xcodeproj");
    EXPECT_FALSE(launches.back().flag);
    EXPECT_EQ(readFile(builtIcon), QByteArray("icon bytes"));

    testPanels().queueOpen({p + "/icon.icns"}); // the project's own icon is kept as it is
    g.SelectAppIcon();
    EXPECT_EQ(readFile(p + "/icon.icns"), QByteArray("icon bytes"));
    writeFile(projectsPath() + "/new.icns", "new icon");
    testPanels().queueOpen({projectsPath() + "/new.icns"});
    g.SelectAppIcon();
    EXPECT_EQ(testPanels().lastOpenRequest().types, QStringList{"icns"});
    EXPECT_FALSE(testPanels().lastOpenRequest().canChooseDirectories);
    EXPECT_EQ(readFile(p + "/icon.icns"), QByteArray("new icon"));
    EXPECT_EQ(readFile(builtIcon), QByteArray("new icon"));

    QDir().mkpath(p + "/My App.xcodeproj");
    g.ProjectOpen(p);
    EXPECT_EQ(compilerCalls().size(), 1); // not passed to the compiler again
}
