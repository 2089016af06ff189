// Lines and positions the view reports agree with the scanner's: 0-based UTF-16
// offsets into the file's text as stored (carriage returns included), 1-based lines.
#include "editor_test_texts.h"

#include <gtest/gtest.h>

using editor_test::setBytes;

namespace {

// Where the scanner finds method declarations: the line break in front of each.
QList<qint64> scannerSeparators(const QString& text) {
    QList<qint64> positions;
    for (const QString& prefix : {QStringLiteral("\nSub "), QStringLiteral("\nFunction ")}) {
        qsizetype at = text.indexOf(prefix, 0, Qt::CaseInsensitive);
        while (at >= 0) {
            positions << at;
            at = text.indexOf(prefix, at + 1, Qt::CaseInsensitive);
        }
    }
    return positions;
}

} // namespace

TEST(KLTextViewPositions, AgreeWithUtf16OffsetsForNonAsciiAndCrlf) {
    const QStringList texts = {
        QStringLiteral(
            "' Grüße 😀😀\n\nSub Ä()\n  x = \"ß\"\nEnd Sub\n\nFunction F() As String\nEnd Function\n"),
        QStringLiteral("' 日本語のコメント\r\nDim a\r\n\r\nsub B()\r\nEnd Sub\r\nSub C()\r\nEnd Sub"),
        QStringLiteral("Sub First()\nEnd Sub\n\nSub 𝔘𝔫𝔦()\nEnd Sub\n"),
    };
    QList<QByteArray> files;
    for (const QString& text : texts)
        files << text.toUtf8();
    // A byte order mark, and bytes that are not UTF-8 (Windows-1252), one character each.
    files << QByteArray("\xef\xbb\xbf' x\n\nSub B()\nEnd Sub\n")
          << QByteArray("' caf\xe9 \xff\x80!\n\nSub C()\n");
    for (const QByteArray& bytes : files) {
        const QString text = QString::fromUtf8(document_file::decode(bytes).utf8);
        ASSERT_EQ(text.size(), QString::fromUtf8(bytes).size()) << "the scanner counts the same";
        KLTextView view;
        setBytes(view, bytes);
        EXPECT_EQ(view.documentText(), text);
        // Every offset maps to bytes and back, and the cursor reports it.
        for (qint64 offset = 0; offset <= text.size(); ++offset) {
            if (offset > 0 && offset < text.size() && text[offset].isLowSurrogate())
                continue; // no cursor between the halves of one character
            view.SendScintilla(QsciScintilla::SCI_GOTOPOS, long(view.bytesFromUtf16(offset)));
            ASSERT_EQ(view.position(), offset) << text.toStdString();
            ASSERT_EQ(view.line(), text.left(offset).count(u'\n') + 1);
        }
        // Separator rules go under the line that the scanner's line break ends.
        const QList<qint64> positions = scannerSeparators(text);
        ASSERT_FALSE(positions.isEmpty());
        view.setLineSeparators(positions);
        QList<qint64> expectedLines;
        for (qint64 p : positions)
            expectedLines << text.left(p).count(u'\n');
        std::sort(expectedLines.begin(), expectedLines.end());
        EXPECT_EQ(view.separatorLines(), expectedLines) << text.toStdString();
    }
}

TEST(KLTextViewPositions, SeparatorsIgnoreOddPositionsAndMoveWithEdits) {
    KLTextView view;
    setBytes(view, QByteArray("a\n\nSub X()\nEnd Sub\n"));
    view.setLineSeparators({2, -1, 999, 1'000'000'000'000});
    EXPECT_EQ(view.separatorLines(), (QList<qint64>{1}));
    view.SendScintilla(QsciScintilla::SCI_GOTOPOS, 0);
    view.insert("new line\n");
    EXPECT_EQ(view.separatorLines(), (QList<qint64>{2})) << "the rule stays with its line";
    KLVR_KLTEXTVIEW_LINESEPARATORS(&view, std::shared_ptr<const QList<qint64>>());
    EXPECT_TRUE(view.separatorLines().isEmpty()) << "a file never scanned has no rules";
}

TEST(KLTextViewPositions, GotoLineClampsAndPutsTheCursorAtTheLineStart) {
    KLTextView view;
    setBytes(view, QStringLiteral("eins\nzwei 😀\ndrei\n").toUtf8());
    view.gotoLine(3);
    EXPECT_EQ(view.line(), 3);
    EXPECT_EQ(view.position(), 13);
    view.gotoLine(0);
    EXPECT_EQ(view.line(), 1);
    view.gotoLine(1000);
    EXPECT_EQ(view.line(), 4) << "the last line (after the final break)";
    view.gotoLine(-5);
    EXPECT_EQ(view.position(), 0);
}

// On a long line the view counts from the position it converted last; a jump back or
// forward, or a change before that position, must still give the offsets of the text.
TEST(KLTextViewPositions, ConversionsOnALongLineFollowEditsAndJumps) {
    QString line;
    const QStringList pieces = {QStringLiteral("ab "), QStringLiteral("é"), QStringLiteral("日本"),
                                QStringLiteral("😀"), QStringLiteral("\"x\" ")};
    for (int i = 0; line.size() < 30'000; ++i)
        line += pieces[i % pieces.size()];
    KLTextView view;
    setBytes(view, (QStringLiteral("Sub A()\n") + line + QStringLiteral("\nEnd Sub\n")).toUtf8());
    const auto check = [&view](const char* when) {
        const QString text = view.documentText();
        // Forward, backward and far jumps in one walk, each one a check of both directions.
        for (qint64 offset : {qint64(20'000), qint64(20'010), qint64(19'990), qint64(9), qint64(29'000),
                              qint64(15'000), text.size() - qint64(3), qint64(20'005)}) {
            while (offset > 0 && text[offset].isLowSurrogate())
                --offset;
            const qint64 bytes = text.left(offset).toUtf8().size();
            ASSERT_EQ(view.bytesFromUtf16(offset), bytes) << when << " at " << offset;
            ASSERT_EQ(view.utf16FromBytes(bytes), offset) << when << " at " << offset;
        }
        // An offset between the two halves of an emoji lands after it, counted from
        // either side.
        const qint64 inside = text.indexOf(QStringLiteral("😀"), 20'000) + 1;
        const qint64 after = text.left(inside + 1).toUtf8().size();
        for (qint64 from : {inside - 500, inside + 500}) {
            view.utf16FromBytes(view.bytesFromUtf16(from)); // the view now counts from there
            ASSERT_EQ(view.bytesFromUtf16(inside), after) << when << " from " << from;
        }
    };
    check("as loaded");
    const long middle = long(view.bytesFromUtf16(20'000));
    view.SendScintilla(QsciScintilla::SCI_INSERTTEXT, middle, "😀ü");
    check("after an insertion at the last position converted");
    view.SendScintilla(QsciScintilla::SCI_INSERTTEXT, long(view.bytesFromUtf16(60)), "日本語");
    check("after an insertion before it");
    const long from = long(view.bytesFromUtf16(40));
    view.SendScintilla(QsciScintilla::SCI_DELETERANGE, from, long(view.bytesFromUtf16(47)) - from);
    check("after a deletion before it");
    view.SendScintilla(QsciScintilla::SCI_UNDO);
    view.SendScintilla(QsciScintilla::SCI_UNDO);
    check("after undoing both");
}
