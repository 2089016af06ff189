#include "frame/klthread.h"

#include "frame/failure_report.h"
#include "frame/mainthread.h"

KLThread::KLThread(QObject* owner, const QString& name) : owner_(owner), name_(name) {
    setObjectName(name);
}

void KLThread::run() {
    try {
        klvrInvoke(owner_, name_, Value(), Qt::DirectConnection);
    } catch (const KLException& failure) {
        klvrReportFailure(failure);
    } catch (const std::exception& failure) {
        klvrReportFailure(KLException(QStringLiteral("NSGenericException"), QString::fromLocal8Bit(failure.what())));
    }
}

KLThreadRef KLVR_NSTHREAD_INIT(QObject* owner, const QString& name) {
    // A released thread object that still runs deletes itself when it ends.
    return KLThreadRef(new KLThread(owner, name), [](KLThread* t) {
        if (t->isRunning()) {
            QObject::connect(t, &QThread::finished, t, &QObject::deleteLater);
            if (t->isFinished())
                t->deleteLater();
        } else {
            t->deleteLater();
        }
    });
}

void KLVR_NSTHREAD_START(const KLThreadRef& thread) {
    if (thread && !thread->isRunning())
        thread->start();
}

void KLVR_NSTHREAD_CANCEL(const KLThreadRef& thread) {
    if (thread)
        thread->cancel();
}

bool KLVR_NSTHREAD_ISCANCELLED(const KLThreadRef& thread) { return thread && thread->isCancelled(); }

bool KLVR_NSTHREAD_ISEXECUTING(const KLThreadRef& thread) { return thread && thread->isRunning(); }
