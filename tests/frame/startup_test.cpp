// The start-up from the support folder's point of view: what it reads, what it
// creates (nothing), what it shows, and how it survives missing or broken resources.
#include "frame/global.h"
#include "frame/mainwindow.h"

#include "support/test_environment.h"

#include <QAction>
#include <QDir>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

const char* kPlistHead = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                         "<plist version=\"1.0\">";

class StartupTest : public ::testing::Test {
protected:
    void SetUp() override {
        KelvaroTestEnvironment::instance().reset();
        klvrSetBundlePath(bundle.path());
        QDir().mkpath(resources());
        QDir().mkpath(bundle.path() + "/Contents/MacOS");
    }
    void TearDown() override {
        global.reset();
        klvrSetBundlePath(KELVARO_APP_DIR);
    }
    QString resources() const { return bundle.path() + "/Contents/Resources"; }
    void writeList(const QString& name, const QByteArray& body) {
        writeFile(resources() + "/" + name, QByteArray(kPlistHead) + body + "</plist>");
    }
    Global& start() {
        global = std::make_unique<Global>();
        global->awakeFromNib();
        return *global;
    }
    QString home() const { return KelvaroTestEnvironment::instance().home(); }

    QTemporaryDir bundle;
    std::unique_ptr<Global> global;
};

} // namespace

TEST_F(StartupTest, FirstStartShowsTheWelcomeWindowAndCreatesNothing) {
    Global& g = start();
    EXPECT_EQ(Global::sharedGlobal(), &g);
    ASSERT_NE(g.mymainwindow, nullptr);
    EXPECT_EQ(g.mymainwindow->styleMask(), 15);
    EXPECT_TRUE(g.mymainwindow->isVisible());
    ASSERT_TRUE(g.Welcome);
    EXPECT_TRUE(g.Welcome->isVisible());
    EXPECT_TRUE(testPanels().messages().empty());
    EXPECT_FALSE(QFileInfo::exists(home() + "/Library"));
    EXPECT_TRUE(g.ProjectPath.isEmpty());
    // The developer tools were looked for by starting "Xcode" with no document.
    auto launches = testLauncher().launches();
    ASSERT_FALSE(launches.empty());
    EXPECT_EQ(launches[0].application, QStringLiteral("Xcode"));
    EXPECT_EQ(launches[0].document, QString());
    EXPECT_FALSE(launches[0].flag);
    g.WelcomeClose();
    EXPECT_FALSE(g.Welcome->isVisible());
}

TEST_F(StartupTest, MissingDeveloperToolsAreReportedAndTheStartUpGoesOn) {
    testLauncher().setMissing("Xcode");
    Global& g = start();
    auto shown = testPanels().messages();
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_EQ(shown[0].title, QStringLiteral("Error: Xcode 4 not found"));
    EXPECT_EQ(shown[0].text,
              QStringLiteral("Kelvaro needs to have installed the default development packages of Mac OS X "
                             "(/Developer/Applications/Xcode.app).\nPlease install the Objective-C compiler and "
                             "related packages.\nYou will find it on the installation media for Mac OS X."));
    EXPECT_TRUE(g.Welcome->isVisible());
}

TEST_F(StartupTest, ALastProjectThatWasDeletedShowsTheWelcomeWindowSilently) {
    writeFile(home() + "/Library/Kelvaro/LastProject.txt", (home() + "/gone/Hello").toUtf8());
    Global& g = start();
    EXPECT_TRUE(g.Welcome->isVisible());
    EXPECT_TRUE(testPanels().messages().empty());
    EXPECT_TRUE(g.ProjectPath.isEmpty());

    global.reset();
    writeFile(home() + "/Library/Kelvaro/LastProject.txt", "");
    Global& again = start();
    EXPECT_TRUE(again.Welcome->isVisible());
    EXPECT_TRUE(testPanels().messages().empty());
}

TEST_F(StartupTest, ALastProjectThatExistsIsReopened) {
    const QString project = home() + "/Projects/My App";
    writeFile(project + "/Global.NSObject.klvr", "\nEvent AwakeFromNib()\nEnd Event\n");
    writeFile(home() + "/Library/Kelvaro/LastProject.txt", project.toUtf8());
    Global& g = start();
    EXPECT_EQ(g.ProjectPath, project);
    EXPECT_EQ(g.projectFiles, QStringList{"Global.NSObject.klvr"});
    EXPECT_FALSE(g.Welcome->isVisible());
}

TEST_F(StartupTest, AllVocabularyListsMissingStillCompletes) {
    Global& g = start();
    EXPECT_TRUE(g.KelvaroKeywords.isEmpty());
    EXPECT_TRUE(g.KelvaroTypes.isEmpty());
    EXPECT_TRUE(g.KelvaroCommands.isEmpty());
    EXPECT_EQ(KLVR_NSDICTIONARY_COUNT(g.dClassCompletion), 0);
    EXPECT_TRUE(g.Welcome->isVisible());
}

