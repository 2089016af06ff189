// Automatic formatting's rules, case conversion's selection, breakpoints, and the layout
// settings (the editing commands' table is in tests/editing/commands_test.cpp).
#include "editor_test_texts.h"

#include "editor/kelvaro_lexer.h"
#include "editor/line_commands.h"

#include <QFontDatabase>
#include <QFontInfo>
#include <QTest>
#include <gtest/gtest.h>

using editor_test::setBytes;

TEST(LineCommands, AutoFormatIndentsByBlocks) {
    const QStringList in = {
        "Public Sub Main(a As Integer)",
        "Dim s As String = \"End Sub\" ' End If",
        "If a > 1 Then",
        "For i = 1 To 3",
        "MsgBox(\"x\")   ",
        "Next",
        "Else If a = 0 Then",
        "If a Then Return",
        "Else",
        "   ",
        "Select Case a",
        "Case 1",
        "x = 1",
        "End Select",
        "End If",
        "End Sub",
        "Dim after",
        "End Sub", // one End too many never indents below zero
        "Sub NoParens",
    };
    const QStringList out = {
        "Public Sub Main(a As Integer)",
        "  Dim s As String = \"End Sub\" ' End If",
        "  If a > 1 Then",
        "    For i = 1 To 3",
        "      MsgBox(\"x\")",
        "    Next",
        "  Else If a = 0 Then",
        "    If a Then Return",
        "  Else",
        "",
        "    Select Case a",
        "    Case 1",
        "      x = 1",
        "    End Select",
        "  End If",
        "End Sub",
        "Dim after",
        "End Sub",
        "Sub NoParens",
    };
    EXPECT_EQ(line_commands::autoFormat(in), out);
    EXPECT_EQ(line_commands::autoFormat(out), out) << "formatting is stable";
    EXPECT_EQ(line_commands::autoFormat({"x", "End If", "y"}, 2), (QStringList{"    x", "  End If", "  y"}));
}

// Case conversion can change a selection's length; the converted text stays selected.
TEST(KLTextViewCommands, CaseConversionKeepsTheGrownSelection) {
    KLTextView v;
    setBytes(v, QStringLiteral("dim größe\n").toUtf8());
    v.selectUtf16(4, 9);
    v.upperCaseSelection();
    EXPECT_EQ(v.text(), QStringLiteral("dim GRÖSSE\n"));
    EXPECT_EQ(v.selectedText(), QStringLiteral("GRÖSSE"));
}

TEST(KLTextViewCommands, BreakpointsToggleOnTheCursorLineAndByMarginClick) {
    KLTextView v;
    v.resize(400, 300);
    v.show();
    setBytes(v, QByteArray("a\nb\nc\nd\n"));
    v.gotoLine(2);
    v.toggleBreakpoint();
    v.gotoLine(4);
    v.toggleBreakpoint();
    EXPECT_EQ(v.breakpointLines(), (QList<qint64>{2, 4}));
    v.gotoLine(2);
    v.toggleBreakpoint();
    EXPECT_EQ(v.breakpointLines(), (QList<qint64>{4}));

    // A click in the symbol margin beside line 1 sets a mark there.
    const int marginX = v.marginWidth(0) + v.marginWidth(1) / 2;
    const int lineY = int(v.SendScintilla(QsciScintilla::SCI_TEXTHEIGHT, 0)) / 2;
    QTest::mouseClick(v.viewport(), Qt::LeftButton, {}, QPoint(marginX, lineY));
    EXPECT_EQ(v.breakpointLines(), (QList<qint64>{1, 4}));
    // Marks move with their lines.
    v.gotoLine(1);
    v.insert("new\n");
    EXPECT_EQ(v.breakpointLines(), (QList<qint64>{2, 5}));
}

TEST(KLTextViewLayout, FontWrappingIndentAndLineNumbers) {
    KLTextView v;
    v.setEditorFont(13);
    const QFont font = KLTextView::editorFont(13);
    EXPECT_EQ(font.pointSize(), 13);
    if (QFontDatabase::families().contains("Monaco"))
        EXPECT_EQ(font.family(), QStringLiteral("Monaco"));
    else
        EXPECT_TRUE(QFontInfo(font).fixedPitch()) << font.family().toStdString();
    EXPECT_EQ(v.lexer()->font(0).pointSize(), 13);
    EXPECT_EQ(KLTextView::editorFont(0).pointSize(), 1) << "no size below one point";

    v.setWrapMode(QsciScintilla::WrapWord);
    v.turnOffWrapping();
    EXPECT_EQ(v.wrapMode(), QsciScintilla::WrapNone);
    v.setAutoIndent(false);
    v.turnOnAutoIndent();
    EXPECT_TRUE(v.autoIndent());

    // The line-number margin grows with the line count.
    setBytes(v, QByteArray("x\n"));
    QCoreApplication::processEvents();
    const int small = v.marginWidth(0);
    setBytes(v, editor_test::generatedText(20000));
    QCoreApplication::processEvents();
    EXPECT_GT(v.marginWidth(0), small);
}

TEST(KLTextViewLayout, NewLinesTakeThePreviousIndentation) {
    KLTextView v;
    v.resize(400, 300);
    v.show();
    setBytes(v, QByteArray("Sub A()\n    x = 1"));
    v.SendScintilla(QsciScintilla::SCI_DOCUMENTEND);
    QTest::keyClick(&v, Qt::Key_Return);
    QTest::keyClicks(&v, "y");
    EXPECT_EQ(v.documentBytes(), QByteArray("Sub A()\n    x = 1\n    y"));
}
