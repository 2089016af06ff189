#pragma once
// Background threads bound by name: the body is the owner's operation `name`, run on a
// new thread. A failure raised in the body is reported on the main thread like any
// other failure, and the thread ends. Cancelling only marks the thread; the body asks.

#include <QPointer>
#include <QThread>
#include <atomic>
#include <memory>

class KLThread : public QThread {
    Q_OBJECT
public:
    KLThread(QObject* owner, const QString& name);
    void cancel() { cancelled_ = true; }
    bool isCancelled() const { return cancelled_; }

protected:
    void run() override;

private:
    QPointer<QObject> owner_;
    QString name_;
    std::atomic<bool> cancelled_{false};
};

using KLThreadRef = std::shared_ptr<KLThread>;

KLThreadRef KLVR_NSTHREAD_INIT(QObject* owner, const QString& name);
void KLVR_NSTHREAD_START(const KLThreadRef& thread);
void KLVR_NSTHREAD_CANCEL(const KLThreadRef& thread);
bool KLVR_NSTHREAD_ISCANCELLED(const KLThreadRef& thread);
bool KLVR_NSTHREAD_ISEXECUTING(const KLThreadRef& thread);
