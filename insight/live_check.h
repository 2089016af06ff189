#pragma once
// Runs the live diagnostics of the shown document off the interface thread: the text is
// taken (a copy of its bytes) on the interface thread, checked on the checker's own
// thread, and the result handed back to the view on the interface thread, unless the
// text changed in the meantime (then the result is dropped; the next pause asks again).
// Checks do not pile up: while one runs, only the latest request waits.

#include "insight/live_diagnostics.h"

#include <QMutex>
#include <QObject>
#include <QPointer>

#include <functional>
#include <memory>
#include <optional>

class KLTextView;
class QThreadPool;

class LiveCheck : public QObject {
    Q_OBJECT
public:
    // `resourcesFolder` holds the vocabulary lists; they are read on the checker's
    // thread before its first check.
    explicit LiveCheck(const QString& resourcesFolder, QObject* parent = nullptr);
    ~LiveCheck() override; // waits for a running check

    // Checks the view's current text as its file of the project in `projectFolder`.
    void request(KLTextView* view, const QString& projectFolder);
    // True from a request until its result was handled (applied or dropped).
    bool busy() const;
    // Runs on the checker's thread before each check (tests hold a check with it).
    void setGate(std::function<void()> gate);

signals:
    // On the interface thread, after a result was given to the view (applied) or
    // dropped because the view's text changed since it was taken.
    void checked(KLTextView* view, bool applied);

private:
    struct Job {
        QPointer<KLTextView> view;
        qint64 changeCount = 0;
        QString projectFolder;
        QString fileName;
        QByteArray text;
    };
    void startLocked(Job job);
    void finish(const Job& job, const QList<LiveDiagnostic>& found);

    QString resourcesFolder_;
    std::unique_ptr<QThreadPool> thread_;
    std::shared_ptr<LiveDiagnostics> engine_; // made and used on the checker's thread
    mutable QMutex mutex_;
    bool running_ = false;
    std::optional<Job> waiting_;
    std::function<void()> gate_;
};
