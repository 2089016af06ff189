#pragma once
// Timers bound by name: a timer calls its owner's operation `name` once its interval
// has passed. Fields hold a KLTimerRef; each restart replaces the field's timer, and a
// released timer is stopped, so a burst of restarts yields one call one interval after
// the last. Timers live on the main thread.

#include <QObject>
#include <QPointer>
#include <QTimer>
#include <memory>

class KLTimer : public QObject {
    Q_OBJECT
public:
    KLTimer(QObject* owner, const QString& name);
    void start(double seconds);
    void stop();
    bool isActive() const { return timer_.isActive(); }
    double intervalSeconds() const { return timer_.interval() / 1000.0; }
    QString name() const { return name_; }

private:
    void fire();
    QTimer timer_;
    QPointer<QObject> owner_;
    QString name_;
};

using KLTimerRef = std::shared_ptr<KLTimer>;

// Without seconds: an idle timer (fields start with one, so stopping is always allowed).
KLTimerRef KLVR_NSTIMER_INIT(QObject* owner, const QString& name);
// With seconds: a started single-shot timer.
KLTimerRef KLVR_NSTIMER_INIT(QObject* owner, const QString& name, double seconds);
// Stopping an idle, stopped or missing timer does nothing.
void KLVR_NSTIMER_STOP(const KLTimerRef& timer);
