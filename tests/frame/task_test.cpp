// Child processes: every byte delivered in order, waits that never deadlock, stopping,
// and command lines that never reach a shell.
#include "frame/runtime.h"

#include "support/test_environment.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>
#include <atomic>
#include <thread>
#include <gtest/gtest.h>

// Receives output as Global does: each chunk is handed to the main thread, waiting.
class outputowner : public QObject {
    Q_OBJECT
public:
    QByteArray out, err;
    std::atomic<int> chunks{0};
    bool allOnMainThread = true;
    Q_INVOKABLE void go_stdout(const Value& chunk) {
        KLVR_NSOBJECT_PERFORMSELECTORONMAINTHREAD(this, "appendOut", chunk, true);
    }
    Q_INVOKABLE void go_stderr(const Value& chunk) {
        KLVR_NSOBJECT_PERFORMSELECTORONMAINTHREAD(this, "appendErr", chunk, true);
    }
    Q_INVOKABLE void appendOut(const Value& chunk) {
        allOnMainThread = allOnMainThread && klvrIsMainThread();
        out += chunk.rawBytes();
        ++chunks;
    }
    Q_INVOKABLE void appendErr(const Value& chunk) {
        allOnMainThread = allOnMainThread && klvrIsMainThread();
        err += chunk.rawBytes();
        ++chunks;
    }
};

static bool followsPattern(const QByteArray& bytes, char base) {
    for (qsizetype i = 0; i < bytes.size(); ++i)
        if (bytes[i] != char(base + i % 23))
            return false;
    return true;
}

enum class Waiting { OnTheMainThread, DetachedThenLater, OnABackgroundThread };
struct DeliveryCase {
    const char* name;
    Waiting waiting;
    int out, err;  // bytes the child writes to each stream
};
class Delivery : public ::testing::TestWithParam<DeliveryCase> {};

TEST_P(Delivery, EveryByteArrivesInOrderOnTheMainThreadBeforeTheWaitReturns) {
    const DeliveryCase& c = GetParam();
    outputowner owner;
    std::unique_ptr<KLTask> go(KLVR_KLTASK_INIT(&owner, "go"));
    go->waitUntilEnded(); // never started: returns at once
    KLVR_KLTASK_PATH(go.get(), KELVARO_CHILD_WRITER);
    KLVR_KLTASK_ARGUMENTS(go.get(), {QString::number(c.out), QString::number(c.err)});
    QElapsedTimer clock;
    clock.start();
    qsizetype outAfterWait = -1; // flags and data set by the handlers are complete right after the wait
    if (c.waiting == Waiting::OnTheMainThread) {
        KLVR_KLTASK_STARTANDWAIT(go.get(), false);
        outAfterWait = owner.out.size();
    } else if (c.waiting == Waiting::DetachedThenLater) {
        KLVR_KLTASK_STARTANDWAIT(go.get(), true);
        // The main thread is busy elsewhere while the child writes; its output handlers
        // wait for the main thread meanwhile.
        QThread::msleep(200);
        go->waitUntilEnded();
        outAfterWait = owner.out.size();
    } else {
        std::atomic<bool> done{false};
        std::unique_ptr<QThread> builder(QThread::create([&] {
            KLVR_KLTASK_STARTANDWAIT(go.get(), false);
            outAfterWait = owner.out.size();
            done = true;
        }));
        builder->start();
        EXPECT_TRUE(QTest::qWaitFor([&] { return done.load(); }, 20000));
        builder->wait();
    }
    EXPECT_EQ(outAfterWait, c.out);
    EXPECT_EQ(owner.err.size(), c.err);
    EXPECT_TRUE(followsPattern(owner.out, 'a'));
    EXPECT_TRUE(followsPattern(owner.err, 'A'));
    EXPECT_TRUE(owner.allOnMainThread);
    EXPECT_FALSE(KLVR_KLTASK_ISRUNNING(go.get()));
    go->waitUntilEnded(); // already ended: returns at once
    EXPECT_EQ(go->exitStatus(), 0);
    EXPECT_LT(clock.elapsed(), 20000);
}
INSTANTIATE_TEST_SUITE_P(Table, Delivery,
                         ::testing::Values(DeliveryCase{"WaitOnTheMainThread", Waiting::OnTheMainThread, 20000000, 1000000},
                                           DeliveryCase{"DetachedWaitedForLater", Waiting::DetachedThenLater, 3000000, 100000},
                                           DeliveryCase{"WaitOnABackgroundThread", Waiting::OnABackgroundThread, 3000000, 50000}),
                         [](const auto& info) { return std::string(info.param.name); });

