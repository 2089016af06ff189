// The find-and-replace panel of the shown document and the main window's search field;
// neither search panel does anything without a project.
#include "search/findreplace.h"
#include "search/findreplacefile.h"
#include "support/ide_fixture.h"

namespace {

class FindInFile : public IdeFixture {
protected:
    findreplace& openProject(const QByteArray& global, const QByteArray& other = "\nfoo\n") {
        Global& g = start();
        project = makeProject("Shop", {{"Global.NSObject.klvr", global}, {"b.NSObject.klvr", other}});
        g.ProjectOpen(project);
        return *g.ibfindreplace();
    }
    QString selection() const { return global->mytextview()->selectedText(); }
    qint64 selectionStart() const { return global->mytextview()->selectionStartUtf16(); }
    QString project;
};

struct CountCase {
    const char* name;
    QString find;
    bool ignoreCase;
    QString info;
    QString fieldInfo;
};

class FindInFileCount : public FindInFile, public ::testing::WithParamInterface<CountCase> {};

TEST_P(FindInFileCount, TheSearchFieldFindsAndShowsTheCount) {
    findreplace& panel = openProject("abc x ABC abc\nabc\n");
    const CountCase& c = GetParam();
    panel.cbIgnoreCase->setChecked(c.ignoreCase);
    global->boxedSearch->setText(c.find);
    global->boxedSearchNext();
    EXPECT_EQ(panel.lInfo->text(), c.info);
    EXPECT_EQ(global->boxedSearchInfo->text(), c.fieldInfo);
}

INSTANTIATE_TEST_SUITE_P(Cases, FindInFileCount,
                         ::testing::Values(CountCase{"EmptyText", "", false, "", "Search"},
                                           CountCase{"CaseMatters", "abc", false, "3 found", "3 found"},
                                           CountCase{"CaseIgnored", "abc", true, "4 found", "4 found"},
                                           CountCase{"Missing", "zzz", false, "Not found", "Not found"}),
                         [](const ::testing::TestParamInfo<CountCase>& info) { return std::string(info.param.name); });

TEST_F(FindInFile, NextPreviousReplaceAllAndTheHistory) {
    findreplace& panel = openProject("abc x abc\n");
    panel.cbFind->setCurrentText("abc");
    panel.pbNext();
    EXPECT_EQ(selectionStart(), 0);
    panel.pbNext();
    EXPECT_EQ(selectionStart(), 6);
    EXPECT_EQ(panel.cbFind->count(), 1); // the same text twice joins the history once
    panel.pbPrevious();
    EXPECT_EQ(panel.lInfo->text(), "");
    panel.cbFind->setCurrentText("zzz");
    panel.pbPrevious();
    EXPECT_EQ(panel.lInfo->text(), "Not found");
    panel.cbReplace->setCurrentText("q");
    panel.pbReplaceAll();
    EXPECT_EQ(panel.lInfo->text(), "0 replaced");
    EXPECT_EQ(panel.cbReplace->count(), 0);
    panel.cbFind->setCurrentText("abc");
    panel.cbReplace->setCurrentText("abcabc");
    panel.pbReplaceAll();
    EXPECT_EQ(panel.lInfo->text(), "2 replaced");
    EXPECT_EQ(global->mytextview()->text(), "abcabc x abcabc\n");
}

TEST_F(FindInFile, ReturnInTheFieldFindsAndShowingADocumentOnlyRecounts) {
    findreplace& panel = openProject("x foo\n", "\nfoo foo\n");
    panel.cbReplace->setCurrentText("left over");
    global->boxedSearch->setText("foo");
    global->boxedSearchPerform();
    EXPECT_EQ(panel.cbFind->currentText(), "foo");
    EXPECT_EQ(panel.cbReplace->currentText(), "");
    EXPECT_EQ(selection(), "foo");
    EXPECT_EQ(selectionStart(), 2);
    global->ProjectOpenCode("b.NSObject.klvr");
    EXPECT_EQ(global->boxedSearchInfo->text(), "2 found");
    EXPECT_EQ(selection(), ""); // counted, not moved
    global->boxedSearch->setText("");
    global->ProjectOpenCode("Global.NSObject.klvr");
    EXPECT_EQ(global->boxedSearchInfo->text(), "2 found");
}

TEST_F(FindInFile, NeitherPanelNorFieldDoesAnythingWithoutAProject) {
    Global& g = start();
    g.boxedSearch->setText("foo");
    g.boxedSearchPerform();
    g.FindReplace();
    g.FindNext();
    EXPECT_EQ(g.boxedSearchInfo->text(), "Search");
    EXPECT_FALSE(g.ibfindreplace()->window->isVisible());
    g.mymainwindow->boxedSearchFile->setText("x");
    g.mymainwindow->boxedSearchFilePerform();
    g.FindReplaceFile();
    EXPECT_FALSE(g.ibfindreplacefile()->window->isVisible());
}

} // namespace
