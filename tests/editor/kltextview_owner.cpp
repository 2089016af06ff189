// The view's calls to its owner (by name, only when the owner has them) and the view's
// side of completion.
#include "editor_test_owner.h"
#include "editor_test_texts.h"

#include <QTest>
#include <gtest/gtest.h>

using editor_test::RecordingOwner;
using editor_test::setBytes;

TEST(KLTextViewOwner, CallsReachTheOwnerByName) {
    RecordingOwner owner;
    KLTextView* view = KLVR_KLTEXTVIEW_INIT(&owner, "tv");
    view->resize(400, 300);
    view->show();
    setBytes(*view, QStringLiteral("😀 x").toUtf8());
    owner.calls.clear();

    view->SendScintilla(QsciScintilla::SCI_GOTOPOS, long(view->bytesFromUtf16(3)));
    QTest::keyClicks(view, "ab");
    QCoreApplication::processEvents();
    // Before each insertion the owner hears where it goes, in UTF-16 positions.
    EXPECT_TRUE(owner.calls.contains("should:3:0:a")) << owner.calls.join(',').toStdString();
    EXPECT_TRUE(owner.calls.contains("should:4:0:b"));
    EXPECT_EQ(owner.calls.count("change:tv"), 2);
    EXPECT_TRUE(owner.calls.contains("selection"));

    owner.calls.clear();
    view->selectUtf16(0, 2);
    view->removeSelectedText();
    EXPECT_TRUE(owner.calls.contains("should:0:2:")) << owner.calls.join(',').toStdString();
    delete view;
}

TEST(KLTextViewOwner, AViewWithoutOwnerOrWithAPlainOwnerCallsNothing) {
    QObject plain;
    KLTextView view(&plain, "tv");
    view.setText("abc");
    view.showCompletion();
    EXPECT_TRUE(view.shownCompletions().isEmpty());
    KLTextView orphan;
    orphan.setText("abc");
    orphan.showCompletion();
    EXPECT_FALSE(orphan.isListActive());
}

TEST(KLTextViewCompletion, ContextOfTheWordBeforeTheCursor) {
    KLTextView v;
    setBytes(v, QStringLiteral("x = me.list.Ad\ny = Gr\nz = (a).b\n.c").toUtf8());
    auto at = [&](int line, const char* after) {
        const QString text = v.documentText();
        return v.completionContext(text.indexOf(QString::fromUtf8(after)) + qsizetype(strlen(after)) +
                                   0 * line);
    };
    KLTextView::CompletionContext c = at(0, "me.list.Ad");
    EXPECT_EQ(c.expression, QStringLiteral("me.list"));
    EXPECT_EQ(c.partialWord, QStringLiteral("Ad"));
    c = at(1, "y = Gr");
    EXPECT_EQ(c.expression, KLTextView::NoContextMarker);
    EXPECT_EQ(c.partialWord, QStringLiteral("Gr"));
    EXPECT_EQ(KLTextView::NoContextMarker.size(), 10);
    c = at(2, "(a).b");
    EXPECT_EQ(c.expression, KLTextView::NoContextMarker) << "nothing nameable before the point";
    c = at(3, ".c");
    EXPECT_EQ(c.expression, KLTextView::NoContextMarker);
    EXPECT_EQ(c.partialWord, QStringLiteral("c"));

    EXPECT_EQ(KLTextView::filterCandidates({"Count", "add", "cOUNT2", "Co"}, "co"),
              (QStringList{"Count", "cOUNT2", "Co"}));
    EXPECT_EQ(KLTextView::filterCandidates({"b", "a"}, ""), (QStringList{"b", "a"})) << "order kept";
}

TEST(KLTextViewCompletion, ShowsFilteredListAndInsertsTheChoice) {
    RecordingOwner owner;
    KLTextView v(&owner, "tv");
    v.resize(400, 300);
    v.show();
    setBytes(v, QByteArray("x = me.list"));
    v.SendScintilla(QsciScintilla::SCI_DOCUMENTEND);
    QTest::keyClick(&v, '.');
    EXPECT_TRUE(owner.calls.contains("completion:me.list")) << "a point asks for the members";
    EXPECT_EQ(v.shownCompletions(), owner.candidates);

    v.SendScintilla(QsciScintilla::SCI_AUTOCCANCEL);
    QTest::keyClicks(&v, "Co");
    QTest::keyClick(&v, Qt::Key_Space, Qt::ControlModifier);
    EXPECT_EQ(v.shownCompletions(), (QStringList{"Count", "count2"})); // exact case first
    ASSERT_TRUE(v.isListActive());
    v.SendScintilla(QsciScintilla::SCI_AUTOCCOMPLETE); // the user takes the first entry
    EXPECT_EQ(v.text(), QStringLiteral("x = me.list.Count"));

    // "(" after a word shows that word's completion text as a tip.
    QTest::keyClick(&v, Qt::Key_Return);
    QTest::keyClicks(&v, "MsgBox(");
    EXPECT_TRUE(owner.calls.contains("completion2:MsgBox"));
    EXPECT_TRUE(v.SendScintilla(QsciScintilla::SCI_CALLTIPACTIVE));

    // The same answer when an owner hands the question back to the view.
    // "x = me.list.Count": the partial word "Co" after "me.list.", then "m" after nothing.
    EXPECT_EQ(v.delegate_textView_completions({"fallback"}, 12, 2), (QStringList{"Count", "count2"}));
    EXPECT_EQ(v.delegate_textView_completions({"fallback"}, 4, 1), (QStringList{"fallback"}));
    EXPECT_EQ(v.delegate_textView_willChangeSelection(1, 2, 3, 4), (QList<qint64>{3, 4}));

    // Nothing matching: no list.
    owner.candidates = {"Alpha"};
    QTest::keyClicks(&v, "zz");
    v.showCompletion();
    EXPECT_FALSE(v.isListActive());
    EXPECT_TRUE(v.shownCompletions().isEmpty());
}
