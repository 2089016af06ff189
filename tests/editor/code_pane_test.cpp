// The code pane: navigators, the re-scan pipeline driven by its timers, emptying, and
// the guard against overlapping swaps.
#include "editor/kelvaro_lexer.h"
#include "insight/parser.h"
#include "support/ide_fixture.h"

#include <QComboBox>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>

namespace {
const QByteArray kSource = "\nDim total As Integer\n\nSub First()\nEnd Sub\n\n\n\n\n\n\nSub Twelve()\n"
                           "  Dim x As Integer\nEnd Sub\n";
}

class CodePane : public IdeFixture {
protected:
    Global& openProject() {
        Global& g = start();
        project = makeProject("Pane", {{"Global.NSObject.klvr", kSource}});
        g.ProjectOpen(project);
        return g;
    }
    QString project;
};

TEST_F(CodePane, NavigatorsShowTheFilesDeclarationsAndChoosingOneMovesTheCursor) {
    Global& g = openProject();
    code* pane = g.mycode;
    EXPECT_EQ(pane->alllist->itemText(0), QStringLiteral("All (3)"));
    EXPECT_EQ(pane->sublist->itemText(0), QStringLiteral("Sub (2)"));
    EXPECT_EQ(pane->Dimlist->itemText(0), QStringLiteral("Dim (1)"));
    EXPECT_EQ(pane->eventlist->itemText(0), QStringLiteral("Event (0)"));
    ASSERT_EQ(pane->sublist->count(), 4);
    EXPECT_EQ(pane->sublist->itemText(3), QStringLiteral("Twelve()"));
    pane->navigatorChosen(pane->sublist, 3);
    EXPECT_EQ(KLVR_KLTEXTVIEW_LINE(g.mytextview()), 12);
    EXPECT_EQ(pane->sublist->currentIndex(), 0);
    pane->navigatorChosen(pane->sublist, 1); // the separator moves nothing
    EXPECT_EQ(KLVR_KLTEXTVIEW_LINE(g.mytextview()), 12);
    pane->gotoline(13);
    EXPECT_EQ(KLVR_KLTEXTVIEW_LINE(g.mytextview()), 12);
    pane->gotoline(3);
    EXPECT_EQ(KLVR_KLTEXTVIEW_LINE(g.mytextview()), 2);
    // Separator rules stand before the two Subs.
    EXPECT_EQ(g.mytextview()->separatorLines().size(), 2);
}

TEST_F(CodePane, TypingSchedulesOneScanSixSecondsAfterTheLastKey) {
    Global& g = openProject();
    code* pane = g.mycode;
    KLTextView* view = g.mytextview();
    view->setCursorPosition(view->lines() - 1, 0);
    QTest::keyClicks(view, "Sub Added()");
    QTest::keyClick(view, Qt::Key_Return);
    // Every key restarts the one-second pause; nothing else has run.
    ASSERT_TRUE(g.tTextDidChange);
    EXPECT_TRUE(g.tTextDidChange->isActive());
    EXPECT_DOUBLE_EQ(g.tTextDidChange->intervalSeconds(), 1.0);
    EXPECT_FALSE(pane->tUpdateTimer && pane->tUpdateTimer->isActive());
    EXPECT_EQ(pane->sublist->itemText(0), QStringLiteral("Sub (2)"));
    // The pause: re-colour, save, and the five-second timer.
    g.tTextDidChangeFired();
    EXPECT_FALSE(g.tTextDidChange->isActive());
    ASSERT_TRUE(pane->tUpdateTimer);
    EXPECT_TRUE(pane->tUpdateTimer->isActive());
    EXPECT_DOUBLE_EQ(pane->tUpdateTimer->intervalSeconds(), 5.0);
    // Another key pushes both delays back.
    QTest::keyClicks(view, "End Sub");
    QTest::keyClick(view, Qt::Key_Return);
    EXPECT_TRUE(g.tTextDidChange->isActive());
    g.tTextDidChangeFired();
    // The five seconds pass: the file is saved and re-scanned off the main thread.
    QSignalSpy updated(pane, &code::codeInsightUpdated);
    pane->tUpdateTimerFired();
    EXPECT_FALSE(pane->tUpdateTimer->isActive());
    ASSERT_TRUE(updated.wait(5000));
    EXPECT_EQ(pane->sublist->itemText(0), QStringLiteral("Sub (3)"));
    EXPECT_TRUE(readFile(project + "/Global.NSObject.klvr").contains("Sub Added()\nEnd Sub\n"));
}

