// The menus built as they open: interface files, examples, tools, windows, and the
// fixed commands that show a message or a window.
#include "frame/about_window.h"
#include "buildrun/log_panel.h"
#include "support/ide_fixture.h"

#include <QDir>
#include <QMenuBar>
#include <QRegularExpression>
#include <QTest>

namespace {
class RebuiltMenus : public IdeFixture {
protected:
    // Opens the top-level menu (as the platform does before showing it).
    QMenu* open(const QString& plainTitle) {
        for (QMenu* menu : global->menuBar()->findChildren<QMenu*>(Qt::FindDirectChildrenOnly))
            if (QString(menu->title()).remove('&') == plainTitle) {
                emit menu->aboutToShow();
                return menu;
            }
        ADD_FAILURE() << "no menu " << plainTitle.toStdString();
        return nullptr;
    }
    // The titles of a menu's items, "-" for a separator.
    static QStringList titles(QMenu* menu) {
        QStringList list;
        for (QAction* item : menu->actions())
            list << (item->isSeparator() ? QStringLiteral("-") : item->text());
        return list;
    }
    static QAction* item(QMenu* menu, const QString& title) {
        for (QAction* action : menu->actions())
            if (action->text() == title)
                return action;
        return nullptr;
    }
};
} // namespace

TEST_F(RebuiltMenus, XcodeListsInterfaceFilesAndRemoveXibSparesTheMainMenu) {
    Global& g = start();
    g.ProjectOpen(makeProject("Nibs", {{"Global.NSObject.klvr", "\n"},
                                       {"Resources/MainMenu.xib", "<x/>"},
                                       {"Resources/Prefs.XIB", "<x/>"},
                                       {"Resources/icon.icns", "i"}}));
    QMenu* xcode = open("Xcode");
    for (int opening = 0; opening < 2; ++opening) // a second opening starts afresh
        EXPECT_EQ(titles(xcode), (QStringList{"MainMenu.xib", "Prefs.XIB", "-", "(Remove xib)", "-", "(New xib...)"}));
    EXPECT_EQ(item(xcode, "Prefs.XIB")->data().toString(), "Prefs.XIB");
    EXPECT_EQ(item(xcode, "(New xib...)")->property("tag").toInt(), 2);
    QAction* removeItem = item(xcode, "(Remove xib)");
    EXPECT_EQ(removeItem->property("tag").toInt(), 1);
    QMenu* remove = removeItem->menu();
    ASSERT_NE(remove, nullptr);
    emit remove->aboutToShow();
    EXPECT_EQ(titles(remove), QStringList{"Prefs.XIB"});
}

TEST_F(RebuiltMenus, ExamplesAreAFolderTreeAndAnItemOpensItsProject) {
    const QString root = bundlePath() + "/Contents/Resources/Examples";
    for (const char* file : {"/.DS_Store", "/Games/Pong/Global.NSObject.klvr", "/Games/Snake/Global.NSObject.klvr",
                             "/Hello/Global.NSObject.klvr"})
        writeFile(root + file, "\n");
    Global& g = start();
    QMenu* examples = open("Examples");
    EXPECT_EQ(titles(examples), (QStringList{"Games", "Hello"}));
    QMenu* games = item(examples, "Games")->menu();
    ASSERT_NE(games, nullptr);
    EXPECT_EQ(titles(games), (QStringList{"Pong", "Snake"}));
    item(examples, "Hello")->trigger();
    EXPECT_EQ(g.ProjectPath, Global::examplesCopyFolder() + "/Hello"); // the user's copy, not the original
}

TEST_F(RebuiltMenus, ToolsLaunchTheirApplication) {
    start();
    QMenu* tools = open("Tools");
    testLauncher().clear();
    EXPECT_EQ(titles(tools), (QStringList{"Terminal.app", "-", "Activity Monitor.app", "-", "TextEdit.app"}));
    item(tools, "Activity Monitor.app")->trigger();
    ASSERT_EQ(testLauncher().launches().size(), 1u);
    EXPECT_EQ(testLauncher().launches()[0].application, "/Applications/Utilities/Activity Monitor.app");
    EXPECT_TRUE(testLauncher().launches()[0].flag);
}

TEST_F(RebuiltMenus, WindowsListsClassesThenObjectsAndAnswersItsKeys) {
    Global& g = start();
    g.ProjectOpen(makeProject("Classes", {{"Global.NSObject.klvr", "\n"},
                                          {"mainwindow.NSWindow.klvr", "\n"},
                                          {"mysql.NSObject.klvr", "\n"},
                                          {"AppDelegate.NSObject.klvr", "\n"}}));
    QMenu* windows = open("Windows");
    EXPECT_EQ(titles(windows), (QStringList{"Minimize", "Zoom", "-", "Log Window", "Compiler Window", "-", "Classes:",
                                            "mainwindow.NSWindow.klvr", "-", "Objects:", "Global", "-",
                                            "App Delegate"}));
    EXPECT_FALSE(item(windows, "Classes:")->isEnabled());
    item(windows, "mainwindow.NSWindow.klvr")->trigger();
    EXPECT_TRUE(g.ProjectCurrentFilename().endsWith("mainwindow.NSWindow.klvr"));

    // Real key presses in the window: command-control-L and -C.
    g.mymainwindow->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(g.mymainwindow));
    struct Key {
        Qt::KeyboardModifiers modifiers;
        Qt::Key key;
        QWidget* panel;
    };
    const Key keys[] = {{Qt::ControlModifier | Qt::MetaModifier, Qt::Key_L, g.runLogPanel},
                        {Qt::ControlModifier | Qt::AltModifier, Qt::Key_C, g.compilerLogPanel}};
    for (const Key& key : keys) {
        key.panel->hide();
        QTest::keyClick(g.mytextview(), key.key, key.modifiers);
        EXPECT_TRUE(key.panel->isVisible()) << key.panel->objectName().toStdString();
    }
}

TEST_F(RebuiltMenus, FixedCommandsShowTheirMessages) {
    Global& g = start();
    const std::tuple<const char*, const char*, const char*> rows[] = {
        {"Plugins", "Kelvaro", "No plug-ins available yet."},
        {"OpenPreferences", "There are no preferences editable yet.", ""}};
    for (const auto& [action, title, text] : rows) {
        testPanels().clear();
        g.menuBar()->findChild<QAction*>(QStringLiteral("menu_") + action)->trigger();
        ASSERT_EQ(testPanels().messages().size(), 1u) << action;
        EXPECT_EQ(testPanels().messages()[0].title, QString::fromUtf8(title));
        EXPECT_EQ(testPanels().messages()[0].text, QString::fromUtf8(text));
    }
}

TEST_F(RebuiltMenus, AboutShowsTheVersionAndBuildDateCentred) {
    Global& g = start();
    g.BuildDate->setText("2026-11-23 10:00:00 +0000");
    g.About();
    auto* about = qobject_cast<AboutBox*>(g.AboutWindow.data());
    ASSERT_NE(about, nullptr);
    EXPECT_TRUE(about->isVisible());
    EXPECT_TRUE(QRegularExpression("^Version \\d+\\.\\d+").match(about->versionText()).hasMatch()) << about->versionText().toStdString();
    EXPECT_EQ(about->buildDateText(), "Built 2026-11-23 10:00:00 +0000");
    const QPoint centre = QGuiApplication::primaryScreen()->availableGeometry().center();
    EXPECT_LE((about->frameGeometry().center() - centre).manhattanLength(), 40);
}
