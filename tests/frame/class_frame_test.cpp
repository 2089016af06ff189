// The class frame: shared instances, binding by name, checked casts, the trace and
// the failure report.
#include "frame/failure_report.h"
#include "frame/global.h"
#include "frame/klvr_application.h"
#include "frame/runtime.h"

#include "support/test_environment.h"

#include <QCoreApplication>
#include <QTest>
#include <QThread>
#include <atomic>
#include <gtest/gtest.h>

class sample : public QObject {
    Q_OBJECT
    KLVR_CLASS_FRAME(sample)
public:
    sample() { ++constructed; }
    ~sample() override { klvr_frame::forget<sample>(this); }
    void KLVR_AwakeFromNib() { ++awakened; }
    Q_INVOKABLE void bound() {}
    Q_INVOKABLE void failing(const Value&) {
        KLVR_TRACE("Failing");
        KLVR_STEP("Failing");
        KLVR__GLOBAL(this); // a sample is no Global
    }
    static inline std::atomic<int> constructed{0};
    int awakened = 0;
};
KLVR_DEFINE_CLASS_HELPERS(sample, SAMPLE)

class derivedsample : public sample {
    Q_OBJECT
};

TEST(ClassFrame, SharedInstanceIsCreatedOnceEvenFromTwoThreads) {
    sample::constructed = 0;
    std::atomic<sample*> first{nullptr}, second{nullptr};
    std::unique_ptr<QThread> a(QThread::create([&] { first = sample::sharedsample(); }));
    std::unique_ptr<QThread> b(QThread::create([&] { second = sample::sharedsample(); }));
    a->start();
    b->start();
    a->wait();
    b->wait();
    EXPECT_EQ(first.load(), second.load());
    EXPECT_EQ(sample::constructed.load(), 1);
    EXPECT_EQ(sample::sharedsample(), first.load());
    delete first.load();
}

TEST(ClassFrame, AnInstanceLoadedWithAnInterfaceBecomesTheSharedOneAndRunsItsEvent) {
    sample loaded;
    loaded.awakeFromNib();
    EXPECT_EQ(loaded.awakened, 1);
    EXPECT_EQ(sample::sharedsample(), &loaded);
    sample later;
    later.awakeFromNib(); // a later instance is never registered
    EXPECT_EQ(sample::sharedsample(), &loaded);
    EXPECT_EQ(later.awakened, 1);
}

TEST(ClassFrame, ConstructorHelperBindsByNameOnlyWhenTheOwnerHasTheOperation) {
    sample owner;
    std::unique_ptr<sample> bound(KLVR_SAMPLE_INIT(&owner, "bound"));
    EXPECT_EQ(bound->klvrBinding.target, &owner);
    EXPECT_EQ(bound->klvrBinding.action, QStringLiteral("bound"));
    std::unique_ptr<sample> unbound(KLVR_SAMPLE_INIT(&owner, "myparser"));
    EXPECT_TRUE(unbound->klvrBinding.target.isNull());
}

TEST(ClassFrame, CheckedCastsPassMatchesAndNilAndRaiseOtherwise) {
    sample s;
    derivedsample d;
    EXPECT_EQ(KLVR__SAMPLE(&s), &s);
    EXPECT_EQ(KLVR__SAMPLE(&d), &d); // a derived class passes
    EXPECT_EQ(KLVR__GLOBAL(nullptr), nullptr);
    try {
        KLVR__GLOBAL(&s);
        ADD_FAILURE() << "the cast did not raise";
    } catch (const KLException& e) {
        EXPECT_EQ(e.name(), QStringLiteral("KLCastException"));
        EXPECT_EQ(e.reason(), QStringLiteral("'Global' expected"));
        EXPECT_TRUE(e.information().contains(QStringLiteral("sample")));
        EXPECT_FALSE(e.callStack().isEmpty());
    }
}

TEST(FailureReport, AFailureInAnEventOrOnAThreadIsShownOnTheMainThreadAndTheApplicationGoesOn) {
    KelvaroTestEnvironment::instance().reset();
    sample s;
    // Delivered through the event loop as a platform event would be.
    QMetaObject::invokeMethod(&s, "failing", Qt::QueuedConnection, Q_ARG(Value, Value()));
    QCoreApplication::processEvents();
    auto shown = testPanels().messages();
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_EQ(shown[0].title, QStringLiteral("Exception KLCastException"));
    const QString& text = shown[0].text;
    EXPECT_TRUE(text.startsWith(QStringLiteral("'Global' expected\n\n<sample")));
    EXPECT_TRUE(text.contains(QStringLiteral("\n\nException in\n file 'class_frame_test.cpp'\n at 'Failing'\n line '")));
    EXPECT_TRUE(text.contains(QStringLiteral("'\n\ncallStackSymbols:\n")));
    // The event loop still runs: a later event is delivered normally.
    bool delivered = false;
    QMetaObject::invokeMethod(&s, [&] { delivered = true; }, Qt::QueuedConnection);
    QCoreApplication::processEvents();
    EXPECT_TRUE(delivered);

    // A failure on a background thread ends the thread and is reported on the main thread.
    KelvaroTestEnvironment::instance().reset();
    KLThreadRef thread = KLVR_NSTHREAD_INIT(&s, "failing");
    KLVR_NSTHREAD_START(thread);
    thread->wait(5000);
    EXPECT_FALSE(KLVR_NSTHREAD_ISEXECUTING(thread));
    QCoreApplication::processEvents();
    shown = testPanels().messages();
    ASSERT_EQ(shown.size(), 1u) << "after the thread's failure";
    EXPECT_EQ(shown[0].title, QStringLiteral("Exception KLCastException"));
}

TEST(FailureReport, TextIsReasonInformationThenReport) {
    KLVRS("Global.NSObject.klvr", "Build2", "12", "1");
    EXPECT_EQ(KlvRF(), QStringLiteral("Global.NSObject.klvr"));
    EXPECT_EQ(KlvRS(), QStringLiteral("Build2"));
    EXPECT_EQ(KlvRL(), QStringLiteral("12"));
    FailureReport plain = buildFailureReport(KLException("NSRangeException", "index 3 beyond bounds"));
    EXPECT_EQ(plain.title, QStringLiteral("Exception NSRangeException"));
    EXPECT_TRUE(plain.text.startsWith(
        QStringLiteral("index 3 beyond bounds\n\nException in\n file 'Global.NSObject.klvr'\n at 'Build2'\n line '12'\n\ncallStackSymbols:\n")));
    EXPECT_EQ(plain.logEntry, plain.text.mid(QStringLiteral("index 3 beyond bounds").size()));
}

#include "class_frame_test.moc"
