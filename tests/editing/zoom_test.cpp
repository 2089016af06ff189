// Zoom: one point a step, not below 4, back to 10; the size file keeps it for the next
// start.
#include "editing_fixture.h"

#include "editor/kelvaro_lexer.h"

TEST_F(EditingFixture, ZoomStopsAtFourAndIsKeptForTheNextStart) {
    KLTextView* view = show("x\n");
    const QString sizeFile = Global::supportFile("CurrentFontSize.txt");
    struct Step {
        const char* command;
        int times;
        qint64 size;
    };
    for (const Step& s : {Step{"ZoomSmaller", 7, 4}, Step{"ZoomBigger", 3, 7}, Step{"ZoomNormal", 1, 10},
                          Step{"ZoomBigger", 2, 12}}) {
        for (int i = 0; i < s.times; ++i)
            ASSERT_TRUE(QMetaObject::invokeMethod(global.get(), s.command, Q_ARG(Value, Value())));
        EXPECT_EQ(global->CurrentFontSize, s.size) << s.command;
        EXPECT_EQ(readFile(sizeFile), QByteArray::number(s.size));
        EXPECT_EQ(view->lexer()->defaultFont(0).pointSize(), s.size);
    }
    EXPECT_EQ(view->documentBytes(), "x\n");

    global.reset();
    Global& again = start();
    again.ProjectOpen(project);
    again.ProjectOpenCode("a.NSObject.klvr");
    EXPECT_EQ(again.CurrentFontSize, 12);
    EXPECT_EQ(again.mytextview()->lexer()->defaultFont(0).pointSize(), 12);
}
