// A line of two million characters stays an ordinary line to edit: typing, deleting,
// undo, find and replace, and saving keep every other byte exactly, also with
// characters of two and four UTF-8 bytes before the place of the edit.
#include "editor_test_texts.h"

#include "editor/kelvaro_styler.h"

#include <QFile>
#include <QKeyEvent>
#include <QTemporaryDir>
#include <QTest>
#include <gtest/gtest.h>

#include <functional>

namespace {

// "Sub Main()\n  " + two million characters (words, strings, "é", an emoji, a comment
// mark half way) + "\nEnd Sub\n"; "NEEDLE" stands once, near the end of the long line.
QString longLineText() {
    const QString unit = QStringLiteral("x = Len(\"é😀\") + 42 ");
    QString line;
    line.reserve(2'000'100);
    while (line.size() < 1'000'000)
        line += unit;
    line += QStringLiteral(" ' a comment from here on ");
    while (line.size() < 1'999'000)
        line += unit;
    line += QStringLiteral("NEEDLE");
    while (line.size() < 2'000'000)
        line += QLatin1Char('z');
    return QStringLiteral("Sub Main()\n  ") + line + QStringLiteral("\nEnd Sub\n");
}

struct EditCase {
    const char* name;
    // Does the edit on the view; returns the text the view must hold afterwards.
    std::function<QString(KLTextView&, const QString&)> edit;
};

const qint64 middle = 1'000'013; // inside the long line, after a million characters

// Types text as key presses carrying the characters (also non-ASCII ones).
void type(KLTextView& view, const QString& text) {
    for (const QChar c : text) {
        QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, QString(c));
        QCoreApplication::sendEvent(&view, &press);
    }
}

} // namespace

class LongLineEditing : public ::testing::TestWithParam<EditCase> {};

TEST_P(LongLineEditing, KeepsTheTextByteExact) {
    static const QString original = longLineText();
    QTemporaryDir dir;
    const QString path = dir.filePath("Long.NSObject.klvr");
    {
        QFile f(path);
        ASSERT_TRUE(f.open(QIODevice::WriteOnly));
        f.write(original.toUtf8());
    }
    KLTextView view;
    view.resize(800, 600);
    view.show();
    editor_test::setWordLists(view);
    ASSERT_TRUE(view.load(path));
    ASSERT_EQ(view.documentText(), original);
    view.setFocus();
    QCoreApplication::processEvents();

    const QString expected = GetParam().edit(view, original);
    QCoreApplication::processEvents();
    const QString text = view.documentText();
    qsizetype at = 0;
    while (at < qMin(text.size(), expected.size()) && text[at] == expected[at])
        ++at;
    EXPECT_TRUE(text == expected) << "the text differs from what the edit should give at " << at << ": \""
                                  << text.mid(at - 8, 24).toStdString() << "\" instead of \""
                                  << expected.mid(at - 8, 24).toStdString() << "\"";
    ASSERT_TRUE(view.save(path));
    QFile f(path);
    ASSERT_TRUE(f.open(QIODevice::ReadOnly));
    EXPECT_TRUE(f.readAll() == expected.toUtf8()) << "the saved file differs";
}

