// The snippet pop-ups and shortcut buttons insert their texts at the cursor or over the
// selection, in the file's line endings, as one undo step.
#include "editing_fixture.h"

#include <QComboBox>
#include <QAbstractButton>

namespace {
struct SnippetCase {
    const char* name;
    QByteArray bytes;
    qint64 selectionStart, selectionEnd; // UTF-16
    const char* control;                 // a pop-up's name, or "button"
    const char* item;                    // the item or the button's title
    QByteArray expected;
};

const SnippetCase snippetCases[] = {
    {"SubAtStart", "Dim a\n", 0, 0, "syntax", "Sub", "\nSub NAME(ARGUMENT As id)\n  \nEnd Sub\nDim a\n"},
    {"IfThenInMiddle", "ab", 1, 1, "syntax2", "If Then", "a\nIf EXPRESSION Then\n  \nEnd If\nb"},
    {"ForNextAtEnd", "x", 1, 1, "syntax3", "For Next", "x\nFor VARIABLE = EXPRESSION To EXPRESSION\n  \nNext\n"},
    {"ActionOverSelection", "keep OLD keep", 5, 8, "syntax", "Action", "keep \nAction NAME()\n  \nEnd IBAction\n keep"},
    {"DimInCrlfFile", "a\r\nb\r\n", 3, 3, "syntax", "Dim", "a\r\n\r\nDim NAME As id\r\nb\r\n"},
    {"ElseIfBetweenNonAscii", "\xc3\xa9\xc3\xbc", 1, 1, "syntax2", "If Then Else Else If",
     "\xc3\xa9\nIf EXPRESSION Then\n  \nElse\n  \nElse If EXPRESSION Then\n  \nEnd If\n\xc3\xbc"},
    {"TitleInsertsNothing", "abc", 1, 1, "syntax", "Definition", "abc"},
    {"IntegerButton", "x = ", 4, 4, "button", "Integer", "x = Integer..."},
    {"NilButtonOverSelection", "Return Me", 7, 9, "button", "Nil", "Return Nil"},
};

class Snippets : public EditingFixture, public ::testing::WithParamInterface<SnippetCase> {};
} // namespace

TEST_P(Snippets, InsertAsOneUndoStep) {
    const SnippetCase& c = GetParam();
    KLTextView* view = show(c.bytes);
    ASSERT_TRUE(view);
    view->selectUtf16(c.selectionStart, c.selectionEnd);
    code* pane = global->mycode;
    if (QByteArray(c.control) == "button") {
        auto* button = pane->findChild<QAbstractButton*>(QStringLiteral("shortcut_") + c.item);
        ASSERT_TRUE(button);
        button->click();
    } else {
        auto* popUp = pane->findChild<QComboBox*>(c.control);
        ASSERT_TRUE(popUp);
        const int index = popUp->findText(c.item);
        ASSERT_GE(index, 0);
        popUp->setCurrentIndex(index);
        emit popUp->activated(index);
        EXPECT_EQ(popUp->currentIndex(), 0) << "the pop-up shows its title again";
    }
    EXPECT_EQ(view->documentBytes(), c.expected);
    if (c.expected != c.bytes) {
        view->undo();
        EXPECT_EQ(view->documentBytes(), c.bytes);
    }
    EXPECT_FALSE(view->isUndoAvailable()) << "one undo step";
}

INSTANTIATE_TEST_SUITE_P(Editing, Snippets, ::testing::ValuesIn(snippetCases),
                         [](const auto& info) { return std::string(info.param.name); });
