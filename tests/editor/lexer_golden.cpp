// The colouring: the rules of one line, and the golden check that colouring a whole
// text at once gives exactly what colouring it line by line, or while typing it, gives.
#include "editor_test_texts.h"

#include "editor/kelvaro_lexer.h"
#include "editor/kelvaro_styler.h"

#include <QCoreApplication>
#include <gtest/gtest.h>

using namespace kelvaro_style;
using namespace editor_test;

namespace {

// One letter per byte: d default, c comment, s string, n number, k keyword, t type, f function.
QString styleString(const QByteArray& line) {
    KelvaroWordLists words;
    words.setKeywords(keywords());
    words.setTypes(types());
    words.setCommands(commands());
    QByteArray styles(line.size(), '\0');
    styleKelvaroLine(line.constData(), int(line.size()), words, styles.data());
    static const char letters[] = "dcsnktf";
    QString out;
    for (char s : styles)
        out += QLatin1Char(letters[int(s)]);
    return out;
}

QByteArray stylesOf(KLTextView& view) {
    const long length = view.SendScintilla(QsciScintilla::SCI_GETLENGTH);
    QByteArray styles(length, '\0');
    for (long i = 0; i < length; ++i)
        styles.data()[i] = char(view.SendScintilla(QsciScintilla::SCI_GETSTYLEAT, i));
    return styles;
}

struct LineCase {
    const char* line;
    const char* styles;
};

} // namespace

TEST(LexerRules, OneLineTable) {
    const LineCase cases[] = {
        {"Dim x As Integer", "kkkdddkkdttttttt"},
        {"dim X as INTEGER", "kkkdddkkdttttttt"},               // the language ignores case
        {"s = \"a\"\"b\" ' c", "ddddssssssdccc"},                  // "" inside a string
        {"x = \"it's\" 'x", "ddddssssssdcc"},                      // a quote in a string is no comment
        {"MsgBox(Len(s))", "ffffffdfffdddd"},
        {"n = 12 + &hFF + 1.5", "ddddnndddnnnndddnnn"},
        {"a.Dim = 1", "ddddddddn"},                              // a member is never a keyword
        {"  Rem note", "ddcccccccc"},
        {"Remark = 1", "dddddddddn"},
        {"\"open", "sssss"},                                     // an unclosed string ends with its line
        {"x1 As id\r\n", "dddkkdttdd"},
    };
    for (const LineCase& c : cases)
        EXPECT_EQ(styleString(c.line).toStdString(), std::string(c.styles)) << c.line;
}

TEST(LexerRules, NonAsciiWordsAreWholeWordsAndMatchIgnoringCase) {
    KelvaroWordLists words;
    words.setTypes({QStringLiteral("Größe")});
    const QByteArray line = QStringLiteral("GRÖSSE größe Größer").toUtf8();
    QByteArray styles(line.size(), '\0');
    styleKelvaroLine(line.constData(), int(line.size()), words, styles.data());
    // "GRÖSSE" is not the lower case of "größe"; "größe" is; "Größer" is another word.
    const qsizetype second = line.indexOf("größe");
    EXPECT_EQ(styles[0], Default);
    EXPECT_EQ(styles[second], Type);
    EXPECT_EQ(styles[second + QByteArray("größe").size() - 1], Type);
    EXPECT_EQ(styles[line.size() - 1], Default);
}

// Whole text at once == each line on its own, in reverse order == typed chunk by chunk.
TEST(LexerGolden, WholeTextEqualsLineByLineAndTyped) {
    for (const QString& text : realisticTexts()) {
        const QByteArray bytes = text.toUtf8();

        KLTextView whole;
        setWordLists(whole);
        editor_test::setBytes(whole, bytes);
        whole.lexer()->styleText(0, int(bytes.size()));

        KLTextView lineByLine;
        setWordLists(lineByLine);
        editor_test::setBytes(lineByLine, bytes);
        const long lines = lineByLine.SendScintilla(QsciScintilla::SCI_GETLINECOUNT);
        for (long l = lines - 1; l >= 0; --l) {
            const long start = lineByLine.SendScintilla(QsciScintilla::SCI_POSITIONFROMLINE, l);
            const long end = lineByLine.SendScintilla(QsciScintilla::SCI_GETLINEENDPOSITION, l);
            lineByLine.lexer()->styleText(int(start), int(end));
        }

        // Typed: chunks of 7 bytes (cutting lines, words and strings apart) appended,
        // with Scintilla asking for the styling after each like a repaint does.
        KLTextView typed;
        setWordLists(typed);
        for (qsizetype at = 0; at < bytes.size(); at += 7) {
            QByteArray chunk = bytes.mid(at, 7);
            // Never split a UTF-8 sequence: extend the chunk to a character boundary.
            while (at + chunk.size() < bytes.size() && (uchar(bytes[at + chunk.size()]) & 0xC0) == 0x80)
                chunk += bytes[at + chunk.size()];
            typed.SendScintilla(QsciScintilla::SCI_APPENDTEXT, static_cast<unsigned long>(chunk.size()),
                                chunk.constData());
            typed.SendScintilla(QsciScintilla::SCI_COLOURISE, 0, -1);
            at += chunk.size() - 7;
        }
        ASSERT_EQ(typed.documentBytes(), bytes);

        const QByteArray expected = stylesOf(whole);
        EXPECT_EQ(stylesOf(lineByLine), expected) << text.toStdString();
        EXPECT_EQ(stylesOf(typed), expected) << text.toStdString();
        // And the text is really coloured (not everything default).
        EXPECT_GT(expected.count(char(Keyword)), 0);
    }
}

TEST(LexerGolden, WordListChangeRecoloursVisibleLinesOnlyAndTheRestOnScroll) {
    KLTextView view;
    view.resize(600, 400);
    view.show();
    setWordLists(view);
    const QByteArray big = generatedText(100000);
    editor_test::setBytes(view, big);
    QCoreApplication::processEvents();
    view.repaint();
    const long firstLength = view.SendScintilla(QsciScintilla::SCI_GETLENGTH);
    ASSERT_GT(firstLength, 3000000);
    // Only what is in view has been coloured.
    EXPECT_LT(view.lexer()->styledBytes(), 20000);

    // "Method" becomes a type: the visible lines show it at once...
    view.setTypes(types() + QStringList{"Method0"});
    const qint64 before = view.lexer()->styledBytes();
    view.performSyntaxHighlighting();
    view.repaint();
    const long method0 = long(big.indexOf("Method0"));
    EXPECT_EQ(view.SendScintilla(QsciScintilla::SCI_GETSTYLEAT, method0), Type);
    EXPECT_LT(view.lexer()->styledBytes() - before, 20000) << "a re-colour must not colour the whole text";

    // ...and a line far below, once scrolled into view, is coloured with the new list.
    view.setTypes(types() + QStringList{"Method99980"});
    const long far = long(big.indexOf("Method99980"));
    view.gotoLine(view.SendScintilla(QsciScintilla::SCI_LINEFROMPOSITION, far) + 1);
    view.repaint();
    QCoreApplication::processEvents();
    EXPECT_EQ(view.SendScintilla(QsciScintilla::SCI_GETSTYLEAT, far), Type);
    // Scrolling back up re-colours the top again with the newest lists.
    view.gotoLine(1);
    view.repaint();
    QCoreApplication::processEvents();
    EXPECT_EQ(view.SendScintilla(QsciScintilla::SCI_GETSTYLEAT, method0), Default);
}
