// Timers and threads bound by name, and hops to the main thread.
#include "frame/runtime.h"

#include "support/test_environment.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTest>
#include <QThread>
#include <atomic>
#include <gtest/gtest.h>

class timerowner : public QObject {
    Q_OBJECT
public:
    KLTimerRef tTick;
    std::atomic<int> ticks{0};
    std::atomic<int> bodies{0};
    std::atomic<bool> sawCancel{false};
    KLThreadRef thWork;
    Qt::HANDLE mainCallThread = nullptr;
    QString received;
    Q_INVOKABLE void tickTimer() {
        KLVR_NSTIMER_STOP(tTick);
        ++ticks;
    }
    Q_INVOKABLE void work() {
        ++bodies;
        QThread::msleep(50);
        sawCancel = KLVR_NSTHREAD_ISCANCELLED(thWork);
    }
    Q_INVOKABLE void onMain(const Value& v) {
        mainCallThread = QThread::currentThreadId();
        received = v.toString();
    }
};

TEST(Timers, StoppingAnIdleTimerDoesNothingAndABurstOfRestartsYieldsOneCallOneIntervalAfterTheLast) {
    timerowner owner;
    owner.tTick = KLVR_NSTIMER_INIT(&owner, "tickTimer");
    EXPECT_FALSE(owner.tTick->isActive());
    KLVR_NSTIMER_STOP(owner.tTick);
    KLVR_NSTIMER_STOP(owner.tTick);
    KLVR_NSTIMER_STOP(KLTimerRef());
    QTest::qWait(20);
    EXPECT_EQ(owner.ticks.load(), 0) << "after stopping idle timers";
    QElapsedTimer clock;
    clock.start();
    for (int i = 0; i < 5; ++i) {
        KLVR_NSTIMER_STOP(owner.tTick);
        owner.tTick = KLVR_NSTIMER_INIT(&owner, "tickTimer", 0.05);
        QTest::qWait(20);
    }
    EXPECT_EQ(owner.ticks.load(), 0); // every restart replaced a timer that had not fired
    EXPECT_TRUE(QTest::qWaitFor([&] { return owner.ticks.load() == 1; }, 2000));
    EXPECT_GE(clock.elapsed(), 4 * 20 + 50);
    QTest::qWait(100);
    EXPECT_EQ(owner.ticks.load(), 1);
}

TEST(Threads, BodyRunsOnAnotherThreadAndCancellingOnlyMarksIt) {
    timerowner owner;
    owner.thWork = KLVR_NSTHREAD_INIT(&owner, "work");
    EXPECT_FALSE(KLVR_NSTHREAD_ISEXECUTING(owner.thWork));
    KLVR_NSTHREAD_START(owner.thWork);
    EXPECT_TRUE(KLVR_NSTHREAD_ISEXECUTING(owner.thWork));
    KLVR_NSTHREAD_CANCEL(owner.thWork);
    EXPECT_TRUE(KLVR_NSTHREAD_ISCANCELLED(owner.thWork));
    owner.thWork->wait(5000);
    EXPECT_EQ(owner.bodies.load(), 1); // the body ran to its end
    EXPECT_TRUE(owner.sawCancel.load());
    EXPECT_FALSE(KLVR_NSTHREAD_ISEXECUTING(owner.thWork));
}

TEST(MainThread, PerformWithWaitRunsOnTheMainThreadBeforeReturning) {
    timerowner owner;
    std::atomic<bool> returned{false};
    QString seenAfterReturn;
    std::unique_ptr<QThread> worker(QThread::create([&] {
        KLVR_NSOBJECT_PERFORMSELECTORONMAINTHREAD(&owner, "onMain", "chunk", true);
        seenAfterReturn = owner.received;
        returned = true;
    }));
    worker->start();
    EXPECT_TRUE(QTest::qWaitFor([&] { return returned.load(); }, 5000));
    worker->wait();
    EXPECT_EQ(seenAfterReturn, QStringLiteral("chunk"));
    EXPECT_EQ(owner.mainCallThread, QThread::currentThreadId());
    // From the main thread the call is direct.
    KLVR_NSOBJECT_PERFORMSELECTORONMAINTHREAD(&owner, "onMain", "direct", false);
    EXPECT_EQ(owner.received, QStringLiteral("direct"));
    KLVR_NSOBJECT_PERFORMSELECTORDELAYED(&owner, "onMain", "later", 0.01);
    EXPECT_EQ(owner.received, QStringLiteral("direct"));
    EXPECT_TRUE(QTest::qWaitFor([&] { return owner.received == QLatin1String("later"); }, 2000));
}

#include "timers_threads_test.moc"
