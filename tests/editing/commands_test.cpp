// The editing commands of the application controller, reached by name as the menus
// reach them: each changes the text as one undo step that restores it byte for byte.
#include "editing_fixture.h"

#include <QComboBox>
#include <QFile>
#include <QAbstractButton>

namespace {
struct CommandCase {
    const char* name;
    const char* command; // a Global command, or "b_..." for the code pane's button
    QByteArray bytes;
    qint64 selectionStart, selectionEnd; // UTF-16
    QByteArray expected;
};

const CommandCase commandCases[] = {
    {"CommentOneLine", "Comment", "Dim a\nDim b\n", 2, 2, "'Dim a\nDim b\n"},
    {"CommentSelectedLines", "Comment", "a\nb\nc\n", 0, 3, "'a\n'b\nc\n"},
    {"CommentEmptyDocument", "Comment", "", 0, 0, ""},
    {"CommentLeavesEmptyLines", "Comment", "Dim a\n\n\tx = 1\n", 0, 14, "'Dim a\n\n'\tx = 1\n"},
    {"CommentLastLineWithoutBreak", "Comment", "a\nlast", 3, 3, "a\n'last"},
    {"CommentButton", "b_comment", "x\n", 0, 0, "'x\n"},
    {"UncommentCrlfLines", "Uncomment", "'a\r\n'b\r\n", 0, 6, "a\r\nb\r\n"},
    {"UncommentLastLine", "Uncomment", "a\n  ' z", 4, 4, "a\n   z"},
    {"ShiftRightSelection", "ShiftRight", "x\ny", 0, 3, "  x\n  y"},
    {"ShiftRightEmptyDocument", "ShiftRight", "", 0, 0, ""},
    {"ShiftLeftOneLine", "ShiftLeft", "    x\n", 0, 0, "  x\n"},
    {"ShiftLeftButtonLastLine", "b_shiftleft", "a\n\tb", 3, 3, "a\nb"},
    {"ShiftLeftTakesTheSpacesThereAre", "ShiftLeft", " x\n   y", 0, 6, "x\n y"},
    {"UpperCaseSelection", "ToUpperCase", "stra\xc3\x9f" "e dim", 0, 6, "STRASSE dim"},
    {"LowerCaseLastLineWithoutSelection", "ToLowerCase", "A\nB\xc3\x89", 2, 2, "A\nb\xc3\xa9"},
    {"UpperCaseKeepsWhatWindows1252CannotHold", "ToUpperCase", "\xb5\xe9 \xff", 0, 4, "\xb5\xc9 \x9f"},
    {"LowerCaseCrlfSelection", "ToLowerCase", "AB\r\nCD\r\n", 1, 5, "Ab\r\ncD\r\n"},
    {"AutoFormatWholeText", "AutoFormat", "Sub S()\nx = 1\nIf x Then\ny\nEnd If\nEnd Sub",
     0, 0, "Sub S()\n  x = 1\n  If x Then\n    y\n  End If\nEnd Sub"},
    {"AutoFormatSelectedLinesCrlf", "AutoFormat", "Sub S()\r\n  If x Then\r\ny\r\n  End If\r\nEnd Sub\r\n", 9, 26,
     "Sub S()\r\n  If x Then\r\n    y\r\n  End If\r\nEnd Sub\r\n"},
    {"AutoFormatEmptyDocument", "AutoFormat", "", 0, 0, ""},
    {"AutoFormatKeepsWindows1252Bytes", "AutoFormat", "Sub A()\n  ' caf\xe9\nx = 1\nEnd Sub\n", 0, 0,
     "Sub A()\n  ' caf\xe9\n  x = 1\nEnd Sub\n"},
};

class Commands : public EditingFixture, public ::testing::WithParamInterface<CommandCase> {};
} // namespace

TEST_P(Commands, OneUndoStepRestoresTheText) {
    const CommandCase& c = GetParam();
    KLTextView* view = show(c.bytes);
    ASSERT_TRUE(view);
    view->selectUtf16(c.selectionStart, c.selectionEnd);
    if (QByteArray(c.command).startsWith("b_")) {
        auto* button = global->mycode->findChild<QAbstractButton*>(c.command);
        ASSERT_TRUE(button);
        button->click();
    } else {
        ASSERT_TRUE(QMetaObject::invokeMethod(global.get(), c.command, Q_ARG(Value, Value())));
    }
    EXPECT_EQ(view->documentBytes(), c.expected);
    if (c.selectionEnd > c.selectionStart && !c.expected.isEmpty()) {
        EXPECT_TRUE(view->hasSelectedText()) << "what was selected stays selected";
    }
    if (c.expected != c.bytes) {
        view->undo();
        EXPECT_EQ(view->documentBytes(), c.bytes);
    }
    EXPECT_FALSE(view->isUndoAvailable()) << "one undo step";
}

INSTANTIATE_TEST_SUITE_P(Editing, Commands, ::testing::ValuesIn(commandCases),
                         [](const auto& info) { return std::string(info.param.name); });

// Without a document the commands do nothing; on a read-only one they say so as typing
// does, and the text stays.
TEST_F(EditingFixture, CommandsRefuseWithoutDocumentAndOnReadOnly) {
    Global& g = start();
    for (const char* command : {"Comment", "ToUpperCase", "AutoFormat", "ZoomBigger", "ExportPdf", "PrintIt"})
        ASSERT_TRUE(QMetaObject::invokeMethod(&g, command, Q_ARG(Value, Value())));
    EXPECT_EQ(g.CurrentFontSize, 10);
    EXPECT_TRUE(testPanels().shown().empty());

    project = makeProject("Locked", {{"Global.NSObject.klvr", "\n"}, {"r.NSObject.klvr", "dim x\n"}});
    QFile::setPermissions(project + "/r.NSObject.klvr", QFileDevice::ReadOwner);
    g.ProjectOpen(project);
    g.ProjectOpenCode("r.NSObject.klvr");
    KLTextView* view = g.mytextview();
    ASSERT_TRUE(view->isReadOnly());
    g.ToUpperCase();
    g.global_shiftright();
    emit g.mycode->syntax->activated(2);
    EXPECT_EQ(view->documentBytes(), "dim x\n");
    ASSERT_EQ(testPanels().messages().size(), 1u) << "told once, as typing is";
    EXPECT_TRUE(testPanels().messages()[0].title.contains("is read-only"));
}
