// The outside-tool commands in a project folder whose name has blanks, quotes, a leading
// "-" and non-ASCII letters: what each hands to the launch service (recorded), the
// database tools' first use, and the "Xcode" menu's items.
#include "buildrun/build_fixture.h"

#include <QApplication>
#include <QTest>
#include <QToolButton>

namespace {

const QString kName = QStringLiteral("-My \"odd\" Prøject's");

QStringList launched() {
    QStringList out;
    for (const auto& l : testLauncher().launches())
        out << l.application + " | " + l.document + " | " + (l.flag ? "true" : "false");
    return out;
}

QStringList shownPanels() {
    QStringList out;
    for (const auto& shown : testPanels().shown())
        out << shown.kind + ": " + shown.title + " / " + shown.text;
    return out;
}

class ExternalTools : public BuildFixture {
protected:
    void SetUp() override {
        BuildFixture::SetUp();
        // The product's table, for the configured addresses.
        QFile::copy(KELVARO_SOURCE_DIR "/resources/launchers.txt", bundlePath() + "/Contents/Resources/launchers.txt");
        installRecordingCompiler();
    }
    void TearDown() override {
        EXPECT_TRUE(waitForBuild());
        BuildFixture::TearDown();
    }
    void openProject() {
        project = makeProject(kName, {{"Global.NSObject.klvr", "\n"}, {"b.NSObject.klvr", "\n"}});
        global->ProjectOpen(project);
        ASSERT_TRUE(waitForBuild());
        testLauncher().clear();
        testPanels().clear();
    }
    QStringList expand(QStringList lines) const {
        return lines.replaceInStrings("{P}", project).replaceInStrings("{N}", kName);
    }
};

struct ToolCommand {
    const char* action;
    bool needsProject;
    QStringList launches; // "{P}" stands for the project folder, "{N}" for its name
    QStringList panels;
};
void PrintTo(const ToolCommand& c, std::ostream* out) { *out << c.action; }

class ToolCommands : public ExternalTools, public ::testing::WithParamInterface<ToolCommand> {};

TEST_P(ToolCommands, HandOverExactlyTheirPathsAndNeedAProjectWhenTheySaySo) {
    const ToolCommand& c = GetParam();
    Global& g = start();
    testPanels().clear();
    testLauncher().clear(); // the start-up's look for "Xcode"
    ASSERT_TRUE(klvrInvoke(&g, c.action, Value()));
    EXPECT_EQ(launched(), c.needsProject ? QStringList() : c.launches);
    EXPECT_EQ(shownPanels(), c.needsProject ? QStringList() : c.panels);

    openProject();
    ASSERT_TRUE(klvrInvoke(&g, c.action, Value()));
    EXPECT_EQ(launched(), expand(c.launches)); // IB: the platform project first
    EXPECT_EQ(shownPanels(), c.panels);
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
        ToolCommand{"CD", true, {}, {"message: Sorry. Not implemented yet. / "}},
        ToolCommand{"CocoaFrameworks", false, {"Safari | https://kelvaro.example/docs/frameworks | true"}, {}},
        ToolCommand{"Forum", false, {"Safari | https://kelvaro.example/forum | true"}, {}}),
    [](const auto& info) { return std::string(info.param.action); });

// Stands in for the project's file operations, which provide "(New xib...)".
class GlobalWithNewNib : public Global {
    Q_OBJECT
public:
    int newNibCalls = 0;
    Q_INVOKABLE void subNewNib(const Value&) { ++newNibCalls; }
};

TEST_F(ExternalTools, XcodeMenuMakesANewInterfaceFileOrBuildsAndThenOpensTheProject) {
    auto* g = new GlobalWithNewNib();
    global.reset(g);
    g->awakeFromNib();
    openProject();
    QAction newXib("(New xib...)"), xib("MainMenu.xib");
    newXib.setProperty("tag", 2);
    g->Xcode(&newXib);
    EXPECT_EQ(g->newNibCalls, 1);
    EXPECT_FALSE(g->bIBDelayedShow || KLVR_NSTHREAD_ISEXECUTING(g->thBuild));

    g->Xcode(&xib);
    EXPECT_TRUE(g->bIBDelayedShow);
    ASSERT_TRUE(waitForBuild());
    EXPECT_TRUE(g->bIBDelayedShow); // only a compiler error clears it
    EXPECT_EQ(compilerCalls().last(), project + " -Release");
    EXPECT_EQ(launched(), expand({"Xcode | {P}/{N}.xcodeproj | false"}));
}

struct DatabaseTool {
    const char* action;
    bool needsProject;
    QString tool;
    QString locationFile;
    QString address;
};
void PrintTo(const DatabaseTool& c, std::ostream* out) { *out << c.action; }

class DatabaseTools : public ExternalTools, public ::testing::WithParamInterface<DatabaseTool> {};

// The prompt and the open panel the first time; a cancelled panel leaves no trace; the
// choice is remembered and started at once afterwards, and told when it is gone.
TEST_P(DatabaseTools, FirstUseAsksAndRemembersLaterUsesStartAtOnce) {
    const DatabaseTool& c = GetParam();
    Global& g = start();
    const QString file = Global::supportFile(c.locationFile);
    const QString chosen = "/opt/-Data \"Tool\" ü's/run tool";
    // Uses the command with the open panel's answer and the launcher's missing program.
    auto use = [&](const QStringList& chooses, const QString& missing = QString()) {
        testPanels().clear();
        testLauncher().clear();
        testPanels().queueOpen(chooses);
        testLauncher().setMissing(missing);
        klvrInvoke(&g, c.action, Value());
    };
    if (c.needsProject) {
        use({chosen});
        EXPECT_TRUE(shownPanels().isEmpty());
        openProject();
    }
    use({}); // nothing chosen
    EXPECT_EQ(shownPanels(), (QStringList{"message: Please select the GUI tool '" + c.tool +
                                              "' / If you have not installed '" + c.tool + "' yet, download it from " +
                                              c.address + " and install it, please.",
                                          "open: /usr/bin / "}));
    EXPECT_FALSE(testPanels().lastOpenRequest().canChooseDirectories);
    EXPECT_FALSE(QFile::exists(file));
    EXPECT_TRUE(launched().isEmpty());

    use({chosen});
    EXPECT_EQ(QString::fromUtf8(readFile(file)), chosen);
    EXPECT_EQ(launched(), QStringList{chosen + " |  | false"});
    use({"/usr/bin/other"});
    EXPECT_TRUE(shownPanels().isEmpty());
    EXPECT_EQ(launched(), QStringList{chosen + " |  | false"});
    use({"/usr/bin/other"}, chosen);
    EXPECT_EQ(shownPanels(), QStringList{"message: Error: " + c.tool + " not found / \"" + chosen +
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
    openProject();
    g.ProjectOpenCode("b.NSObject.klvr");
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
