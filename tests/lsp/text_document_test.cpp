// Changes applied to an open document: positions in UTF-16 units of their line, lines
// ending in "\n", "\r\n" or a lone "\r", positions past a line's end or the text's end
// clamped. After each change the line index must equal that of the text read afresh.
#include "lsp/message_reader.h"
#include "lsp/text_document.h"

#include <gtest/gtest.h>

namespace {

using lsp::TextDocument;
using lsp::TextPosition;

struct Change {
    const char* name;
    const char16_t* before;
    TextPosition start, end;
    const char16_t* inserted;
    const char16_t* after;
};

class DocumentChange : public ::testing::TestWithParam<Change> {};

TEST_P(DocumentChange, GivesTheTextAndItsLines) {
    const Change& c = GetParam();
    TextDocument document(QString::fromUtf16(c.before));
    document.replace(c.start, c.end, QString::fromUtf16(c.inserted));
    EXPECT_EQ(document.text(), QString::fromUtf16(c.after));
    const TextDocument fresh(document.text());
    ASSERT_EQ(document.lineCount(), fresh.lineCount());
    for (qsizetype line = 0; line < fresh.lineCount(); ++line)
        EXPECT_EQ(document.lineText(line), fresh.lineText(line)) << "line " << line;
}

INSTANTIATE_TEST_SUITE_P(
    Lsp, DocumentChange,
    ::testing::Values(
        Change{"InsertInLine", u"ab\ncd", {1, 1}, {1, 1}, u"X", u"ab\ncXd"},
        Change{"JoinLines", u"ab\ncd\nef", {0, 2}, {1, 0}, u"", u"abcd\nef"},
        Change{"SplitCrlfLine", u"ab\r\ncd\r\n", {1, 1}, {1, 1}, u"\r\n", u"ab\r\nc\r\nd\r\n"},
        Change{"PastLineEndStopsBeforeCrlf", u"ab\r\ncd", {0, 40}, {0, 40}, u"X", u"abX\r\ncd"},
        Change{"PastTextEnd", u"ab\ncd", {9, 9}, {12, 0}, u"!", u"ab\ncd!"},
        Change{"ReversedRange", u"abcdef", {0, 4}, {0, 1}, u"-", u"a-ef"},
        Change{"NegativePosition", u"abc", {-3, -1}, {0, 1}, u"", u"bc"},
        Change{"LoneCrMeetsLf", u"a\r\nb", {0, 1}, {0, 1}, u"\r", u"a\r\r\nb"},
        Change{"RemoveLfAfterCr", u"a\r\nb", {0, 1}, {1, 0}, u"\r", u"a\rb"},
        Change{"SurrogatePair", u"\U0001F600x\ny", {0, 2}, {0, 3}, u"\u00e9", u"\U0001F600\u00e9\ny"},
        Change{"EverythingAway", u"a\nb\nc\n", {0, 0}, {3, 0}, u"", u""}),
    [](const ::testing::TestParamInfo<Change>& info) { return std::string(info.param.name); });

// The framing reader cut at every byte gives the same messages as whole.
TEST(LspMessageReader, SameMessagesInPiecesOfAnySize) {
    const QByteArray input = "Content-Length: 2\r\n\r\n{}garbage\r\n\r\nContent-Length: 7\r\n\r\n[1,2,3]"
                             "Content-Type: x\r\ncontent-length:4\r\n\r\n\"\u00e9\"";
    QList<lsp::ReaderEvent> whole;
    lsp::MessageReader().feed(input.constData(), input.size(), whole);
    ASSERT_EQ(whole.size(), 4);
    EXPECT_EQ(whole[1].kind, lsp::ReaderEvent::Kind::BadHeader);
    EXPECT_EQ(whole[3].body, QByteArray("\"\u00e9\""));
    for (qsizetype piece = 1; piece < input.size(); ++piece) {
        lsp::MessageReader reader;
        QList<lsp::ReaderEvent> events;
        for (qsizetype at = 0; at < input.size(); at += piece)
            reader.feed(input.constData() + at, qMin(piece, input.size() - at), events);
        ASSERT_EQ(events.size(), whole.size()) << "pieces of " << piece;
        for (qsizetype i = 0; i < events.size(); ++i)
            EXPECT_EQ(events[i].body, whole[i].body);
        EXPECT_FALSE(reader.midMessage());
    }
}

} // namespace
