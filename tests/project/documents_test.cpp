// Documents and the two toolbar selectors.
#include "support/ide_fixture.h"

#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QStandardItemModel>

namespace {
const QByteArray kGlobal = "\nEvent AwakeFromNib()\n  Alert(\"Hello\")\nEnd Event\n";

QStringList itemsOf(QComboBox* popUp) {
    QStringList items;
    for (int i = 0; i < popUp->count(); ++i)
        items << (popUp->itemData(i, Qt::AccessibleDescriptionRole).toString() == "separator" ? "---"
                                                                                               : popUp->itemText(i));
    return items;
}
} // namespace

class Documents : public IdeFixture {
protected:
    Global& openShop() {
        Global& g = start();
        project = makeProject("Shop", {{"Global.NSObject.klvr", kGlobal},
                                       {"b.NSObject.klvr", "\nSub B()\nEnd Sub\n"},
                                       {"myapplication.NSObject.klvr", "\n"},
                                       {"AppDelegate.NSObject.klvr", "\n"}});
        g.ProjectOpen(project);
        return g;
    }
    QString project;
};

TEST_F(Documents, NameAndFullPathOpenTheSameDocumentEditsSurviveSwitchingAndFailedLoadsAreNotCached) {
    Global& g = openShop();
    g.ProjectOpenCode("b.NSObject.klvr");
    KLTextView* b = g.mytextview();
    ASSERT_EQ(g.ProjectCurrentFilename(), project + "/b.NSObject.klvr");
    b->insertAt("' edited\n", 0, 0);
    b->undo();
    b->insertAt("' kept\n", 0, 0);
    g.ProjectOpenCode("Global.NSObject.klvr");
    EXPECT_NE(g.mytextview(), b);
    g.ProjectOpenCode(project + "/b.NSObject.klvr");
    EXPECT_EQ(g.mytextview(), b); // the same view, not reloaded from disk
    EXPECT_TRUE(b->text().startsWith("' kept\n"));
    EXPECT_TRUE(b->isUndoAvailable());
    EXPECT_EQ(KLVR_NSDICTIONARY_COUNT(g.codes), 2);

    // A file that cannot be loaded is reported and nothing is cached.
    g.ProjectOpenCode("application.NSObject.klvr");
    auto shown = testPanels().messages();
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_EQ(shown[0].title, "Could not load " + project + "/application.NSObject.klvr");
    EXPECT_TRUE(shown[0].text.isEmpty());
    EXPECT_EQ(g.mytextview(), b);
    EXPECT_EQ(KLVR_NSDICTIONARY_COUNT(g.codes), 2);
    // The missing fixed object was listed before the load was tried, and stays listed.
    EXPECT_TRUE(g.projectFiles.contains("application.NSObject.klvr"));
    EXPECT_FALSE(g.bLockTextDidChange);
}

TEST_F(Documents, FileSelectorListsClassesAndObjectsAndEventSelectorInsertsAnEventOnlyOnce) {
    Global& g = openShop();
    g.ProjectOpenCode("b.NSObject.klvr");
    EXPECT_EQ(itemsOf(g.pubProject), (QStringList{"b.NSObject.klvr", "Classes:", "b.NSObject.klvr", "---",
                                                  "Objects:", "Global", "App Delegate", "Preferences Delegate"}));
    EXPECT_EQ(itemsOf(g.pubEvent), (QStringList{"NSObject", "NSObject:", "  Event Init()", "  Event AwakeFromNib()",
                                                "  Event Finalize()"}));
    g.ProjectOpenCode("Global.NSObject.klvr");
    EXPECT_EQ(g.pubProject->itemText(0), QStringLiteral("Global"));
    auto* model = qobject_cast<QStandardItemModel*>(g.pubProject->model());
    EXPECT_FALSE(model->item(1)->isEnabled()); // "Classes:"
    // Choosing a class opens it; the headings do nothing.
    g.pubProjectChosen("Classes:");
    EXPECT_EQ(g.ProjectCurrentFilename(), project + "/Global.NSObject.klvr");
    g.pubProjectChosen("b.NSObject.klvr");
    EXPECT_EQ(g.ProjectCurrentFilename(), project + "/b.NSObject.klvr");
    g.pubProjectChosen("Global");
    EXPECT_EQ(g.ProjectCurrentFilename(), project + "/Global.NSObject.klvr");

    // The event selector inserts an event only once.
    g.ProjectOpenCode("b.NSObject.klvr");
    KLTextView* view = g.mytextview();
    g.pubEventChosen("  Event Init()");
    EXPECT_EQ(view->text(), QStringLiteral("\nSub B()\nEnd Sub\n\n\nEvent Init()\n  \nEnd Event\n"));
    EXPECT_EQ(view->selectedText(), QStringLiteral("\nEvent Init()"));
    view->setCursorPosition(0, 0);
    g.pubEventChosen("  Event Init()");
    EXPECT_EQ(view->text().count("Event Init()"), 1);
    g.pubEventChosen("NSObject:"); // not an event: nothing happens
    EXPECT_EQ(view->text().count("Event"), 2);
    EXPECT_EQ(g.pubEvent->currentIndex(), 0);
    // An event on the first line is not found, so a second copy is appended.
    g.ProjectOpen(makeProject("First", {{"Global.NSObject.klvr", "Event Init()\nEnd Event\n"}}));
    g.pubEventChosen("  Event Init()");
    EXPECT_EQ(g.mytextview()->text().count("Event Init()"), 2);
}

