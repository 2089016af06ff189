// The find-definition panel through the real IDE and the parser's lists.
#include "search/finddefinition.h"
#include "result_rows.h"
#include "support/ide_fixture.h"

namespace {

const QByteArray kGlobal = "' Global\nPublic Sub Start()\nEnd Sub\nDim count As Integer\n"
                           "Event Clicked(sender As id)\nEnd Event\nFunction GetArea(w As Integer) As Integer\n"
                           "End Function\n";
const QByteArray kShape = "' Shape\nPublic Const Sides As Integer = 4\nIBOutlet area As NSTextField\n";

struct DefinitionCase {
    const char* name;
    QString text;
    QStringList unchecked; // boxes left unchecked
    bool ignoreCase;
    QStringList rows; // File|Line|Match
};

class FindDefinitionPanel : public IdeFixture, public ::testing::WithParamInterface<DefinitionCase> {
protected:
    finddefinition& openProject() {
        Global& g = start();
        project = makeProject("Shapes", {{"Global.NSObject.klvr", kGlobal}, {"Shape.NSObject.klvr", kShape}});
        g.ProjectOpen(project);
        return *g.ibfinddefinition();
    }
    QString project;
};

TEST_P(FindDefinitionPanel, ListsTheDeclarationsTheBoxesLetThrough) {
    finddefinition& panel = openProject();
    const DefinitionCase& c = GetParam();
    for (const QString& box : c.unchecked)
        panel.window->findChild<QCheckBox*>(box)->setChecked(false);
    panel.cbIgnoreCase->setChecked(c.ignoreCase);
    panel.cbFind->setEditText(c.text);
    panel.pbFindAll();
    EXPECT_EQ(shownRows(panel.tableview).join('\n').toStdString(), c.rows.join('\n').toStdString());
    EXPECT_EQ(panel.lInfo->text(), c.rows.isEmpty() ? "Not found" : QString::number(c.rows.size()) + " found");
}

const QStringList kEverything{"Global.NSObject.klvr|2|Public Sub Start ()",
                              "Global.NSObject.klvr|4|Private Dim count As Integer",
                              "Global.NSObject.klvr|5|Private Event Clicked (sender As id)",
                              "Global.NSObject.klvr|7|Private Function GetArea (w As Integer) As Integer",
                              "Shape.NSObject.klvr|2|Public Const Sides As Integer",
                              "Shape.NSObject.klvr|3|Private IBOutlet area As NSTextField"};

INSTANTIATE_TEST_SUITE_P(
    Cases, FindDefinitionPanel,
    ::testing::Values(DefinitionCase{"EmptyTextListsEverythingGlobalFirst", "", {}, false, kEverything},
                      DefinitionCase{"PublicOnlyLeavesOutNoVisibilityWord", "", {"cbPrivate"}, false,
                                     {kEverything[0], kEverything[4]}},
                      DefinitionCase{"NeitherVisibility", "", {"cbPrivate", "cbPublic"}, false, {}},
                      DefinitionCase{"DimUnchecked", "count", {"cbDim"}, false, {}},
                      DefinitionCase{"CaseMatters", "area", {}, false, {kEverything[5]}},
                      DefinitionCase{"CaseIgnored", "area", {}, true, {kEverything[3], kEverything[5]}},
                      DefinitionCase{"PartOfTheName", "Area", {}, false, {kEverything[3]}}),
    [](const ::testing::TestParamInfo<DefinitionCase>& info) { return std::string(info.param.name); });

TEST_F(FindDefinitionPanel, DoubleClickGoesToTheDeclarationsLineAndDefinitionIsNotThereYet) {
    finddefinition& panel = openProject();
    panel.cbFind->setEditText("Sides"); // every keystroke searches
    panel.DoubleAction(0);
    EXPECT_EQ(global->ProjectCurrentFilename(), project + "/Shape.NSObject.klvr");
    EXPECT_EQ(global->ProjectCurrentLine(), "2");
    global->Definition();
    ASSERT_EQ(testPanels().messages().size(), 1u);
    EXPECT_EQ(testPanels().messages()[0].text, "Not implemented yet");
}

} // namespace