TEST(Tasks, DetachedRunKeepsTheInterfaceResponsiveAndCanBeStopped) {
    outputowner owner;
    std::unique_ptr<KLTask> go(KLVR_KLTASK_INIT(&owner, "go"));
    KLVR_KLTASK_PATH(go.get(), KELVARO_CHILD_WRITER);
    KLVR_KLTASK_ARGUMENTS(go.get(), {"--sleep", "60"});
    QElapsedTimer clock;
    clock.start();
    KLVR_KLTASK_STARTANDWAIT(go.get(), true);
    EXPECT_LT(clock.elapsed(), 2000);
    EXPECT_TRUE(KLVR_KLTASK_ISRUNNING(go.get()));
    bool timerRan = false;
    QTimer::singleShot(10, [&] { timerRan = true; });
    EXPECT_TRUE(QTest::qWaitFor([&] { return timerRan; }, 2000));
    KLVR_KLTASK_STOP(go.get());
    EXPECT_TRUE(QTest::qWaitFor([&] { return !KLVR_KLTASK_ISRUNNING(go.get()); }, 5000));
    EXPECT_LT(clock.elapsed(), 10000);
}

TEST(Tasks, AMissingProgramEndsTheWaitAndAReleasedTaskEndsItsProcessAndItsWaiters) {
    outputowner owner;
    std::unique_ptr<KLTask> go(KLVR_KLTASK_INIT(&owner, "go"));
    KLVR_KLTASK_PATH(go.get(), "/no/such/program");
    KLVR_KLTASK_STARTANDWAIT(go.get(), false);
    EXPECT_TRUE(go->failedToStart());
    EXPECT_FALSE(KLVR_KLTASK_ISRUNNING(go.get()));

    KLVR_KLTASK_PATH(go.get(), KELVARO_CHILD_WRITER);
    KLVR_KLTASK_ARGUMENTS(go.get(), {"--exit", "3"});
    KLVR_KLTASK_STARTANDWAIT(go.get(), false);
    EXPECT_EQ(go->exitStatus(), 3);

    KLVR_KLTASK_ARGUMENTS(go.get(), {"--sleep", "60"});
    KLVR_KLTASK_STARTANDWAIT(go.get(), true);
    // The run is waited for on another thread, also after the task is gone.
    const KLTaskRun run = go->lastRun();
    std::atomic<bool> ended{false};
    std::thread waiter([&] {
        run.wait();
        ended = true;
    });
    QElapsedTimer clock;
    clock.start();
    go.reset(); // must neither block nor leave the process behind
    EXPECT_LT(clock.elapsed(), 1000);
    waiter.join();
    EXPECT_TRUE(ended);
    EXPECT_EQ(run.exitStatus(), -1);
    EXPECT_FALSE(run.failedToStart());
}

TEST(Tasks, ArgumentsArePassedAsTheyStandAndRunSplitsEscapedBlanksAndNeverStartsAShell) {
    outputowner owner;
    std::unique_ptr<KLTask> go(KLVR_KLTASK_INIT(&owner, "go"));
    KLVR_KLTASK_PATH(go.get(), KELVARO_CHILD_WRITER);
    KLVR_KLTASK_ARGUMENTS(go.get(), {"--args", "/tmp/My App", "$(touch x)", "a;b", "'q\""});
    KLVR_KLTASK_STARTANDWAIT(go.get(), false);
    EXPECT_EQ(owner.out, QByteArray("/tmp/My App\n$(touch x)\na;b\n'q\"\n"));

    QTemporaryDir dir;
    const QString trap = dir.filePath("trap");
    // Every shell construct is passed on as text to the named program.
    int status = KLVR_RUN(QStringLiteral(KELVARO_CHILD_WRITER),
                          {"--args", "$(touch\\ " + trap + ")", ";touch\\ " + trap, "`touch " + trap + "`"});
    EXPECT_EQ(status, 0);
    EXPECT_FALSE(QFileInfo::exists(trap));
    // A program whose path holds blanks and quotes runs when its blanks are escaped.
    const QString odd = dir.filePath("my 'odd\" tools");
    QDir().mkpath(odd);
    ASSERT_TRUE(QFile::copy(KELVARO_CHILD_WRITER, odd + "/writer"));
    QString escaped = odd + "/writer";
    escaped.replace(" ", "\\ ");
    EXPECT_EQ(KLVR_RUN(escaped, {"--exit", "4"}), 4);
    EXPECT_EQ(KLVR_RUN(odd + "/writer", {"--exit", "4"}), -1); // unescaped: no such program
}

#include "task_test.moc"
