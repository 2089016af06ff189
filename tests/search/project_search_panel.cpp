// The project search panel through the real IDE: rows, options, replace all on disk,
// double click and the toolbar field.
#include "editor/document_file.h"
#include "search/findreplacefile.h"
#include "result_rows.h"
#include "support/ide_fixture.h"

#include <QFile>
#include <QFileInfo>

namespace {

class ProjectSearchPanel : public IdeFixture {
protected:
    findreplacefile& openProject(const QList<std::pair<QString, QByteArray>>& files) {
        Global& g = start();
        project = makeProject("Shop", files);
        g.ProjectOpen(project);
        return *g.ibfindreplacefile();
    }
    findreplacefile& find(const QString& text, bool ignoreCase = false, bool skipComments = false) {
        findreplacefile& panel = *global->ibfindreplacefile();
        panel.cbFind->setCurrentText(text);
        panel.cbIgnoreCase->setChecked(ignoreCase);
        panel.cbIgnoreCommentLines->setChecked(skipComments);
        panel.pbFindAll();
        return panel;
    }
    QString project;
};

struct FindCase {
    const char* name;
    QString text;
    bool ignoreCase;
    bool skipComments;
    QStringList rows;
    QString info;
};

class ProjectSearchFind : public ProjectSearchPanel, public ::testing::WithParamInterface<FindCase> {};

TEST_P(ProjectSearchFind, ListsTheRowsAndTheCount) {
    openProject({{"Global.NSObject.klvr", "\nSub A()\nDim x\n' Dim c\n  x = 1\n\nDim y ' Dim\n"},
                 {"b.NSObject.klvr", "\nDim b\nEnd"}});
    const FindCase& c = GetParam();
    findreplacefile& panel = find(c.text, c.ignoreCase, c.skipComments);
    EXPECT_EQ(shownRows(panel.tableview), c.rows);
    EXPECT_EQ(panel.lInfo->text(), c.info);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, ProjectSearchFind,
    ::testing::Values(
        FindCase{"DimInTwoFilesGlobalFirst", "Dim", false, false,
                 {"Global.NSObject.klvr|3|Dim x", "Global.NSObject.klvr|4|' Dim c", "Global.NSObject.klvr|7|Dim y ' Dim",
                  "Global.NSObject.klvr|7|Dim y ' Dim", "b.NSObject.klvr|2|Dim b"},
                 "5 found"},
        FindCase{"CommentLinesLeftOut", "Dim", false, true,
                 {"Global.NSObject.klvr|3|Dim x", "Global.NSObject.klvr|7|Dim y ' Dim",
                  "Global.NSObject.klvr|7|Dim y ' Dim", "b.NSObject.klvr|2|Dim b"},
                 "4 found"},
        FindCase{"CaseMatters", "dim", false, false, {}, "Not found"},
        FindCase{"CaseIgnored", "dim b", true, false, {"b.NSObject.klvr|2|Dim b"}, "1 found"},
        FindCase{"LastLineWithoutLineBreak", "End", false, false, {"b.NSObject.klvr|3|End"}, "1 found"},
        FindCase{"EmptyText", "", false, false, {}, "Nothing to find"}),
    [](const ::testing::TestParamInfo<FindCase>& info) { return std::string(info.param.name); });

TEST_F(ProjectSearchPanel, ReplaceAllWritesChangedFilesKeepingTheirFormAndReopensThem) {
    const QByteArray latin1("\r\nfoo caf\xe9\r\n");
    findreplacefile& panel = openProject({{"Global.NSObject.klvr", "\nfoo = 1\n"},
                                          {"b.NSObject.klvr", "\xef\xbb\xbf" "a foo foo\n"},
                                          {"c.NSObject.klvr", latin1},
                                          {"untouched.NSObject.klvr", "\nbar\n"}});
    global->ProjectOpenCode("Global.NSObject.klvr");
    KLTextView* view = global->mytextview();
    const QString untouched = project + "/untouched.NSObject.klvr";
    const QDateTime before = QFileInfo(untouched).lastModified();
    panel.cbFind->setCurrentText("foo");
    panel.cbReplace->setCurrentText("foofoo"); // holds the find text: replaced once, no more
    panel.pbReplaceAll();
    EXPECT_EQ(panel.lInfo->text(), "4 replaced");
    EXPECT_EQ(shownRows(panel.tableview), (QStringList{"Global.NSObject.klvr|2|foo = 1", "b.NSObject.klvr|1|a foo foo",
                                             "b.NSObject.klvr|1|a foo foo", "c.NSObject.klvr|2|foo caf\u00e9"}));
    EXPECT_EQ(readFile(project + "/Global.NSObject.klvr"), "\nfoofoo = 1\n");
    EXPECT_EQ(readFile(project + "/b.NSObject.klvr"), "\xef\xbb\xbf" "a foofoo foofoo\n");
    EXPECT_EQ(readFile(project + "/c.NSObject.klvr"), "\r\nfoofoo caf\xe9\r\n");
    EXPECT_EQ(QFileInfo(untouched).lastModified(), before);
    EXPECT_EQ(view->text(), "\nfoofoo = 1\n"); // the open document shows the disk's text

    // A replacement that Windows-1252 cannot hold leaves that file as it was, and says so.
    panel.cbFind->setCurrentText("caf\u00e9");
    panel.cbReplace->setCurrentText("\u2192");
    panel.pbReplaceAll();
    EXPECT_EQ(panel.lInfo->text(), "1 replaced; not replaced: c.NSObject.klvr");
    EXPECT_EQ(readFile(project + "/c.NSObject.klvr"), "\r\nfoofoo caf\xe9\r\n");

    // Line breaks in a replacement are each file's own, whichever way they were typed.
    panel.cbFind->setCurrentText("foofoo");
    panel.cbReplace->setCurrentText("x\r\ny\nz");
    panel.pbReplaceAll();
    EXPECT_EQ(readFile(project + "/c.NSObject.klvr"), "\r\nx\r\ny\r\nz caf\xe9\r\n");
    EXPECT_EQ(readFile(project + "/Global.NSObject.klvr"), "\nx\ny\nz = 1\n");
}

TEST_F(ProjectSearchPanel, CurrentFileOnlyTheHistoryUnsavedTypingSavedFirstAndBinaryFilesNamed) {
    findreplacefile& panel = openProject({{"Global.NSObject.klvr", "\nDim g\n"},
                                          {"b.NSObject.klvr", "\nDim b\n"},
                                          {"bin.NSObject.klvr", QByteArray("typed\0", 6)}});
    global->ProjectOpenCode("b.NSObject.klvr");
    panel.cbCurrentFileOnly->setChecked(true);
    find("Dim");
    EXPECT_EQ(shownRows(panel.tableview), QStringList{"b.NSObject.klvr|2|Dim b"});
    find("Dim");
    find("g");
    EXPECT_EQ(panel.cbFind->count(), 2); // "Dim" once while it was the first entry, then "g"
    panel.cbCurrentFileOnly->setChecked(false);
    global->ProjectOpenCode("Global.NSObject.klvr");
    global->mytextview()->insertAt("Dim typed\n", 0, 0); // the search reads the disk
    find("typed");
    EXPECT_EQ(shownRows(panel.tableview), QStringList{"Global.NSObject.klvr|1|Dim typed"});
    EXPECT_EQ(panel.lInfo->text(), "1 found; binary, not listed: bin.NSObject.klvr");
}

TEST_F(ProjectSearchPanel, DoubleClickOpensTheFileAtTheLineAndTheToolbarFieldSearches) {
    QByteArray b;
    for (int i = 1; i <= 20; ++i)
        b += i == 12 ? "  target here\n" : "  x\n";
    findreplacefile& panel = openProject({{"Global.NSObject.klvr", "\n"}, {"b.NSObject.klvr", b}});
    panel.cbReplace->setCurrentText("left over");
    global->mymainwindow->boxedSearchFile->setText("target");
    global->mymainwindow->boxedSearchFilePerform();
    EXPECT_TRUE(panel.window->isVisible());
    EXPECT_EQ(panel.cbReplace->currentText(), "");
    ASSERT_EQ(shownRows(panel.tableview), QStringList{"b.NSObject.klvr|12|  target here"});
    panel.DoubleAction(1); // outside the rows
    EXPECT_EQ(global->ProjectCurrentFilename(), project + "/Global.NSObject.klvr");
    panel.DoubleAction(0);
    EXPECT_EQ(global->ProjectCurrentFilename(), project + "/b.NSObject.klvr");
    EXPECT_EQ(global->ProjectCurrentLine(), "12");
}

} // namespace
