// The main window's toolbar, its buttons' forwarding, and closing.
#include "support/ide_fixture.h"

#include <QLabel>
#include <QTest>
#include <QToolButton>

using MainWindow = IdeFixture;

TEST_F(MainWindow, ToolbarHasSixteenEntriesInOrderAndButtonsCarryTheirImagesAndToolTips) {
    const QStringList items = mainwindow::ToolbarItems();
    ASSERT_EQ(items.size(), 16);
    EXPECT_EQ(items.mid(0, 3), (QStringList{"ti_projecticon", "ti_project", "ti_event"}));
    EXPECT_EQ(items[3], QStringLiteral("NSToolbarSeparatorItem"));
    EXPECT_EQ(items[7], QStringLiteral("NSToolbarSpaceItem"));
    EXPECT_EQ(items[11], QStringLiteral("NSToolbarSpaceItem"));
    EXPECT_EQ(items[13], QStringLiteral("NSToolbarSpaceItem"));
    EXPECT_EQ(items.last(), QStringLiteral("ti_log"));
    klvrSetBundlePath(KELVARO_APP_DIR); // the real images
    Global& g = start();
    EXPECT_EQ(g.mymainwindow->KLVR_ToolbarAllowedItemIdentifiers(), items);
    EXPECT_EQ(g.mymainwindow->KLVR_ToolbarDefaultItemIdentifiers(), items);
    EXPECT_EQ(g.mymainwindow->KLVR_ToolbarItem("ti_unknown"), nullptr);
    const std::pair<const char*, const char*> buttons[] = {
        {"b_back", "Go To Last Position"}, {"b_global", "Global"}, {"b_lasterror", "Go To Last Error"},
        {"b_run", "Run"}, {"b_build", "Build"}, {"b_stop", "Stop"}, {"b_ib", "Xcode: Interface Builder"},
        {"b_log", "Log Window"}};
    for (const auto& [name, tip] : buttons) {
        auto* button = g.mymainwindow->findChild<QToolButton*>(name);
        ASSERT_NE(button, nullptr) << name;
        EXPECT_EQ(button->toolTip(), QString::fromLatin1(tip));
        EXPECT_FALSE(button->icon().isNull()) << name << " has no image";
        EXPECT_EQ(button->text(), QString()); // icons only
    }
}

TEST_F(MainWindow, ProjectItemsStopAndBackButtonsFollowTheProject) {
    Global& g = start();
    EXPECT_FALSE(g.mymainwindow->ti_project->isVisible());
    EXPECT_FALSE(g.mymainwindow->ti_event->isVisible());
    EXPECT_FALSE(g.mymainwindow->ti_projecticon->isVisible());
    // Stop with nothing running only clears the status line.
    g.ProjectStatusBar("Building...");
    g.mymainwindow->findChild<QToolButton*>("b_stop")->click();
    EXPECT_EQ(g.mycode->statusbar->text(), QStringLiteral(" "));
    EXPECT_EQ(g.go, nullptr);

    const QString p = makeProject("Back", {{"Global.NSObject.klvr", "\nSub A()\nEnd Sub\n\n\n"},
                                           {"b.NSObject.klvr", "\n"}});
    g.ProjectOpen(p);
    EXPECT_TRUE(g.mymainwindow->ti_project->isVisible());
    EXPECT_TRUE(g.mymainwindow->ti_projecticon->isVisible());
    // The back button returns to the position remembered when another file was opened.
    KLVR_KLTEXTVIEW_GOTOLINE(g.mytextview(), 4);
    g.ProjectOpenCode("b.NSObject.klvr");
    EXPECT_EQ(g.sLastPositionFile, QStringLiteral("Global.NSObject.klvr"));
    EXPECT_EQ(g.nLastPositionLine, 4);
    g.mymainwindow->findChild<QToolButton*>("b_back")->click();
    EXPECT_EQ(g.ProjectCurrentFilename(), p + "/Global.NSObject.klvr");
    EXPECT_EQ(KLVR_KLTEXTVIEW_LINE(g.mytextview()), 4);
}

TEST_F(MainWindow, ClosingStopsTheRunningApplication) {
    Global& g = start();
    g.go = KLVR_KLTASK_INIT(&g, "go");
    KLVR_KLTASK_PATH(g.go, KELVARO_CHILD_WRITER);
    KLVR_KLTASK_ARGUMENTS(g.go, {"--sleep", "60"});
    KLVR_KLTASK_STARTANDWAIT(g.go, true);
    QPointer<KLTask> task = g.go;
    ASSERT_TRUE(KLVR_KLTASK_ISRUNNING(task));
    g.mymainwindow->close();
    EXPECT_EQ(g.go, nullptr);
    EXPECT_TRUE(QTest::qWaitFor([&] { return task.isNull() || !KLVR_KLTASK_ISRUNNING(task); }, 5000));
}

TEST_F(MainWindow, BundledExamplesOpenWithoutAMessage) {
    klvrSetBundlePath(KELVARO_APP_DIR); // the real tools and examples
    Global& g = start();
    const QString examples = QStringLiteral(KELVARO_APP_DIR) + "/Contents/Resources/Examples";
    const QStringList names = *KLVR_NSFILEMANAGER_LIST(examples);
    ASSERT_GE(names.size(), 3);
    ASSERT_TRUE(names.contains("Hello"));
    for (const QString& name : names) {
        // A copy, so that opening (which creates the platform project) leaves the build alone.
        const QString copy = projectsPath() + "/" + name;
        ASSERT_TRUE(KLVR_NSFILEMANAGER_COPY(examples + "/" + name, copy));
        g.ProjectOpen(copy);
        EXPECT_EQ(g.ProjectPath, copy);
        EXPECT_TRUE(g.ProjectIsLoaded()) << name.toStdString();
        EXPECT_TRUE(KLVR_NSFILEMANAGER_EXISTSDIRECTORY(copy + "/" + name + ".xcodeproj")) << name.toStdString();
    }
    EXPECT_TRUE(testPanels().messages().empty());
    const QString hello = QString::fromUtf8(readFile(examples + "/Hello/Global.NSObject.klvr"));
    EXPECT_EQ(hello, QStringLiteral("\nEvent AwakeFromNib()\n  Alert(\"Hello\")\nEnd Event\n"));
}
