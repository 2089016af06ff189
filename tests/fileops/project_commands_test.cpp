// The other project commands: delegates from the templates, Objective-C classes,
// resources, frameworks and interface files.
#include "fileops_fixture.h"

#include <QAction>
#include <QLineEdit>

namespace {
const QByteArray kGlobal = "\nEvent AwakeFromNib()\n  Alert(\"Hello\")\nEnd Event\n";
const QStringList kTail{"-o", "{P}/Tools Ä.xcodeproj", "-p", "{P}"};

class ProjectCommands : public FileOpsFixture {
protected:
    Global& openTools() {
        Global& g = start();
        p = makeProject("Tools Ä", {{"Global.NSObject.klvr", kGlobal}});
        g.ProjectOpen(p);
        testPanels().clear();
        return g;
    }
    QString p;
};
} // namespace

TEST_F(ProjectCommands, AppDelegateIsMadeFromItsTemplateOnce) {
    Global& g = openTools();
    g.AddAppDelegate();
    g.mytextview()->insertAt("' mine\n", 0, 0);
    g.performUserSave();
    g.AddAppDelegate();
    g.ProjectOpenCode("Global.NSObject.klvr");
    g.ProjectOpenCode("AppDelegate.NSObject.klvr");
    EXPECT_EQ(readFile(p + "/AppDelegate.NSObject.klvr"),
              "' mine\n" + readFile(KELVARO_SOURCE_DIR "/resources/TEMPLATE/AppDelegate.NSObject.klvr"));
    EXPECT_EQ(makerCalls(p), (QList<QStringList>{QStringList{"-append", "AppDelegate.mm", "AppDelegate.h"} + kTail}));
    EXPECT_EQ(g.projectFiles.count("AppDelegate.NSObject.klvr"), 1);
    EXPECT_EQ(g.ProjectCurrentFilename(), p + "/AppDelegate.NSObject.klvr");
}

TEST_F(ProjectCommands, PreferencesDelegateBringsItsInterfaceFile) {
    Global& g = openTools();
    writeFile(p + "/Tools Ä/en.lproj/Preferences.xib", "mine");
    g.AddPreferencesDelegate();
    EXPECT_TRUE(QFileInfo::exists(p + "/Preferences.KLPreferences.klvr"));
    EXPECT_EQ(readFile(p + "/Tools Ä/en.lproj/Preferences.xib"), "mine"); // never replaced
    EXPECT_EQ(makerCalls(p).value(0), QStringList({"-append", "Preferences.mm", "Preferences.h",
                                                   "{P}/Tools Ä/en.lproj/Preferences.xib"}) + kTail);
    EXPECT_EQ(g.ProjectCurrentFilename(), p + "/Preferences.KLPreferences.klvr");
}

TEST_F(ProjectCommands, ObjectiveCClassIsWrittenHandedToXcodeAndNeverReplaced) {
    Global& g = openTools();
    testPanels().queueInput(QString("Gauge"));
    g.NewObjCClass();
    const QString mm = p + "/Tools Ä/Gauge.mm";
    EXPECT_TRUE(readFile(mm).startsWith("\n      \n#import <KLVRRuntime/KLVRRuntime.h>\n\n#import \"Gauge.h\"\n"));
    EXPECT_TRUE(readFile(mm).endsWith("return self;\n}\n\n@end"));
    EXPECT_EQ(readFile(p + "/Tools Ä/Gauge.h"),
              "\n\n#import <Cocoa/Cocoa.h>\n\n@interface Gauge : NSObject\n{\n}\n- (id) init;\n@end\n");
    EXPECT_EQ(makerCalls(p), (QList<QStringList>{QStringList{"-append", "Gauge.mm", "Gauge.h"} + kTail}));
    ASSERT_FALSE(testLauncher().launches().empty());
    EXPECT_EQ(testLauncher().launches().back().document, mm);
    EXPECT_TRUE(testLauncher().launches().back().flag);

    writeFile(mm, "// my code");
    for (const char* answer : {"Gauge", "-rf", "a b"}) {
        testPanels().clear();
        testPanels().queueInput(QString(answer));
        g.NewObjCClass();
        EXPECT_EQ(testPanels().messages().size(), 1u) << answer;
    }
    EXPECT_EQ(readFile(mm), "// my code");
    EXPECT_EQ(makerCalls(p).size(), 1);
}

TEST_F(ProjectCommands, ResourcesAndFrameworksGoToTheProjectMakerInOneRun) {
    Global& g = openTools();
    const QStringList files{projectsPath() + "/pic one.png", projectsPath() + "/-leading.txt",
                            projectsPath() + "/dätä \"q\".bin"};
    testPanels().queueOpen(files);
    g.AddResourceFile();
    EXPECT_TRUE(testPanels().lastOpenRequest().allowsMultipleSelection);
    testPanels().queueOpen({"/opt/Frame works/Web Kit.framework"});
    g.AddFramework();
    EXPECT_TRUE(testPanels().lastOpenRequest().canChooseDirectories);
    EXPECT_EQ(makerCalls(p), (QList<QStringList>{QStringList{"-append"} + files + kTail,
                                                 QStringList{"-append", "/opt/Frame works/Web Kit.framework"} + kTail}));
    ASSERT_EQ(testPanels().messages().size(), 1u);
    EXPECT_TRUE(testPanels().messages()[0].title.startsWith("Framework has been added to Xcode project."));
    g.AddResourceFile(); // cancelled: no run
    EXPECT_EQ(makerCalls(p).size(), 2);
    EXPECT_TRUE(testPanels().lastOpenRequest().directory.isEmpty()) << "the frameworks' folder carried over";
}

TEST_F(ProjectCommands, InterfaceFilesAreMadeAndRemovedAside) {
    Global& g = openTools();
    g.NewNib();
    g.NewNibName->setText(" Panel.nib ");
    g.NewNibOK();
    const QString made = p + "/Resources/Panel.xib";
    EXPECT_EQ(readFile(made), readFile(bundlePath() + "/Contents/Resources/Empty.xib"));
    writeFile(made + ".trash", "older");
    QAction item;
    item.setData("Panel.xib");
    g.RemoveNib(Value(&item));
    EXPECT_FALSE(QFileInfo::exists(made));
    EXPECT_EQ(readFile(made + ".trash"), "older");
    EXPECT_TRUE(QFileInfo::exists(made + ".2.trash"));
    item.setData("../Global.NSObject.klvr");
    g.RemoveNib(Value(&item));
    EXPECT_TRUE(QFileInfo::exists(p + "/Global.NSObject.klvr"));
}
