#include "frame/mainthread.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QMetaMethod>
#include <QPointer>
#include <QThread>
#include <QTimer>

static void registerValueType() {
    static const int id = qRegisterMetaType<Value>("Value");
    Q_UNUSED(id);
}

static int findOperation(const QMetaObject* meta, const QByteArray& name) {
    // Prefer the form that takes one Value, then the one that takes nothing.
    int index = meta->indexOfMethod(name + "(Value)");
    if (index < 0)
        index = meta->indexOfMethod(name + "()");
    return index;
}

bool klvrInvoke(QObject* target, const QString& name, const Value& argument, Qt::ConnectionType type) {
    if (!target)
        return false;
    registerValueType();
    const QMetaObject* meta = target->metaObject();
    int index = findOperation(meta, name.toLatin1());
    if (index < 0)
        return false;
    QMetaMethod method = meta->method(index);
    if (method.parameterCount() == 1)
        return method.invoke(target, type, Q_ARG(Value, argument));
    return method.invoke(target, type);
}

bool klvrIsMainThread() {
    QCoreApplication* app = QCoreApplication::instance();
    return !app || QThread::currentThread() == app->thread();
}

void KLVR_NSOBJECT_PERFORMSELECTORONMAINTHREAD(QObject* target, const QString& selector, const Value& argument,
                                               bool wait) {
    if (klvrIsMainThread()) {
        klvrInvoke(target, selector, argument, Qt::DirectConnection);
        return;
    }
    klvrInvoke(target, selector, argument, wait ? Qt::BlockingQueuedConnection : Qt::QueuedConnection);
}

void KLVR_NSOBJECT_PERFORMSELECTORDELAYED(QObject* target, const QString& selector, const Value& argument,
                                          double seconds) {
    QPointer<QObject> guarded(target);
    auto call = [guarded, selector, argument] {
        if (guarded)
            klvrInvoke(guarded, selector, argument, Qt::DirectConnection);
    };
    QCoreApplication* app = QCoreApplication::instance();
    if (!app)
        return;
    QMetaObject::invokeMethod(app, [call, seconds] {
        QTimer::singleShot(int(seconds * 1000), QCoreApplication::instance(), call);
    }, Qt::QueuedConnection);
}

void KLVR_DORUNLOOP(double seconds) {
    QDeadlineTimer deadline(qint64(seconds * 1000));
    do {
        QCoreApplication::processEvents(QEventLoop::AllEvents, int(qMax<qint64>(1, deadline.remainingTime())));
    } while (!deadline.hasExpired());
}
