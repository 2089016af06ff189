// Live diagnostics: the checker over a document's unsaved text with the project's other
// files from disk, and its marks in the real editor view after the typing pause.
#include "insight/live_check.h"
#include "insight/live_diagnostics.h"
#include "support/ide_fixture.h"

#include <QHelpEvent>
#include <QSemaphore>
#include <QSignalSpy>
#include <QTest>
#include <QToolTip>
#include <ctime>

namespace {
const QByteArray globalText = "\nPublic Dim total As Integer\n\nEvent AwakeFromNib()\nEnd Event\n";
const QByteArray cleanB = "\nSub Add()\n  total = total + 1\nEnd Sub\n";

qint64 threadCpuMicroseconds() {
    timespec ts{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &ts);
    return qint64(ts.tv_sec) * 1'000'000 + ts.tv_nsec / 1000;
}

struct EngineCase {
    const char* name;
    QByteArray text;    // of b.NSView.klvr, not saved
    bool brokenOther;   // the project also holds a file that cannot be read
    int line;           // 0: no error
    const char* message;
};
} // namespace

class LiveDiagnosticsEngine : public IdeFixture, public ::testing::WithParamInterface<EngineCase> {};

TEST_P(LiveDiagnosticsEngine, ChecksTheTextAgainstTheSavedProject) {
    const EngineCase& c = GetParam();
    // The saved b differs from the text checked: only the text counts.
    const QString folder = makeProject(QStringLiteral("Projekt é -x"), {{"Global.NSObject.klvr", globalText},
                                                                       {"b.NSView.klvr", "\nWend\n"}});
    if (c.brokenOther) {
        QFile big(folder + "/Huge.NSObject.klvr"); // over the checker's size limit, and unreadable
        ASSERT_TRUE(big.open(QIODevice::WriteOnly));
        ASSERT_TRUE(big.resize(17 * 1024 * 1024));
        big.close();
        QFile::setPermissions(big.fileName(), QFileDevice::Permissions());
    }
    const QList<LiveDiagnostic> found = LiveDiagnostics().check(folder, "b.NSView.klvr", QString::fromUtf8(c.text));
    if (c.line == 0) {
        EXPECT_TRUE(found.isEmpty()) << found.value(0).message.toStdString();
    } else {
        ASSERT_EQ(found.size(), 1);
        EXPECT_EQ(found[0].line, c.line);
        EXPECT_EQ(found[0].message, QString::fromUtf8(c.message));
    }
}

INSTANTIATE_TEST_SUITE_P(
    Cases, LiveDiagnosticsEngine,
    ::testing::Values(EngineCase{"CleanUsesGlobalsPublicFromDisk", cleanB, false, 0, ""},
                      EngineCase{"UnknownName", "\nSub Add()\n  totl = 1\nEnd Sub\n", false, 3, "Unknown identifier totl"},
                      EngineCase{"StrayNextWithNonAscii", "\n' café\nSub A()\n  Next\nEnd Sub\n", false, 4, "Next without For"},
                      EngineCase{"UnreadableOtherFile", "\nSub A()\n  Loop\nEnd Sub\n", true, 3, "Loop without Do"},
                      EngineCase{"EmptyText", "", true, 0, ""}),
    [](const auto& info) { return std::string(info.param.name); });

class LiveDiagnosticsInEditor : public IdeFixture {
protected:
    KLTextView* openB(Global& g) {
        folder = makeProject("Live", {{"Global.NSObject.klvr", globalText},
                                      {"b.NSView.klvr", cleanB},
                                      {"Huge.NSObject.klvr", QByteArray(17 * 1024 * 1024, ' ')}});
        g.ProjectOpen(folder);
        g.ProjectOpenCode(folder + "/b.NSView.klvr");
        KLTextView* view = g.mytextview();
        view->setFocus();
        return view;
    }
    // Types a new line (indented like the one before) after a 1-based line.
    static void typeLineAfter(KLTextView* view, long line, const QString& keys) {
        view->SendScintilla(QsciScintilla::SCI_GOTOPOS, view->SendScintilla(QsciScintilla::SCI_GETLINEENDPOSITION, line - 1));
        QTest::keyClick(view, Qt::Key_Return);
        QTest::keyClicks(view, keys);
    }
    // The pause in typing, and the check's answer.
    static bool pauseAndAnswer(Global& g, QSignalSpy& checked) {
        const int before = checked.count();
        g.tTextDidChangeFired();
        return QTest::qWaitFor([&] { return checked.count() > before; }, 10000);
    }
    QString folder;
};

