// The remembered position, Back, the line field and the go-to-line dialog.
#include "support/ide_fixture.h"

#include <QLineEdit>
#include <QTest>

namespace {

QByteArray lines(int count) {
    QByteArray text;
    for (int i = 1; i <= count; ++i)
        text += "' line " + QByteArray::number(i) + "\n";
    return text;
}

class Position : public IdeFixture {
protected:
    Global& openProject(bool started = false) {
        Global& g = started ? *global : start();
        project = makeProject("Shop", {{"Global.NSObject.klvr", lines(50)}, {"b.NSObject.klvr", lines(60)}});
        g.ProjectOpen(project);
        return g;
    }
    qint64 line() const { return KLVR_INTEGER(global->ProjectCurrentLine()); }
    QString file() const { return KLVR_FILENAME(global->ProjectCurrentFilename()); }
    QString project;
};

TEST_F(Position, BackReturnsToTheDocumentLeftAndTheTimerRemembersALineTheCursorRestedOn) {
    Global& g = start();
    g.global_back(); // nothing remembered yet
    EXPECT_TRUE(g.ProjectCurrentFilename().isEmpty());
    g.ProjectCurrentCodeGotoLine(3); // no project: nothing
    openProject(true);
    g.ProjectCurrentCodeGotoLine(40);
    g.ProjectOpenCode("b.NSObject.klvr");
    g.ProjectCurrentCodeGotoLine(7);
    g.global_back();
    EXPECT_EQ(file(), "Global.NSObject.klvr");
    EXPECT_EQ(line(), 40);
    g.global_back(); // back again returns
    EXPECT_EQ(file(), "b.NSObject.klvr");
    EXPECT_EQ(line(), 7);

    g.ProjectCurrentCodeGotoLine(10);
    g.dotLastPosition();
    KLVR_NSTIMER_STOP(g.tLastPosition);
    g.ProjectCurrentCodeGotoLine(30);
    // The view reports the moved cursor when it next updates its display.
    EXPECT_TRUE(QTest::qWaitFor([&] { return g.mycode->line->text() == QStringLiteral(" Ln 30"); }, 2000));
    EXPECT_TRUE(g.tLastPosition->isActive()); // every cursor move starts it anew
    EXPECT_EQ(g.tLastPosition->intervalSeconds(), 5.0);
    g.dotLastPosition(); // what the timer calls five seconds later
    EXPECT_EQ(g.nLastPositionLine, 30);
    g.nLastPositionLine = 12;
    g.dotLastPosition(); // resting on the same line remembers nothing new
    EXPECT_EQ(g.nLastPositionLine, 12);
}

struct GoToCase {
    const char* name;
    QString typed;
    qint64 line;
};

class GoToLine : public Position, public ::testing::WithParamInterface<GoToCase> {};

TEST_P(GoToLine, GoesWhereTheTextConvertsToWithinTheFile) {
    Global& g = openProject();
    g.ProjectCurrentCodeGotoLine(20);
    g.GoToLine();
    ASSERT_TRUE(g.GoToLineWindow->isVisible());
    EXPECT_EQ(g.GoToLineNumber->text(), "");
    g.GoToLineNumber->setText(GetParam().typed);
    g.GoToLineOK();
    EXPECT_FALSE(g.GoToLineWindow->isVisible());
    EXPECT_EQ(line(), GetParam().line);
}

INSTANTIATE_TEST_SUITE_P(Cases, GoToLine,
                         ::testing::Values(GoToCase{"Number", "25", 25}, GoToCase{"EmptyMovesNothing", "", 20},
                                           GoToCase{"Blanks", " 7 ", 7}, GoToCase{"NotANumber", "abc", 1},
                                           GoToCase{"Zero", "0", 1}, GoToCase{"Negative", "-5", 1},
                                           GoToCase{"PastTheEnd", "999999", 51},
                                           GoToCase{"Huge", "9223372036854775807", 51}),
                         [](const ::testing::TestParamInfo<GoToCase>& info) { return std::string(info.param.name); });

} // namespace