TEST_F(CodePane, AScanUnderWayDropsTheNextOne) {
    Global& g = openProject();
    code* pane = g.mycode;
    pane->btUpdateTimer = true; // as if a re-scan were running
    writeFile(project + "/Global.NSObject.klvr", kSource + "\nSub Late()\nEnd Sub\n");
    pane->thUpdateCodeInsightBody();
    EXPECT_TRUE(pane->btUpdateTimer); // the running scan's flag is left alone
    EXPECT_EQ(parser::sharedparser()->GetSub(project + "/Global.NSObject.klvr")->entryCount(), 2);
    pane->btUpdateTimer = false;
    QSignalSpy updated(pane, &code::codeInsightUpdated);
    pane->tUpdateTimer99();
    ASSERT_TRUE(updated.wait(5000));
    EXPECT_FALSE(pane->btUpdateTimer);
}

TEST_F(CodePane, AnEmptyDocumentIsNeitherColouredSavedNorScanned) {
    Global& g = start();
    const QString p = makeProject("Empty", {{"Global.NSObject.klvr", ""}});
    g.ProjectOpen(p);
    g.mycode->PerformTextDidChange();
    EXPECT_FALSE(g.mycode->tUpdateTimer && g.mycode->tUpdateTimer->isActive());
}

TEST_F(CodePane, EmptyingResetsEverythingAndReadsTheFontSize) {
    Global& g = openProject();
    code* pane = g.mycode;
    QDir().mkpath(Global::supportFolder());
    writeFile(Global::supportFile("CurrentFontSize.txt"), "11");
    pane->SetEmpty();
    EXPECT_EQ(g.ProjectCurrentFilename(), QString());
    EXPECT_EQ(pane->alllist->count(), 0);
    EXPECT_EQ(pane->sublist->count(), 0);
    EXPECT_EQ(pane->statusbar->text(), QStringLiteral(" "));
    EXPECT_EQ(pane->line->text(), QString());
    EXPECT_EQ(g.mymainwindow->windowTitle(), QString());
    EXPECT_EQ(g.CurrentFontSize, 11);
    EXPECT_EQ(g.mytextview()->lexer()->font(0).pointSize(), 11);
    g.ProjectOpenCode("Global.NSObject.klvr");
    EXPECT_EQ(g.mytextview()->lexer()->font(0).pointSize(), 11);
}

TEST_F(CodePane, ASecondSwapWhileOneRunsIsIgnored) {
    Global& g = openProject();
    code* pane = g.mycode;
    KLTextView* shown = g.mytextview();
    auto* other = KLVR_KLTEXTVIEW_INIT(&g, "other");
    pane->bAlreadyRunning = true;
    pane->SetScrollView(other);
    EXPECT_EQ(g.mytextview(), shown);
    pane->bAlreadyRunning = false;
    pane->SetScrollView(other);
    EXPECT_EQ(g.mytextview(), other);
}

TEST_F(CodePane, CursorMovesUpdateTheLineField) {
    Global& g = openProject();
    KLVR_KLTEXTVIEW_GOTOLINE(g.mytextview(), 4);
    // The view reports a moved selection when it next updates its display.
    EXPECT_TRUE(QTest::qWaitFor([&] { return g.mycode->line->text() == QStringLiteral(" Ln 4"); }, 2000));
    EXPECT_TRUE(g.tLastPosition->isActive());
}
