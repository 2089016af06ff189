// The new-project dialog: the smallest valid project, the remembered location, the
// replace question, and refusals that leave the disk exactly as it was.
#include "fileops_fixture.h"

#include <QLineEdit>

namespace {
const QByteArray kGlobal = "\nEvent AwakeFromNib()\n  Alert(\"Hello\")\nEnd Event\n";

class NewProjects : public FileOpsFixture {
protected:
    // Opens the dialog, types the name and location ({R}: the projects folder) and confirms.
    void create(Global& g, const QString& name, const QString& location) {
        g.NewProject();
        ASSERT_TRUE(g.NewProjectWindow && g.NewProjectWindow->isVisible());
        g.NewProjectName->setText(name);
        g.NewProjectLocation->setText(QString(location).replace("{R}", projectsPath()));
        g.NewProjectOK();
        EXPECT_FALSE(g.NewProjectWindow->isVisible());
    }
};

struct Refusal {
    const char* label;
    const char* name;
    const char* location;
    const char* message; // "" for a silent end
};

const Refusal kRefusals[] = {
    {"EmptyNameEndsSilently", "", "{R}", ""},
    {"SlashInName", "a/b", "{R}", "The project name cannot be used."},
    {"OnlyBlanks", "   ", "{R}", "The project name cannot be used."},
    {"LineBreakInName", "two\nlines", "{R}", "The project name cannot be used."},
    {"DotDot", "..", "{R}", "The project name cannot be used."},
    {"EmptyLocation", "Demo", "", "Choose a location for the project."},
    {"FileInTheWayOfTheLocation", "Demo", "{R}/plain.txt/deeper", "Could not create the project."},
    {"NameOfAFile", "plain.txt", "{R}", "Could not create the project."},
};

// Test names and failures show the case by its label.
void PrintTo(const Refusal& c, std::ostream* os) { *os << c.label; }

class NewProjectRefusal : public NewProjects, public ::testing::WithParamInterface<Refusal> {};
} // namespace

TEST_P(NewProjectRefusal, SaysWhyAndCreatesNothing) {
    const Refusal& r = GetParam();
    Global& g = start();
    writeFile(projectsPath() + "/plain.txt", "not a folder");
    const auto projectsBefore = treeOf(projectsPath());
    const auto homeBefore = treeOf(KelvaroTestEnvironment::instance().home());
    testPanels().clear();
    create(g, QString::fromUtf8(r.name), QString::fromUtf8(r.location));
    const auto messages = testPanels().messages();
    if (*r.message) {
        ASSERT_EQ(messages.size(), 1u);
        EXPECT_EQ(messages[0].title, QString::fromUtf8(r.message));
        EXPECT_FALSE(messages[0].text.isEmpty());
    } else {
        EXPECT_TRUE(testPanels().shown().empty());
    }
    EXPECT_EQ(treeOf(projectsPath()), projectsBefore);
    EXPECT_EQ(treeOf(KelvaroTestEnvironment::instance().home()), homeBefore);
    EXPECT_FALSE(g.ProjectIsLoaded());
}

INSTANTIATE_TEST_SUITE_P(Cases, NewProjectRefusal, ::testing::ValuesIn(kRefusals),
                         [](const auto& info) { return std::string(info.param.label); });

TEST_F(NewProjects, MissingInterfaceFileLeavesNothingHalfMade) {
    Global& g = start();
    ASSERT_TRUE(QFile::remove(bundlePath() + "/Contents/Resources/Empty.xib"));
    create(g, "Demo", "{R}/new/deeper");
    EXPECT_EQ(testPanels().messages().size(), 1u);
    EXPECT_TRUE(treeOf(projectsPath()).isEmpty());
}

