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

TEST_F(StartupTest, FirstStartWithoutVocabularyListsShowsTheWelcomeWindowAndCreatesNothing) {
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
    EXPECT_TRUE(g.KelvaroKeywords.isEmpty() && g.KelvaroTypes.isEmpty() && g.KelvaroCommands.isEmpty());
    EXPECT_EQ(KLVR_NSDICTIONARY_COUNT(g.dClassCompletion), 0);
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

TEST_F(StartupTest, TheLastProjectIsReopenedWhenItExistsAndOtherwiseTheWelcomeWindowShowsSilently) {
    const QString project = home() + "/Projects/My App";
    writeFile(project + "/Global.NSObject.klvr", "\nEvent AwakeFromNib()\nEnd Event\n");
    for (const QString& last : {home() + "/gone/Hello", QString(), project}) {
        SCOPED_TRACE(last.toStdString());
        writeFile(home() + "/Library/Kelvaro/LastProject.txt", last.toUtf8());
        global.reset();
        Global& g = start();
        EXPECT_TRUE(testPanels().messages().empty());
        EXPECT_EQ(g.Welcome->isVisible(), last != project);
        EXPECT_EQ(g.ProjectPath, last == project ? project : QString());
    }
    EXPECT_EQ(global->projectFiles, QStringList{"Global.NSObject.klvr"});
}

TEST_F(StartupTest, VocabularyListsFillTheSevenTablesAndBrokenOnesAreReported) {
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
    EXPECT_TRUE(testPanels().messages().empty());

    // A list that is not a dictionary is reported, an unparsable one is empty, and the
    // rest still loads.
    writeList("type.plist", "<array><string>Integer</string></array>");
    writeFile(resources() + "/keyword.plist", "this is not a property list");
    writeList("const.plist", "<dict><key>0</key><string>NSOKButton</string></dict>");
    global.reset();
    Global& next = start();
    auto shown = testPanels().messages();
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_EQ(shown[0].title, QStringLiteral("Exception KLCastException"));
    EXPECT_TRUE(shown[0].text.startsWith(QStringLiteral("'Dictionary' expected")));
    EXPECT_TRUE(next.KelvaroTypes.isEmpty());
    EXPECT_TRUE(next.KelvaroKeywords.isEmpty());
    EXPECT_EQ(next.KelvaroConsts, QStringList{"NSOKButton"});
    EXPECT_TRUE(next.Welcome->isVisible());
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
    const std::pair<const char*, QString> expected[] = {{"Preview", resources() + "/Quick Start.pdf"},
                                                        {"Preview", resources() + "/General Manual.pdf"},
                                                        {"TextEdit", resources() + "/Readme.txt"},
                                                        {"Safari", resources() + "/Language Reference.html"}};
    auto launches = testLauncher().launches();
    ASSERT_EQ(launches.size(), 4u);
    for (std::size_t i = 0; i < launches.size(); ++i) {
        EXPECT_EQ(launches[i].application, QString::fromLatin1(expected[i].first)) << i;
        EXPECT_EQ(launches[i].document, expected[i].second) << i;
    }
}