TEST_F(LiveDiagnosticsInEditor, AnErrorIsMarkedOnItsLineAndClearedWhenFixed) {
    Global& g = start();
    KLTextView* view = openB(g);
    QSignalSpy checked(g.liveCheck(), &LiveCheck::checked);
    typeLineAfter(view, 3, "Wend");
    const QString typed = view->documentText();
    ASSERT_TRUE(pauseAndAnswer(g, checked));
    EXPECT_TRUE(checked.last().at(1).toBool());
    EXPECT_EQ(view->diagnosticLines(), QList<qint64>{4});
    EXPECT_EQ(view->diagnosticAt(4), QStringLiteral("Wend without While"));
    EXPECT_EQ(view->documentText(), typed) << "marking changed the text";
    // The cursor is on the line: the status line says why.
    EXPECT_TRUE(QTest::qWaitFor([&] { return g.mycode->statusbar->text() == " Wend without While"; }, 2000))
        << g.mycode->statusbar->text().toStdString();
    // The line's tooltip.
    const long at = view->SendScintilla(QsciScintilla::SCI_POSITIONFROMLINE, 3L) + 3;
    const QPoint point(int(view->SendScintilla(QsciScintilla::SCI_POINTXFROMPOSITION, 0UL, at)),
                       int(view->SendScintilla(QsciScintilla::SCI_POINTYFROMPOSITION, 0UL, at)) + 2);
    QHelpEvent help(QEvent::ToolTip, point, view->viewport()->mapToGlobal(point));
    QCoreApplication::sendEvent(view->viewport(), &help);
    EXPECT_EQ(QToolTip::text(), QStringLiteral("Wend without While"));
    // Moving off the line clears the status line; undoing the typing fixes the error.
    view->SendScintilla(QsciScintilla::SCI_GOTOLINE, 1L);
    EXPECT_TRUE(QTest::qWaitFor([&] { return g.mycode->statusbar->text() == QStringLiteral(" "); }, 2000))
        << g.mycode->statusbar->text().toStdString();
    while (view->documentText() != QString::fromUtf8(cleanB) && view->isUndoAvailable())
        view->undo();
    ASSERT_EQ(view->documentText(), QString::fromUtf8(cleanB));
    ASSERT_TRUE(pauseAndAnswer(g, checked));
    EXPECT_TRUE(view->diagnosticLines().isEmpty());
    EXPECT_TRUE(view->diagnosticAt(4).isEmpty());
}

TEST_F(LiveDiagnosticsInEditor, TypingGoesOnDuringACheckAndItsStaleAnswerIsDropped) {
    Global& g = start();
    KLTextView* view = openB(g);
    QSignalSpy checked(g.liveCheck(), &LiveCheck::checked);
    QSemaphore gate;
    g.liveCheck()->setGate([&] { gate.tryAcquire(1, 5000); });
    typeLineAfter(view, 3, "Wend");
    const qint64 requestStart = threadCpuMicroseconds();
    QElapsedTimer wall;
    wall.start();
    g.tTextDidChangeFired(); // the check starts and waits at the gate
    const qint64 pauseCpu = threadCpuMicroseconds() - requestStart;
    EXPECT_LT(wall.elapsed(), 1000) << "the pause waited for the check";
    EXPECT_TRUE(g.liveCheck()->busy());
    qint64 longestKey = 0;
    for (const char key : QByteArray(" ' still typing")) {
        const qint64 start = threadCpuMicroseconds();
        QTest::keyClick(view, key);
        QCoreApplication::processEvents();
        longestKey = std::max(longestKey, threadCpuMicroseconds() - start);
    }
    std::printf("live check: pause pass %lld us of interface-thread CPU, longest keystroke during the check %lld us\n",
                static_cast<long long>(pauseCpu), static_cast<long long>(longestKey));
    EXPECT_TRUE(g.liveCheck()->busy()) << "the check ended before the typing";
    EXPECT_LT(longestKey, 16000);
    gate.release();
    ASSERT_TRUE(QTest::qWaitFor([&] { return !checked.isEmpty(); }, 10000));
    EXPECT_FALSE(checked.last().at(1).toBool()) << "an answer for an older text was applied";
    EXPECT_TRUE(view->diagnosticLines().isEmpty());
    // The next pause checks the current text.
    gate.release();
    ASSERT_TRUE(pauseAndAnswer(g, checked));
    EXPECT_TRUE(checked.last().at(1).toBool());
    EXPECT_EQ(view->diagnosticLines(), QList<qint64>{4});
}
