#include "frame/kltask.h"

#include "frame/mainthread.h"
#include "frame/value.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QProcess>
#include <QSemaphore>
#include <QThread>
#include <QTimer>

// What one run shares between the task (main side) and its worker (reading thread).
struct KLTaskChannel {
    QPointer<QObject> owner;
    QString name;
    std::atomic<bool> discard{false}; // the task is gone: deliver nothing more
    std::atomic<bool> running{false};
    std::atomic<int> exitStatus{-1};
    std::atomic<bool> failedToStart{false};
    QSemaphore done;
};

// Lives on the task's reading thread and owns the QProcess there.
class KLTaskWorker : public QObject {
    Q_OBJECT
public:
    explicit KLTaskWorker(std::shared_ptr<KLTaskChannel> channel) : channel_(std::move(channel)) {}

    void start(const QString& program, const QStringList& arguments, const QString& workingDirectory) {
        process_ = new QProcess(this);
        if (!workingDirectory.isEmpty())
            process_->setWorkingDirectory(workingDirectory);
        connect(process_, &QProcess::readyReadStandardOutput, this, [this] { drain(false); });
        connect(process_, &QProcess::readyReadStandardError, this, [this] { drain(true); });
        connect(process_, &QProcess::finished, this, [this](int code, QProcess::ExitStatus status) {
            drain(false);
            drain(true);
            end(status == QProcess::NormalExit ? code : -1);
        });
        connect(process_, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
            if (error == QProcess::FailedToStart) {
                channel_->failedToStart = true;
                end(-1);
            }
        });
        process_->start(program, arguments);
    }

    void stop() {
        if (!process_ || process_->state() == QProcess::NotRunning)
            return;
        process_->terminate();
        // A program that ignores the request is killed after a grace period.
        QTimer::singleShot(3000, process_, [p = process_] {
            if (p->state() != QProcess::NotRunning)
                p->kill();
        });
    }

    void kill() {
        channel_->discard = true;
        if (process_ && process_->state() != QProcess::NotRunning) {
            process_->kill();
            process_->waitForFinished(3000);
        }
        end(-1);
    }

signals:
    void ended();

private:
    void drain(bool isError) {
        if (!process_)
            return;
        process_->setReadChannel(isError ? QProcess::StandardError : QProcess::StandardOutput);
        QByteArray chunk = process_->readAll();
        if (chunk.isEmpty() || channel_->discard)
            return;
        klvrInvoke(channel_->owner,
                   channel_->name + (isError ? QStringLiteral("_stderr") : QStringLiteral("_stdout")),
                   Value::bytes(chunk), Qt::DirectConnection);
    }

    void end(int status) {
        if (ended_)
            return;
        ended_ = true;
        channel_->exitStatus = status;
        channel_->running = false;
        channel_->done.release();
        emit ended();
    }

    std::shared_ptr<KLTaskChannel> channel_;
    QProcess* process_ = nullptr;
    bool ended_ = false;
};

KLTask::KLTask(QObject* owner, const QString& name) : owner_(owner), name_(name) { setObjectName(name); }

KLTask::~KLTask() {
    if (channel_)
        channel_->discard = true;
    retireWorker();
}

bool KLTask::isRunning() const { return channel_ && channel_->running; }
int KLTask::exitStatus() const { return channel_ ? channel_->exitStatus.load() : -1; }
bool KLTask::failedToStart() const { return channel_ && channel_->failedToStart; }

KLTaskRun KLTask::lastRun() const {
    KLTaskRun run;
    run.channel_ = channel_;
    return run;
}

void KLTaskRun::wait() const {
    if (!channel_)
        return;
    channel_->done.acquire();
    channel_->done.release(); // another waiter may follow
}

int KLTaskRun::exitStatus() const { return channel_ ? channel_->exitStatus.load() : -1; }
bool KLTaskRun::failedToStart() const { return channel_ && channel_->failedToStart; }

void KLTask::retireWorker() {
    if (!thread_)
        return;
    QThread* thread = thread_;
    connect(thread, &QThread::finished, thread, &QObject::deleteLater);
    QMetaObject::invokeMethod(worker_, [w = worker_, thread] {
        w->kill();
        delete w;
        thread->quit();
    }, Qt::QueuedConnection);
    thread_ = nullptr;
    worker_ = nullptr;
}

void KLTask::startAndWait(bool detached) {
    retireWorker();
    channel_ = std::make_shared<KLTaskChannel>();
    channel_->owner = owner_;
    channel_->name = name_;
    channel_->running = true;

    thread_ = new QThread();
    thread_->setObjectName(name_ + QStringLiteral(" output"));
    worker_ = new KLTaskWorker(channel_);
    worker_->moveToThread(thread_);
    connect(worker_, &KLTaskWorker::ended, this, &KLTask::finished, Qt::QueuedConnection);
    thread_->start();

    auto start = [w = worker_, p = path, a = arguments, d = workingDirectory] { w->start(p, a, d); };
    if (detached) {
        QMetaObject::invokeMethod(worker_, start, Qt::QueuedConnection);
        return;
    }
    if (klvrIsMainThread()) {
        // Keep serving requests passed to the main thread (the output handlers pass
        // each chunk here and wait), but take no user input meanwhile.
        QEventLoop loop;
        connect(worker_, &KLTaskWorker::ended, &loop, &QEventLoop::quit, Qt::QueuedConnection);
        QMetaObject::invokeMethod(worker_, start, Qt::QueuedConnection);
        loop.exec(QEventLoop::ExcludeUserInputEvents);
    } else {
        std::shared_ptr<KLTaskChannel> channel = channel_;
        QMetaObject::invokeMethod(worker_, start, Qt::QueuedConnection);
        channel->done.acquire();
    }
}

void KLTask::waitUntilEnded() {
    if (!channel_)
        return;
    if (klvrIsMainThread()) {
        QEventLoop loop;
        connect(this, &KLTask::finished, &loop, &QEventLoop::quit);
        // `finished` is queued to this thread after `running` is cleared, so a run that
        // ends after this test still ends the loop.
        if (isRunning())
            loop.exec(QEventLoop::ExcludeUserInputEvents);
        return;
    }
    std::shared_ptr<KLTaskChannel> channel = channel_;
    channel->done.acquire();
    channel->done.release(); // another waiter may follow
}

void KLTask::stop() {
    if (!isRunning() || !worker_)
        return;
    QMetaObject::invokeMethod(worker_, [w = worker_] { w->stop(); }, Qt::QueuedConnection);
}

void KLTask::discardOutput() {
    if (channel_)
        channel_->discard = true;
}

KLTask* KLVR_KLTASK_INIT(QObject* owner, const QString& name) { return new KLTask(owner, name); }
QString KLVR_KLTASK_PATH(KLTask* task) { return task ? task->path : QString(); }
void KLVR_KLTASK_PATH(KLTask* task, const QString& path) { task->path = path; }
QStringList KLVR_KLTASK_ARGUMENTS(KLTask* task) { return task ? task->arguments : QStringList(); }
void KLVR_KLTASK_ARGUMENTS(KLTask* task, const QStringList& arguments) { task->arguments = arguments; }
void KLVR_KLTASK_STARTANDWAIT(KLTask* task, bool detached) { task->startAndWait(detached); }
bool KLVR_KLTASK_ISRUNNING(KLTask* task) { return task && task->isRunning(); }
void KLVR_KLTASK_STOP(KLTask* task) {
    if (task)
        task->stop();
}

#include "kltask.moc"
