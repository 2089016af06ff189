// The log panels: bounded to their last lines with a note, following output only while
// the user is at the bottom.
#include "buildrun/log_panel.h"

#include <QLabel>
#include <QApplication>
#include <QClipboard>
#include <QTest>
#include <QScrollBar>
#include <gtest/gtest.h>

namespace {
QString lines(int from, int to) {
    QString text;
    for (int i = from; i <= to; ++i)
        text += QStringLiteral("line %1\n").arg(i);
    return text;
}

TEST(LogPanel, KeepsTheLastLinesAndSaysAtItsTopThatEarlierOnesWereDropped) {
    LogPanel log("Run Log", "runLogPanel", 100);
    log.append(lines(1, 60));
    EXPECT_EQ(log.droppedLines(), 0);
    EXPECT_EQ(log.droppedNote(), "");
    log.append(lines(61, 130));
    log.append("partial");
    log.append(" end\n");
    EXPECT_EQ(log.droppedLines(), 31);
    EXPECT_TRUE(log.text().startsWith("line 32\n"));
    EXPECT_TRUE(log.text().endsWith("line 130\npartial end\n"));
    EXPECT_EQ(log.droppedNote(), "31 earlier lines were dropped; the last 100 lines are kept.");
    EXPECT_EQ(log.findChild<QLabel*>("runLogPanelNote")->text(), log.droppedNote());
    log.clear();
    EXPECT_EQ(log.text(), "");
    EXPECT_EQ(log.droppedLines(), 0);
    EXPECT_TRUE(log.findChild<QLabel*>("runLogPanelNote")->isHidden());
}

QString firstShownLine(const LogPanel& log) { return log.view()->line(log.view()->firstVisibleLine()); }

TEST(LogPanel, FollowsOutputAtTheBottomAndStaysPutWhenScrolledUp) {
    LogPanel log("Run Log", "runLogPanel", 1000);
    log.resize(400, 200);
    log.show();
    QScrollBar* bar = log.view()->verticalScrollBar();
    log.append(lines(1, 300));
    EXPECT_EQ(bar->value(), bar->maximum());
    log.append(lines(301, 400));
    EXPECT_EQ(bar->value(), bar->maximum());
    bar->setValue(200);
    const QString firstShown = firstShownLine(log);
    log.append(lines(401, 500));
    EXPECT_EQ(firstShownLine(log), firstShown);
    // Dropping lines at the top keeps the same line in view.
    log.append(lines(501, 1100));
    EXPECT_EQ(firstShownLine(log), firstShown);
    EXPECT_LT(bar->value(), bar->maximum());
    EXPECT_TRUE(QFontInfo(log.view()->font()).fixedPitch());
}

TEST(LogPanel, WholeLinesAreSelectedAndCopied) {
    LogPanel log("Compiler Window", "compilerLogPanel", 100);
    log.resize(400, 300);
    log.show();
    log.append("first\nsecond\nthird");
    EXPECT_EQ(log.view()->lineCount(), 3);
    LogView* view = log.view();
    const int height = view->fontMetrics().lineSpacing();
    QTest::mousePress(view->viewport(), Qt::LeftButton, {}, QPoint(5, height + 2));
    QTest::mouseMove(view->viewport(), QPoint(5, 2 * height + 2));
    EXPECT_EQ(view->selectedText(), "second\nthird\n");
    view->copy();
    EXPECT_EQ(QApplication::clipboard()->text(), "second\nthird\n");
    view->selectAll();
    EXPECT_EQ(view->selectedText(), "first\nsecond\nthird\n");
    log.clear();
    EXPECT_EQ(view->selectedText(), "");
}
} // namespace
