// Typing into one very long line through the whole IDE (editor view, Global's
// notifications, completion, the pause pass): each keystroke must return to the event
// loop within a frame however long the line is, and the line keeps every byte.
#include "support/ide_fixture.h"

#include <QTest>
#include <algorithm>
#include <ctime>

namespace {
qint64 threadCpuMicroseconds() {
    timespec ts{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &ts);
    return qint64(ts.tv_sec) * 1'000'000 + ts.tv_nsec / 1000;
}

// One statement repeated to `length` bytes on a single line: words, numbers, strings
// and operators, so that the line has many runs of colour.
QByteArray longLine(int length) {
    const QByteArray unit = "x = x + Len(\"ab\") * 42 ";
    QByteArray line;
    line.reserve(length + unit.size());
    while (line.size() < length)
        line += unit;
    line.truncate(length);
    return line;
}

struct LongLineCase {
    const char* name;
    int length;
};

// The longest a keystroke may keep the interface thread busy: one frame.
constexpr qint64 FrameMicroseconds = 16'000;
} // namespace

class LongLineTyping : public IdeFixture, public ::testing::WithParamInterface<LongLineCase> {};

TEST_P(LongLineTyping, KeystrokesOnTheLineNeverStallTheEventLoop) {
    const int length = GetParam().length;
    Global& g = start();
    const QByteArray head = "Sub Main()\n  ";
    const QByteArray tail = "\nEnd Sub\n";
    const QByteArray line = longLine(length);
    const QString p = makeProject("Long", {{"Global.NSObject.klvr", head + line + tail}});
    g.ProjectOpen(p);
    KLTextView* view = g.mytextview();
    ASSERT_EQ(view->length(), head.size() + line.size() + tail.size());
    view->setFocus();
    // The middle of the line, scrolled into view as a user would get there.
    view->SendScintilla(QsciScintilla::SCI_GOTOPOS, long(head.size() + line.size() / 2));
    QCoreApplication::processEvents();

    std::vector<qint64> cpu;
    QElapsedTimer clock;
    std::vector<qint64> wall;
    const QString typed = QStringLiteral("Dim a As Integer ' typed ");
    for (int i = 0; i < 60; ++i) {
        const qint64 start = threadCpuMicroseconds();
        clock.start();
        QTest::keyClick(view, typed.at(i % typed.size()).toLatin1());
        QCoreApplication::processEvents();
        cpu.push_back(threadCpuMicroseconds() - start);
        wall.push_back(clock.nsecsElapsed() / 1000);
        if (i == 30) {
            // A pause in typing: the re-colouring and automatic save pass.
            const qint64 passStart = threadCpuMicroseconds();
            g.tTextDidChangeFired();
            QCoreApplication::processEvents();
            cpu.push_back(threadCpuMicroseconds() - passStart);
        }
    }
    std::sort(cpu.begin(), cpu.end());
    std::sort(wall.begin(), wall.end());
    std::printf("long line of %d characters: %zu events, interface-thread CPU median %lld us, longest %lld us;"
                " wall median %lld us, longest %lld us\n",
                length, cpu.size(), static_cast<long long>(cpu[cpu.size() / 2]), static_cast<long long>(cpu.back()),
                static_cast<long long>(wall[wall.size() / 2]), static_cast<long long>(wall.back()));
    EXPECT_LT(cpu.back(), FrameMicroseconds) << "a keystroke on the long line blocked the event loop";
    const QString expected = QString::fromLatin1(head + line.left(line.size() / 2)) +
                             typed.repeated(3).left(60) + QString::fromLatin1(line.mid(line.size() / 2) + tail);
    const QString text = view->documentText();
    qsizetype differ = 0;
    while (differ < qMin(text.size(), expected.size()) && text[differ] == expected[differ])
        ++differ;
    EXPECT_TRUE(text == expected) << "the long line lost or changed text at " << differ << ": "
                                  << text.mid(differ - 10, 40).toStdString();

    // Selecting everything and typing over it is one keystroke too.
    QTest::keyClick(view, Qt::Key_A, Qt::ControlModifier);
    QCoreApplication::processEvents();
    const qint64 start = threadCpuMicroseconds();
    QTest::keyClick(view, 'z');
    QCoreApplication::processEvents();
    EXPECT_LT(threadCpuMicroseconds() - start, FrameMicroseconds) << "typing over the selected long line";
    EXPECT_EQ(view->documentText(), QStringLiteral("z"));
}

INSTANTIATE_TEST_SUITE_P(Lengths, LongLineTyping,
                         ::testing::Values(LongLineCase{"FiftyThousand", 50'000},
                                           LongLineCase{"TwoMillion", 2'000'000}),
                         [](const auto& info) { return std::string(info.param.name); });