TEST_F(NewProjects, CreatesTheSmallestProjectAndOpensIt) {
    struct Place {
        const char* location;
        const char* expected; // {R} projects folder, {H} home
    };
    const Place places[] = {{"{R}/made/here", "{R}/made/here/Dëmo Ä"},
                            {"{R}/", "{R}/Dëmo Ä"},
                            {"Desktop", "{H}/Desktop/Dëmo Ä"}};
    const QString home = KelvaroTestEnvironment::instance().home();
    Global& g = start();
    for (const Place& place : places) {
        SCOPED_TRACE(place.location);
        create(g, "Dëmo Ä", place.location);
        const QString p = QString(place.expected).replace("{R}", projectsPath()).replace("{H}", home);
        EXPECT_TRUE(testPanels().messages().empty());
        EXPECT_EQ(readFile(p + "/Global.NSObject.klvr"), kGlobal);
        EXPECT_EQ(readFile(p + "/en.lproj/MainMenu.xib"), readFile(bundlePath() + "/Contents/Resources/Empty.xib"));
        EXPECT_TRUE(QFileInfo(p + "/Dëmo Ä/Resources").isDir());
        EXPECT_EQ(g.ProjectPath, p);
        EXPECT_EQ(g.ProjectCurrentFilename(), p + "/Global.NSObject.klvr");
        EXPECT_EQ(g.aRecentProjects.value(0), p);
    }
}

TEST_F(NewProjects, ExistingFolderAsksAndMovesTheOldFilesToFreeTrashNames) {
    Global& g = start();
    const QString p = makeProject("Old", {{"Global.NSObject.klvr", "' old global"},
                                          {"Global.NSObject.klvr.trash", "' older"},
                                          {"en.lproj/MainMenu.xib", "old xib"},
                                          {"notes.txt", "kept"}});
    const auto before = treeOf(p);
    testPanels().queueInput(std::nullopt);
    create(g, "Old", "{R}");
    EXPECT_EQ(treeOf(p), before); // cancelled: nothing changed
    const auto asked = testPanels().shown();
    ASSERT_EQ(asked.size(), 1u);
    EXPECT_EQ(asked[0].kind, "input");
    EXPECT_EQ(asked[0].title, "Delete existing project?");
    EXPECT_EQ(asked[0].text, "There is already a directory with the selected name. Should existing files be replaced "
                             "in\n" + p + " ?");

    testPanels().queueInput(QString("Old"));
    create(g, "Old", "{R}");
    EXPECT_EQ(readFile(p + "/Global.NSObject.klvr"), kGlobal);
    EXPECT_EQ(readFile(p + "/Global.NSObject.klvr.trash"), "' older");
    EXPECT_EQ(readFile(p + "/Global.NSObject.klvr.2.trash"), "' old global");
    EXPECT_EQ(readFile(p + "/en.lproj/MainMenu.xib.trash"), "old xib");
    EXPECT_EQ(readFile(p + "/notes.txt"), "kept");
    EXPECT_EQ(g.ProjectPath, p);
}

TEST_F(NewProjects, LocationIsRememberedOnlyWhenChosen) {
    Global& g = start();
    const QString file = Global::supportFile("DefaultProjectLocation.txt");
    QFile::remove(file);
    g.NewProject();
    EXPECT_EQ(g.NewProjectLocation->text(), Global::supportFolder());
    const QString chosen = projectsPath() + "/chösen place";
    testPanels().queueOpen({chosen});
    g.NewProjectChoose();
    EXPECT_EQ(g.NewProjectLocation->text(), chosen);
    EXPECT_EQ(QString::fromUtf8(readFile(file)).trimmed(), chosen);
    g.NewProjectCancel();
    g.NewProjectName->setText("Typed");
    g.NewProject();
    EXPECT_EQ(g.NewProjectLocation->text(), chosen);
    EXPECT_EQ(g.NewProjectName->text(), "Typed"); // the name field keeps what it held
    g.NewProjectLocation->setText(projectsPath() + "/typed by hand");
    g.NewProjectOK();
    EXPECT_EQ(QString::fromUtf8(readFile(file)).trimmed(), chosen);
    EXPECT_TRUE(QFileInfo::exists(projectsPath() + "/typed by hand/Typed/Global.NSObject.klvr"));
}
