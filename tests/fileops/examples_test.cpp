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

    // Two examples of one name in different groups get a copy each.
    writeFile(examples + "/Group A/Twin/Global.NSObject.klvr", "' a\n");
    writeFile(examples + "/Group B/Twin/Global.NSObject.klvr", "' b\n");
    g.OpenExample(Value(examples + "/Group A/Twin"));
    g.OpenExample(Value(examples + "/Group B/Twin"));
    EXPECT_EQ(g.ProjectPath, KelvaroTestEnvironment::instance().home() + "/Kelvaro Examples/Group B/Twin");
    EXPECT_EQ(readFile(g.ProjectPath + "/Global.NSObject.klvr"), "' b\n");
    EXPECT_EQ(readFile(KelvaroTestEnvironment::instance().home() + "/Kelvaro Examples/Group A/Twin/Global.NSObject.klvr"),
              "' a\n");
    EXPECT_TRUE(testPanels().messages().empty());
}