TEST_F(StartupTest, VocabularyListsFillTheSevenTables) {
    writeList("type.plist", "<dict><key>0</key><string>Integer</string><key>1</key><string>String</string></dict>");
    writeList("keyword.plist", "<dict><key>a</key><string>Sub</string><key>b</key><string>End</string></dict>");
    writeList("const.plist", "<dict><key>0</key><integer>42</integer><key>1</key><string>NSOKButton</string></dict>");
    writeList("function.plist", "<dict><key>MsgBox</key><string>MsgBox(text)</string>"
                                "<key>MSGBOX</key><string>second</string><key>Len</key><string>Len(text)</string></dict>");
    writeList("class.plist", "<dict><key>NSString</key><dict><key>length</key><array><string>any</string>"
                             "<string>length</string><string>Integer</string></array></dict></dict>");
    writeList("object.plist", "<dict><key>App</key><dict><key>quit</key><array><string>x</string>"
                              "<string>quit()</string><string>NSObject</string></array></dict></dict>");
    Global& g = start();
    EXPECT_EQ(g.KelvaroTypes, (QStringList{"Integer", "String"}));
    EXPECT_EQ(g.KelvaroKeywords, (QStringList{"Sub", "End"}));
    EXPECT_EQ(g.KelvaroConsts, (QStringList{"42", "NSOKButton"})); // numbers become their text
    EXPECT_EQ(g.KelvaroCommands, (QStringList{"MsgBox", "MSGBOX", "Len"}));
    EXPECT_EQ(KLVR_NSDICTIONARY_OBJECT(g.dCompletion2function, "msgbox").toString(), QStringLiteral("MsgBox(text)"));
    EXPECT_EQ(KLVR_NSDICTIONARY_OBJECT(g.dCompletion2function, "len").toString(), QStringLiteral("Len(text)"));
    Value length = KLVR_NSDICTIONARY_OBJECT(KLVR_NSDICTIONARY_OBJECT(g.dClassCompletion, "NSString"), "length");
    EXPECT_EQ(KLVR_NSARRAY_OBJECT(length, 2).toString(), QStringLiteral("Integer"));
    EXPECT_EQ(KLVR_NSDICTIONARY_COUNT(g.dObjectCompletion), 1);

    // A second class of the same name replaces the first member map.
    Value other = Value::dictionary();
    g.addClass("NSString", other);
    EXPECT_EQ(KLVR_NSDICTIONARY_OBJECT(g.dClassCompletion, "NSString"), other);
}

TEST_F(StartupTest, AListThatIsNotADictionaryIsReportedAndTheRestStillLoads) {
    writeList("type.plist", "<array><string>Integer</string></array>");
    writeFile(resources() + "/keyword.plist", "this is not a property list");
    writeList("const.plist", "<dict><key>0</key><string>NSOKButton</string></dict>");
    Global& g = start();
    auto shown = testPanels().messages();
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_EQ(shown[0].title, QStringLiteral("Exception KLCastException"));
    EXPECT_TRUE(shown[0].text.startsWith(QStringLiteral("'Dictionary' expected")));
    EXPECT_TRUE(g.KelvaroTypes.isEmpty());
    EXPECT_TRUE(g.KelvaroKeywords.isEmpty()); // unparsable: empty
    EXPECT_EQ(g.KelvaroConsts, QStringList{"NSOKButton"});
    EXPECT_TRUE(g.Welcome->isVisible());
}

TEST_F(StartupTest, RecentProjectsKeepFiveNewestFirstWithDuplicates) {
    Global& g = start();
    QDir().mkpath(Global::supportFolder());
    for (int i = 1; i <= 6; ++i)
        g.UpdateRecentProjects(QStringLiteral("/p/%1").arg(i));
    EXPECT_EQ(g.aRecentProjects, (QStringList{"/p/6", "/p/5", "/p/4", "/p/3", "/p/2"}));
    g.UpdateRecentProjects("/p/6");
    EXPECT_EQ(g.aRecentProjects.mid(0, 2), (QStringList{"/p/6", "/p/6"}));
    ASSERT_TRUE(g.mRecentProjects);
    QList<QAction*> items = g.mRecentProjects->actions();
    ASSERT_EQ(items.size(), 5);
    EXPECT_EQ(items[0]->text(), QStringLiteral("/p/6"));
    EXPECT_EQ(items[0]->data().toString(), QStringLiteral("/p/6"));

    // The next start reads the list back and rebuilds the menu.
    global.reset();
    Global& next = start();
    EXPECT_EQ(next.aRecentProjects, (QStringList{"/p/6", "/p/6", "/p/5", "/p/4", "/p/3"}));
    EXPECT_EQ(next.mRecentProjects->actions().size(), 5);
}

TEST_F(StartupTest, MainWindowIsPlacedTwoHundredFromTheLeftAndFourHundredNarrower) {
    EXPECT_EQ(Global::mainWindowFrame(QRect(0, 0, 1440, 900)), QRect(200, 0, 1040, 900));
    EXPECT_EQ(Global::mainWindowFrame(QRect(1440, 22, 1920, 1058)), QRect(1640, 22, 1520, 1058));
    // Small screens: the margins give way before the window gets narrower than 800.
    EXPECT_EQ(Global::mainWindowFrame(QRect(0, 0, 1024, 768)), QRect(112, 0, 800, 768));
    EXPECT_EQ(Global::mainWindowFrame(QRect(0, 0, 800, 600)), QRect(0, 0, 800, 600));
    EXPECT_EQ(Global::mainWindowFrame(QRect(0, 0, 640, 480)), QRect(0, 0, 640, 480));
}

TEST_F(StartupTest, HelpActionsOpenTheirDocumentsWithTheirApplications) {
    Global& g = start();
    testLauncher().clear();
    g.QuickStart();
    g.UsersGuide();
    g.ReleaseNotes();
    g.LanguageReference();
    auto launches = testLauncher().launches();
    ASSERT_EQ(launches.size(), 4u);
    EXPECT_EQ(launches[0].application, QStringLiteral("Preview"));
    EXPECT_EQ(launches[0].document, resources() + "/Quick Start.pdf");
    EXPECT_EQ(launches[1].document, resources() + "/General Manual.pdf");
    EXPECT_EQ(launches[2].application, QStringLiteral("TextEdit"));
    EXPECT_EQ(launches[2].document, resources() + "/Readme.txt");
    EXPECT_EQ(launches[3].application, QStringLiteral("Safari"));
    EXPECT_EQ(launches[3].document, resources() + "/Language Reference.html");
}