TEST_F(Documents, ReopeningReloadsFromDiskAtTheLineAndClosingShowsAnotherOrEmptiesThePane) {
    Global& g = openShop();
    g.ProjectOpenCode("b.NSObject.klvr");
    KLVR_KLTEXTVIEW_GOTOLINE(g.mytextview(), 3);
    writeFile(project + "/b.NSObject.klvr", "\nSub B()\n  Print(1)\nEnd Sub\n");
    g.ProjectReopenCode("b.NSObject.klvr");
    EXPECT_TRUE(g.mytextview()->text().contains("Print(1)"));
    EXPECT_EQ(KLVR_KLTEXTVIEW_LINE(g.mytextview()), 3);
    g.ProjectReopenCode("nothing.klvr"); // not open: nothing happens
    g.ProjectCloseCode(project + "/b.NSObject.klvr");
    EXPECT_EQ(g.ProjectCurrentFilename(), project + "/Global.NSObject.klvr");
    g.ProjectCloseCode(project + "/Global.NSObject.klvr");
    EXPECT_EQ(g.ProjectCurrentFilename(), QString());
    EXPECT_EQ(KLVR_NSDICTIONARY_COUNT(g.codes), 0);
}

TEST_F(Documents, UserSaveWritesTheShownDocumentAndReportsFailures) {
    Global& g = openShop();
    g.ProjectOpenCode("b.NSObject.klvr");
    g.mytextview()->insertAt("' saved\n", 0, 0);
    g.performUserSave();
    EXPECT_TRUE(readFile(project + "/b.NSObject.klvr").startsWith("' saved\n"));
    EXPECT_EQ(g.mycode->statusbar->text(), QStringLiteral(" Saved b.NSObject.klvr"));

    // A file that cannot be written (here a folder took its place, which fails even
    // for root) is reported, and the text stays in the editor.
    QFile::remove(project + "/b.NSObject.klvr");
    QDir().mkpath(project + "/b.NSObject.klvr");
    g.mytextview()->insertAt("' refused\n", 0, 0);
    g.performUserSave();
    auto shown = testPanels().messages();
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_TRUE(shown[0].title.isEmpty());
    EXPECT_EQ(shown[0].text, "Could not save " + project + "/b.NSObject.klvr");
    EXPECT_TRUE(g.mytextview()->text().startsWith("' refused\n' saved\n"));
    EXPECT_TRUE(g.mytextview()->isModified());
}

TEST_F(Documents, NamingOperationsTakeFileNamesApart) {
    EXPECT_EQ(Global::filebasename("b.NSObject.klvr"), QStringLiteral("b"));
    EXPECT_EQ(Global::filebasename(".hidden"), QStringLiteral(".hidden"));
    EXPECT_EQ(Global::filebasename("plain"), QStringLiteral("plain"));
    EXPECT_EQ(Global::getClassName("/p/Global.NSObject.klvr"), QStringLiteral("Global"));
    EXPECT_EQ(Global::getSuperClassName("a.NSWindow.klvr"), QStringLiteral("NSWindow"));
    EXPECT_EQ(Global::getSuperClassName("Preferences.KLPreferences.klvr"), QStringLiteral("KLPreferences"));
    EXPECT_EQ(Global::getSuperClassName("x.klvr"), QStringLiteral("x"));
    EXPECT_EQ(Global::getSuperClassName("a.b.c.klvr"), QStringLiteral("c"));
    EXPECT_EQ(Global::getSuperClassName("plain"), QStringLiteral("plain"));
}
