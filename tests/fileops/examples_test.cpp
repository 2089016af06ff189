// Examples open through a copy of their own, made once; the original is never touched.
#include "fileops_fixture.h"

#include <QAction>
#include <QComboBox>
#include <QPushButton>

TEST_F(FileOpsFixture, ExampleIsCopiedOnceAndTheCopyIsOpened) {
    const QString examples = bundlePath() + "/Contents/Resources/Examples";
    const QString example = examples + "/Hëllo Wörld";
    writeFile(example + "/Global.NSObject.klvr", "\nEvent AwakeFromNib()\nEnd Event\n");
    writeFile(example + "/en.lproj/MainMenu.xib", "xib");
    writeFile(examples + "/Other/Global.NSObject.klvr", "\n");
    const auto original = treeOf(examples);
    Global& g = start();
    const QString copy = KelvaroTestEnvironment::instance().home() + "/Kelvaro Examples/Hëllo Wörld";

    // The welcome window lists the examples and opens the chosen one.
    auto* list = g.Welcome->findChild<QComboBox*>("examples");
    ASSERT_NE(list, nullptr);
    ASSERT_EQ(list->count(), 2);
    EXPECT_EQ(list->itemText(0), "Hëllo Wörld");
    list->setCurrentIndex(0);
    g.Welcome->findChild<QPushButton*>("openExample")->click();
    EXPECT_EQ(g.ProjectPath, copy);
    EXPECT_EQ(treeOf(copy), treeOf(example));

    // What the user changes in the copy survives later openings, also from a menu item.
    writeFile(copy + "/Global.NSObject.klvr", "' mine\n");
    QAction item;
    item.setData(example);
    g.OpenExample(Value(&item));
    EXPECT_EQ(g.ProjectPath, copy);
    EXPECT_EQ(readFile(copy + "/Global.NSObject.klvr"), "' mine\n");
    EXPECT_EQ(treeOf(examples), original);
    EXPECT_FALSE(QFileInfo::exists(KelvaroTestEnvironment::instance().home() + "/Kelvaro Examples/.Hëllo Wörld.copying"));
    EXPECT_TRUE(testPanels().messages().empty());
}
