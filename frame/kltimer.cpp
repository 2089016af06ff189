#include "frame/kltimer.h"

#include "frame/mainthread.h"

#include <QCoreApplication>
#include <QThread>

KLTimer::KLTimer(QObject* owner, const QString& name) : owner_(owner), name_(name) {
    timer_.setSingleShot(true);
    timer_.setTimerType(Qt::PreciseTimer);
    connect(&timer_, &QTimer::timeout, this, &KLTimer::fire);
}

void KLTimer::start(double seconds) {
    int ms = int(qMax(0.0, seconds) * 1000);
    if (QThread::currentThread() == thread())
        timer_.start(ms);
    else
        QMetaObject::invokeMethod(this, [this, ms] { timer_.start(ms); }, Qt::QueuedConnection);
}

void KLTimer::stop() {
    if (QThread::currentThread() == thread())
        timer_.stop();
    else
        QMetaObject::invokeMethod(this, [this] { timer_.stop(); }, Qt::QueuedConnection);
}

void KLTimer::fire() { klvrInvoke(owner_, name_, Value(this), Qt::DirectConnection); }

static KLTimerRef makeTimer(QObject* owner, const QString& name) {
    auto* timer = new KLTimer(owner, name);
    if (QCoreApplication* app = QCoreApplication::instance(); app && QThread::currentThread() != app->thread())
        timer->moveToThread(app->thread());
    // A released timer may be the one whose timeout is running: stop it and let the
    // event loop delete it.
    return KLTimerRef(timer, [](KLTimer* t) {
        t->stop();
        t->deleteLater();
    });
}

KLTimerRef KLVR_NSTIMER_INIT(QObject* owner, const QString& name) { return makeTimer(owner, name); }

KLTimerRef KLVR_NSTIMER_INIT(QObject* owner, const QString& name, double seconds) {
    KLTimerRef timer = makeTimer(owner, name);
    timer->start(seconds);
    return timer;
}

void KLVR_NSTIMER_STOP(const KLTimerRef& timer) {
    if (timer)
        timer->stop();
}
