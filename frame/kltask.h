#pragma once
// Child processes bound by name. The task named "go" of an owner delivers its output,
// chunk by chunk as it is read, to the owner's operations `go_stdout` and `go_stderr`
// (each taking one Value holding raw bytes), on the task's own reading thread. The
// handlers usually pass each chunk to the main thread and wait, so a wait for the task
// on the main thread keeps serving those requests. Nothing is run through a shell: the
// path is the program and every argument is passed as it stands.

#include <QObject>
#include <QPointer>
#include <QStringList>
#include <memory>

class QProcess;
class QThread;
class KLTaskWorker;
struct KLTaskChannel;

// One run of a task, to wait for from a thread other than the main thread; it stays
// valid after the task object is gone.
class KLTaskRun {
public:
    // Returns once the run has ended and all of its output was delivered.
    void wait() const;
    int exitStatus() const;
    bool failedToStart() const;

private:
    friend class KLTask;
    std::shared_ptr<KLTaskChannel> channel_;
};

class KLTask : public QObject {
    Q_OBJECT
public:
    KLTask(QObject* owner, const QString& name);
    ~KLTask() override;

    QString path;
    QStringList arguments;
    QString workingDirectory; // empty: the caller's

    // Starts the process. With detached false: returns once the process has ended and
    // all of its output was delivered. With detached true: returns at once; output keeps
    // arriving while the interface stays responsive.
    void startAndWait(bool detached);
    bool isRunning() const;
    // Waits until the last run has ended and all of its output was delivered; on the
    // main thread it keeps serving requests passed to it, as startAndWait does.
    void waitUntilEnded();
    // Terminates the process (and kills it if it ignores the request).
    void stop();
    // Output of the last run that is read from now on is dropped.
    void discardOutput();
    // The exit status of the last run; -1 when it could not start or crashed.
    int exitStatus() const;
    bool failedToStart() const;
    // The run started last.
    KLTaskRun lastRun() const;

signals:
    // The last run ended (queued to the task's thread).
    void finished();

private:
    // Hands the worker of the last run to its thread to be ended there, without
    // waiting: its output handler may be waiting for the main thread right now.
    void retireWorker();

    QPointer<QObject> owner_;
    QString name_;
    std::shared_ptr<KLTaskChannel> channel_;
    QThread* thread_ = nullptr;
    KLTaskWorker* worker_ = nullptr;
};

// A new task bound to owner's `<name>_stdout` and `<name>_stderr`.
KLTask* KLVR_KLTASK_INIT(QObject* owner, const QString& name);
QString KLVR_KLTASK_PATH(KLTask* task);
void KLVR_KLTASK_PATH(KLTask* task, const QString& path);
QStringList KLVR_KLTASK_ARGUMENTS(KLTask* task);
void KLVR_KLTASK_ARGUMENTS(KLTask* task, const QStringList& arguments);
void KLVR_KLTASK_STARTANDWAIT(KLTask* task, bool detached);
bool KLVR_KLTASK_ISRUNNING(KLTask* task);
void KLVR_KLTASK_STOP(KLTask* task);