INSTANTIATE_TEST_SUITE_P(
    Edits, LongLineEditing,
    ::testing::Values(
        EditCase{"TypeInTheMiddle",
                 [](KLTextView& v, const QString& text) {
                     v.selectUtf16(middle, middle);
                     type(v, "Dim é");
                     EXPECT_EQ(v.position(), middle + 5);
                     return text.left(middle) + "Dim é" + text.mid(middle);
                 }},
        EditCase{"DeleteThenUndoBoth",
                 [](KLTextView& v, const QString& text) {
                     v.selectUtf16(middle, middle);
                     type(v, "abc");
                     QTest::keyClick(&v, Qt::Key_Backspace);
                     QTest::keyClick(&v, Qt::Key_Delete);
                     while (v.isUndoAvailable())
                         v.undo();
                     return text;
                 }},
        EditCase{"FindNearTheEnd",
                 [](KLTextView& v, const QString& text) {
                     v.selectUtf16(0, 0);
                     EXPECT_TRUE(v.findNext("NEEDLE"));
                     EXPECT_EQ(v.selectionStartUtf16(), text.indexOf("NEEDLE"));
                     EXPECT_EQ(v.selectionEndUtf16(), text.indexOf("NEEDLE") + 6);
                     type(v, "pin");
                     return QString(text).replace("NEEDLE", "pin");
                 }},
        EditCase{"SelectToTheEndAndDelete",
                 [](KLTextView& v, const QString& text) {
                     v.selectUtf16(middle, middle);
                     QTest::keyClick(&v, Qt::Key_End, Qt::ShiftModifier);
                     QTest::keyClick(&v, Qt::Key_Delete);
                     return text.left(middle) + text.mid(text.indexOf(u'\n', middle));
                 }},
        EditCase{"TypeOverASelectionAcrossHiddenText",
                 [](KLTextView& v, const QString& text) {
                     v.selectUtf16(100, middle); // from inside the line's hidden part
                     type(v, "Z");
                     return text.left(100) + "Z" + text.mid(middle);
                 }},
        EditCase{"ReplaceAllThenUndo",
                 [](KLTextView& v, const QString& text) {
                     EXPECT_EQ(v.findReplaceAll("NEEDLE", "ok 😀"), 1);
                     EXPECT_EQ(v.documentText(), QString(text).replace("NEEDLE", "ok 😀"));
                     v.undo();
                     return text;
                 }},
        EditCase{"HomeEndAndTypeAtBothEnds", [](KLTextView& v, const QString& text) {
                     v.selectUtf16(middle, middle);
                     QTest::keyClick(&v, Qt::Key_End);
                     type(v, "E");
                     QTest::keyClick(&v, Qt::Key_Home);
                     type(v, "H");
                     const qint64 lineEnd = text.indexOf(u'\n', 20);
                     return text.left(13) + "H" + text.mid(13, lineEnd - 13) + "E" + text.mid(lineEnd);
                 }}),
    [](const auto& info) { return std::string(info.param.name); });

// Where only a window of a long line is coloured, it has the colours the whole line gives,
// also when the window begins inside a string or a comment.
struct WindowCase {
    const char* name;
    QByteArray before; // the long part in front of the window
    QByteArray atCursor;
};

class LongLineWindow : public ::testing::TestWithParam<WindowCase> {};

TEST_P(LongLineWindow, ColoursAsTheWholeLine) {
    const WindowCase& c = GetParam();
    const QByteArray line = "  " + c.before + c.atCursor + " Dim x As Integer = Len(\"a\"\"b\") ' end";
    const QByteArray text = "Sub A()\n" + line + "\nEnd Sub\n";
    KLTextView view;
    view.resize(800, 600);
    view.show();
    editor_test::setWordLists(view);
    view.setText(QString::fromUtf8(text));
    const long cursor = 8 + 2 + c.before.size();
    view.SendScintilla(QsciScintilla::SCI_GOTOPOS, cursor);
    QCoreApplication::processEvents();
    view.repaint();
    KelvaroWordLists words;
    words.setKeywords(editor_test::keywords());
    words.setTypes(editor_test::types());
    words.setCommands(editor_test::commands());
    std::vector<char> whole(size_t(line.size()));
    styleKelvaroLine(line.constData(), int(line.size()), words, whole.data());
    int compared = 0;
    for (long at = cursor - 200; at < cursor + 200 && at < 8 + long(line.size()); ++at, ++compared)
        ASSERT_EQ(int(view.SendScintilla(QsciScintilla::SCI_GETSTYLEAT, at)), int(whole[size_t(at - 8)]))
            << "at byte " << at - cursor << " from the cursor";
    EXPECT_GT(compared, 230); // from 200 bytes before the cursor to the end of the line
    EXPECT_EQ(int(view.SendScintilla(QsciScintilla::SCI_GETSTYLEAT, 8L + 5000)), kelvaro_style::Hidden);
}

INSTANTIATE_TEST_SUITE_P(
    Windows, LongLineWindow,
    ::testing::Values(WindowCase{"InCode", QByteArray("Dim v As Integer = Len(\"a\") ").repeated(700), " + 1"},
                      WindowCase{"InAString", "s = \"" + QByteArray(20000, 'q') + "\"\"", "still text\" + 2"},
                      WindowCase{"InAComment", "n = 1 ' \"" + QByteArray(20000, 'c'), " Dim in comment"},
                      WindowCase{"AfterRem", "Rem " + QByteArray(20000, 'r') + " \"", " all comment"}),
    [](const auto& info) { return std::string(info.param.name); });
