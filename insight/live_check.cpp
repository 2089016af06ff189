#include "insight/live_check.h"

#include "editor/kltextview.h"

#include <QFileInfo>
#include <QThreadPool>

#ifdef Q_OS_LINUX
#include <sys/resource.h>
#endif

LiveCheck::LiveCheck(const QString& resourcesFolder, QObject* parent)
    : QObject(parent), resourcesFolder_(resourcesFolder), thread_(std::make_unique<QThreadPool>()) {
    thread_->setMaxThreadCount(1);
}

LiveCheck::~LiveCheck() {
    {
        QMutexLocker lock(&mutex_);
        waiting_.reset();
    }
    thread_->waitForDone();
}

void LiveCheck::request(KLTextView* view, const QString& projectFolder) {
    if (!view || view->fileName().isEmpty())
        return;
    // The interface thread's part: a copy of the bytes (no decoding) and a few fields.
    Job job{view, view->changeCount(), projectFolder, QFileInfo(view->fileName()).fileName(), view->editorBytes()};
    QMutexLocker lock(&mutex_);
    if (running_) {
        waiting_ = std::move(job); // an older waiting request is replaced
        return;
    }
    startLocked(std::move(job));
}

bool LiveCheck::busy() const {
    QMutexLocker lock(&mutex_);
    return running_;
}

void LiveCheck::setGate(std::function<void()> gate) {
    QMutexLocker lock(&mutex_);
    gate_ = std::move(gate);
}

void LiveCheck::startLocked(Job job) {
    running_ = true;
    const std::function<void()> gate = gate_;
    thread_->start([this, job = std::move(job), gate] {
#ifdef Q_OS_LINUX
        // The check yields the processor to typing: on Linux this niceness is the calling
        // thread's own (and the file readers it starts inherit it).
        setpriority(PRIO_PROCESS, 0, 10);
#endif
        if (gate)
            gate();
        if (!engine_)
            engine_ = std::make_shared<LiveDiagnostics>(resourcesFolder_);
        const QList<LiveDiagnostic> found = engine_->check(job.projectFolder, job.fileName, job.text);
        QMetaObject::invokeMethod(this, [this, job, found] { finish(job, found); }, Qt::QueuedConnection);
    });
}

void LiveCheck::finish(const Job& job, const QList<LiveDiagnostic>& found) {
    // A result for an older text than the view holds now is dropped.
    const bool applied = job.view && job.view->changeCount() == job.changeCount;
    if (applied)
        job.view->setLineDiagnostics(found);
    {
        QMutexLocker lock(&mutex_);
        running_ = false;
        if (waiting_) {
            Job next = std::move(*waiting_);
            waiting_.reset();
            startLocked(std::move(next));
        }
    }
    if (job.view)
        emit checked(job.view, applied);
}
