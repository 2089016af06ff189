// The outside-tool commands in a project folder whose name has blanks, quotes, a leading
// "-" and non-ASCII letters: what each hands to the launch service, the database tools'
// first use, the interface designer's order of launches and its build, and the "Xcode"
// menu's items.
#include "buildrun/build_fixture.h"

#include <QApplication>
#include <QTest>
#include <QToolButton>

namespace {

const QString kName = QStringLiteral("-My \"odd\" Prøject's");
const QByteArray kGlobal = "\nEvent AwakeFromNib()\nEnd Event\n";
const QString kAbout = QStringLiteral(
    "\nAbout Xcode integration\n\n\nKelvaro is fully compatible with Xcode.\n\nYou can open existing Xcode "
    "projects and work on a project in both IDEs in parallel.\n\nNo additional configuration needed and your "
    "projects stay always Xcode-compatible.\n\n\nKelvaro can create new Xcode projects. And you can add new "
    "files to a project in Kelvaro based on Xcode file templates.\n\n\n\nXcode Interoperability\n\nKelvaro will "
    "automatically navigate you to Xcode when working with specific files (like xib, storyboard, etc.).\n\nXcode "
    "project files are loaded and saved and changes of source code project files are exchanged. For the "
    "building process it uses xcodebuild.\n\nIn future Xcode support will be extended over the next "
    "months...\n\n");

QStringList launched() {
    QStringList out;
    for (const auto& l : testLauncher().launches())
        out << l.application + " | " + l.document + " | " + (l.flag ? "true" : "false");
    return out;
}

class ExternalTools : public BuildFixture {
protected:
    void SetUp() override {
        BuildFixture::SetUp();
        // The product's table, for the configured addresses and packages.
        QFile::copy(KELVARO_SOURCE_DIR "/resources/launchers.txt", bundlePath() + "/Contents/Resources/launchers.txt");
        installRecordingCompiler();
    }
    void TearDown() override {
        EXPECT_TRUE(waitForBuild());
        BuildFixture::TearDown();
    }
    void openProject() {
        project = makeProject(kName, {{"Global.NSObject.klvr", kGlobal}, {"b.NSObject.klvr", "\nSub B()\nEnd Sub\n"}});
        global->ProjectOpen(project);
        ASSERT_TRUE(global->ProjectIsLoaded());
        ASSERT_TRUE(waitForBuild());
        testLauncher().clear();
        testPanels().clear();
    }
    QStringList expand(QStringList lines) const {
        return lines.replaceInStrings("{P}", project).replaceInStrings("{N}", kName);
    }
    QStringList messageTexts() const {
        QStringList texts;
        for (const auto& shown : testPanels().messages())
            texts << shown.title + " / " + shown.text;
        return texts;
    }
};

struct ToolCommand {
    const char* action;
    bool needsProject;
    QStringList launches; // "{P}" stands for the project folder, "{N}" for its name
    QStringList messages; // title / text
};

void PrintTo(const ToolCommand& c, std::ostream* out) { *out << c.action; }

class ToolCommands : public ExternalTools, public ::testing::WithParamInterface<ToolCommand> {};

TEST_P(ToolCommands, HandOverExactlyTheirPathsAndNeedAProjectWhenTheySaySo) {
    const ToolCommand& c = GetParam();
    Global& g = start();
    testLauncher().clear();
    testPanels().clear();
    ASSERT_TRUE(klvrInvoke(&g, c.action, Value()));
    if (c.needsProject) {
        EXPECT_TRUE(launched().isEmpty());
        EXPECT_TRUE(messageTexts().isEmpty());
    } else {
        EXPECT_EQ(launched(), c.launches);
        EXPECT_EQ(messageTexts(), c.messages);
    }
    EXPECT_FALSE(KLVR_NSTHREAD_ISEXECUTING(g.thBuild));

    openProject();
    ASSERT_TRUE(klvrInvoke(&g, c.action, Value()));
    EXPECT_EQ(launched(), expand(c.launches));
    EXPECT_EQ(messageTexts(), c.messages);
}

INSTANTIATE_TEST_SUITE_P(
    Commands, ToolCommands,
    ::testing::Values(
        ToolCommand{"IB", true,
                    {"Xcode | {P}/{N}.xcodeproj | true", "Xcode | {P}/{N}/en.lproj/MainMenu.xib | false"}, {}},
        ToolCommand{"Preferences", true,
                    {"Xcode | {P}/{N}.xcodeproj | true", "Xcode | {P}/{N}/en.lproj/Preferences.xib | false"}, {}},
        ToolCommand{"Finder", true, {"Finder | {P}/{N}/Resources/ | true"}, {}},
        ToolCommand{"FinderProject", true, {"Finder | {P} | true"}, {}},
        ToolCommand{"CD", true, {}, {"Sorry. Not implemented yet. / "}},
        ToolCommand{"CocoaFrameworks", false, {"Safari | https://kelvaro.example/docs/frameworks | true"}, {}},
        ToolCommand{"Forum", false, {"Safari | https://kelvaro.example/forum | true"}, {}},
        ToolCommand{"AboutXcodeIntegration", false, {}, {kAbout + " / "}}),
    [](const auto& info) { return std::string(info.param.action); });

TEST_F(ExternalTools, AMissingProgramIsToldWithThePackageToInstall) {
    Global& g = start();
    openProject();
    for (const char* application : {"Finder", "Safari"})
        testLauncher().setMissing(application);
    g.FinderProject();
    g.Forum();
    const QString install = "Kelvaro opens it with a program of this desktop that is not installed.\n"
                            "Please install the Debian package \"xdg-utils\".";
    EXPECT_EQ(messageTexts(), (QStringList{"Error: Finder not found / " + install,
                                           "Error: Safari not found / " + install}));
}

// The platform project before the interface file, a build in the background, and after
// it: a successful build opens the project again and leaves the IDE behind; an error
// brings the IDE to the front and clears the flag.
struct DesignerBuild {
    const char* name;
    QByteArray compiler;
    QStringList launchesAfterBuild;
    bool delayedShowAfterBuild;
};

void PrintTo(const DesignerBuild& c, std::ostream* out) { *out << c.name; }

class InterfaceDesigner : public ExternalTools, public ::testing::WithParamInterface<DesignerBuild> {};

TEST_P(InterfaceDesigner, OpensProjectThenInterfaceFileWhileTheProjectBuilds) {
    const DesignerBuild& c = GetParam();
    installCompiler(c.compiler);
    Global& g = start();
    openProject();
    g.mymainwindow->findChild<QToolButton*>("b_ib")->click();
    EXPECT_TRUE(g.bIBDelayedShow);
    EXPECT_EQ(launched(), expand({"Xcode | {P}/{N}.xcodeproj | true", "Xcode | {P}/{N}/en.lproj/MainMenu.xib | false"}));
    ASSERT_TRUE(waitForBuild());
    EXPECT_EQ(launched().mid(2), expand(c.launchesAfterBuild));
    EXPECT_EQ(g.bIBDelayedShow, c.delayedShowAfterBuild);
}

INSTANTIATE_TEST_SUITE_P(
    Builds, InterfaceDesigner,
    ::testing::Values(DesignerBuild{"Succeeds", "exit 0\n", {"Xcode | {P}/{N}.xcodeproj | false"}, true},
                      DesignerBuild{"Fails",
                                    "echo 'Kelvaro: Syntax error in line 2 in file Global.NSObject.klvr' >&2\n",
                                    {},
                                    false}),
    [](const auto& info) { return std::string(info.param.name); });

// Stands in for the project's file operations, which provide "(New xib...)".
class GlobalWithNewNib : public Global {
    Q_OBJECT
public:
    int newNibCalls = 0;
    Q_INVOKABLE void subNewNib(const Value&) { ++newNibCalls; }
};

TEST_F(ExternalTools, XcodeMenuItemsMakeANewInterfaceFileOrBuildAndOpenTheProject) {
    auto* g = new GlobalWithNewNib();
    global.reset(g);
    g->awakeFromNib();
    openProject();
    QAction newXib("(New xib...)");
    newXib.setProperty("tag", 2);
    g->Xcode(&newXib);
    EXPECT_EQ(g->newNibCalls, 1);
    EXPECT_FALSE(g->bIBDelayedShow);
    EXPECT_FALSE(KLVR_NSTHREAD_ISEXECUTING(g->thBuild));

    QAction xib("MainMenu.xib");
    g->Xcode(&xib);
    EXPECT_TRUE(g->bIBDelayedShow);
    ASSERT_TRUE(waitForBuild());
    EXPECT_EQ(g->newNibCalls, 1);
    EXPECT_EQ(compilerCalls().last(), project + " -Release");
    EXPECT_EQ(launched(), expand({"Xcode | {P}/{N}.xcodeproj | false"}));
}

TEST_F(ExternalTools, NewInterfaceFileItemDoesNothingWithoutTheFileOperations) {
    Global& g = start();
    openProject();
    QAction newXib("(New xib...)");
    newXib.setProperty("tag", 2);
    g.Xcode(&newXib);
    EXPECT_FALSE(g.bIBDelayedShow);
    EXPECT_FALSE(KLVR_NSTHREAD_ISEXECUTING(g.thBuild));
    EXPECT_TRUE(launched().isEmpty());
}

// The database tools: the prompt and the open panel the first time, the choice
// remembered, started at once afterwards; a cancelled panel leaves no trace.
struct DatabaseTool {
    const char* action;
    bool needsProject;
    QString tool;
    QString locationFile;
    QString address;
};

void PrintTo(const DatabaseTool& c, std::ostream* out) { *out << c.action; }

class DatabaseTools : public ExternalTools, public ::testing::WithParamInterface<DatabaseTool> {};

TEST_P(DatabaseTools, FirstUseAsksAndRemembersLaterUsesStartAtOnce) {
    const DatabaseTool& c = GetParam();
    Global& g = start();
    testPanels().clear();
    testLauncher().clear();
    const QString file = Global::supportFile(c.locationFile);
    if (c.needsProject) {
        klvrInvoke(&g, c.action, Value());
        EXPECT_TRUE(testPanels().shown().empty());
        openProject();
    }

    klvrInvoke(&g, c.action, Value()); // the open panel is cancelled
    const auto shown = testPanels().shown();
    ASSERT_EQ(shown.size(), 2u);
    EXPECT_EQ(shown[0].title, "Please select the GUI tool '" + c.tool + "'");
    EXPECT_EQ(shown[0].text, "If you have not installed '" + c.tool + "' yet, download it from " + c.address +
                                 " and install it, please.");
    EXPECT_EQ(shown[1].kind, "open");
    EXPECT_TRUE(testPanels().lastOpenRequest().canChooseFiles);
    EXPECT_FALSE(testPanels().lastOpenRequest().canChooseDirectories);
    EXPECT_FALSE(QFile::exists(file));
    EXPECT_TRUE(launched().isEmpty());

    const QString chosen = "/opt/-Data \"Tool\" ü's/run tool";
    testPanels().queueOpen({chosen});
    klvrInvoke(&g, c.action, Value());
    EXPECT_EQ(QString::fromUtf8(readFile(file)), chosen);
    EXPECT_EQ(launched(), QStringList{chosen + " |  | false"});

    testPanels().clear();
    testLauncher().clear();
    klvrInvoke(&g, c.action, Value());
    EXPECT_TRUE(testPanels().shown().empty());
    EXPECT_EQ(launched(), QStringList{chosen + " |  | false"});

    // A remembered program that is gone is told, and the file stays as it is.
    testLauncher().setMissing(chosen);
    klvrInvoke(&g, c.action, Value());
    EXPECT_EQ(messageTexts(), QStringList{"Error: " + c.tool + " not found / \"" + chosen +
                                          "\" cannot be started. To choose another program, delete " + file + "."});
    EXPECT_EQ(QString::fromUtf8(readFile(file)), chosen);
}

INSTANTIATE_TEST_SUITE_P(
    Tools, DatabaseTools,
    ::testing::Values(DatabaseTool{"MySQL", true, "Sequel Pro", "SequelPro.txt",
                                   "https://kelvaro.example/database-tools/sequel-pro"},
                      DatabaseTool{"MySQLAdmin", false, "MySQL Administrator", "MySQLAdmin.txt",
                                   "https://kelvaro.example/database-tools/mysql-administrator"}),
    [](const auto& info) { return std::string(info.param.action); });

TEST_F(ExternalTools, GlobalButtonShowsTheGlobalSourceAndFrontBringsTheWindowForward) {
    Global& g = start();
    g.global_global();
    EXPECT_TRUE(g.ProjectCurrentFilename().isEmpty());
    openProject();
    g.ProjectOpenCode("b.NSObject.klvr");
    ASSERT_EQ(g.ProjectCurrentFilename(), project + "/b.NSObject.klvr");
    g.mymainwindow->findChild<QToolButton*>("b_global")->click();
    EXPECT_EQ(g.ProjectCurrentFilename(), project + "/Global.NSObject.klvr");

    QWidget other;
    other.show();
    other.activateWindow();
    ASSERT_TRUE(QTest::qWaitFor([&] { return QApplication::activeWindow() == &other; }));
    g.NSApplication_ActivateIgnoringOtherApps();
    EXPECT_TRUE(QTest::qWaitFor([&] { return QApplication::activeWindow() == g.mymainwindow; }));
}

} // namespace

#include "external_tools_test.moc"
