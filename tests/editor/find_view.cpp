// The view's find operations as the find panel drives them: selection, wrap-around,
// selected text only, replacing, and replace all as one undo step.
#include "editor_test_texts.h"

#include <gtest/gtest.h>

using editor_test::setBytes;

namespace {

QString selected(KLTextView& v) {
    return v.documentText().mid(v.selectionStartUtf16(), v.selectionEndUtf16() - v.selectionStartUtf16());
}

} // namespace

TEST(FindView, NextAndPreviousSelectAndWrap) {
    KLTextView v;
    setBytes(v, QStringLiteral("äbc abc ÄBC abc").toUtf8());
    EXPECT_TRUE(v.findNext("abc"));
    EXPECT_EQ(v.selectionStartUtf16(), 4);
    EXPECT_TRUE(v.findNext("abc"));
    EXPECT_EQ(v.selectionStartUtf16(), 12);
    EXPECT_TRUE(v.findNext("abc")) << "wraps around at the end";
    EXPECT_EQ(v.selectionStartUtf16(), 4);
    EXPECT_TRUE(v.findPrevious("abc")) << "wraps around at the start";
    EXPECT_EQ(v.selectionStartUtf16(), 12);

    v.findSetOptionIgnoreCase(true);
    v.selectUtf16(0, 0);
    EXPECT_TRUE(v.findNext("äbc"));
    EXPECT_EQ(v.selectionStartUtf16(), 0);
    EXPECT_TRUE(v.findNext("äbc"));
    EXPECT_EQ(v.selectionStartUtf16(), 8);
    EXPECT_EQ(selected(v), QStringLiteral("ÄBC"));
    EXPECT_FALSE(v.findNext("xyz"));
    EXPECT_EQ(selected(v), QStringLiteral("ÄBC")) << "a failed find keeps the selection";
    EXPECT_FALSE(v.findNext(""));
}

TEST(FindView, SelectedTextOnlyStaysInsideTheFirstSelection) {
    KLTextView v;
    setBytes(v, QByteArray("foo [foo foo] foo"));
    v.findSetOptionSelectedTextOnly(true);
    v.selectUtf16(4, 13);
    EXPECT_TRUE(v.findNext("foo"));
    EXPECT_EQ(v.selectionStartUtf16(), 5);
    EXPECT_TRUE(v.findNext("foo"));
    EXPECT_EQ(v.selectionStartUtf16(), 9);
    EXPECT_TRUE(v.findNext("foo")) << "wraps inside the selection";
    EXPECT_EQ(v.selectionStartUtf16(), 5);

    // Replace all inside: only the two, and the grown range stays selected.
    v.selectUtf16(4, 13);
    EXPECT_EQ(v.findReplaceAll("foo", "barbar"), 2);
    EXPECT_EQ(v.documentText(), QStringLiteral("foo [barbar barbar] foo"));
    EXPECT_EQ(selected(v), QStringLiteral("[barbar barbar]"));
    EXPECT_EQ(v.findReplaceAll("barbar", "x"), 2) << "the scope follows the replacements";
    EXPECT_EQ(v.documentText(), QStringLiteral("foo [x x] foo"));

    // Without a selection there is nothing to search in.
    v.selectUtf16(0, 0);
    EXPECT_FALSE(v.findNext("foo"));
}

TEST(FindView, ReplaceFindWithAReplacementContainingTheSearchText) {
    KLTextView v;
    setBytes(v, QByteArray("a-a-a"));
    EXPECT_FALSE(v.findReplace("x")) << "no current occurrence";
    ASSERT_TRUE(v.findNext("a"));
    EXPECT_TRUE(v.findReplaceFind("a", "aa"));
    EXPECT_EQ(v.documentText(), QStringLiteral("aa-a-a"));
    EXPECT_EQ(v.selectionStartUtf16(), 3) << "the next occurrence after the replacement";
    EXPECT_TRUE(v.findReplaceFind("a", "aa"));
    EXPECT_TRUE(v.findReplaceFind("a", "aa"));
    EXPECT_EQ(v.documentText(), QStringLiteral("aa-aa-aa"));
    // A selection that is not an occurrence is not replaced; the next one is selected.
    v.selectUtf16(2, 3);
    EXPECT_TRUE(v.findReplaceFind("a", "b"));
    EXPECT_EQ(v.documentText(), QStringLiteral("aa-aa-aa"));
    EXPECT_EQ(v.selectionStartUtf16(), 3);
    EXPECT_TRUE(v.findReplace("Z"));
    EXPECT_EQ(v.documentText(), QStringLiteral("aa-Za-aa"));
}

TEST(FindView, ReplaceAllCountsAndUndoesAsOneStep) {
    KLTextView v;
    const QByteArray original = QStringLiteral("Dim ä\nDIM ö\n' dim 😀 dim\n").toUtf8();
    setBytes(v, original);
    v.SendScintilla(QsciScintilla::SCI_SETSAVEPOINT);
    EXPECT_EQ(v.findReplaceAll("dim", "Dim"), 2);
    EXPECT_EQ(v.documentText(), QStringLiteral("Dim ä\nDIM ö\n' Dim 😀 Dim\n"));
    v.findSetOptionIgnoreCase(true);
    EXPECT_EQ(v.findReplaceAll("dim", "Dimension dim"), 4) << "replacements are not searched again";
    EXPECT_EQ(v.findReplaceAll("nothing", "x"), 0);
    EXPECT_EQ(v.findReplaceAll("", "x"), 0);
    v.undo();
    EXPECT_EQ(v.documentText(), QStringLiteral("Dim ä\nDIM ö\n' Dim 😀 Dim\n"))
        << "one undo step per replace all";
    v.undo();
    EXPECT_EQ(v.documentBytes(), original);

    // The file's form is kept: its line endings in the replacement, its encoding.
    setBytes(v, QByteArray("' caf\xe9 x\r\nDim x\r\n"));
    EXPECT_EQ(v.findReplaceAll("x", "y\n\u20ac\u2192"), 2);
    EXPECT_EQ(v.documentBytes(), QByteArray("' caf\xe9 y\r\n\x80\r\nDim y\r\n\x80\r\n"));
}
