#pragma once
// Calls of an object's operation by name, and hops to the main thread. An operation is
// a Q_INVOKABLE (or slot) taking either nothing or one `const Value&`.

#include "frame/value.h"

#include <QObject>
#include <QString>

// Calls target's operation `name` with `argument` (ignored by operations that take
// none) using the connection type; false when the target has no such operation.
bool klvrInvoke(QObject* target, const QString& name, const Value& argument,
                Qt::ConnectionType type = Qt::DirectConnection);
bool klvrIsMainThread();

// Runs the operation on the main thread: directly when already there, else queued,
// and with `wait` the caller blocks until it has finished.
void KLVR_NSOBJECT_PERFORMSELECTORONMAINTHREAD(QObject* target, const QString& selector, const Value& argument,
                                               bool wait);
// Runs the operation on the main thread after the delay.
void KLVR_NSOBJECT_PERFORMSELECTORDELAYED(QObject* target, const QString& selector, const Value& argument,
                                          double seconds);
// Processes pending interface events for that long (used so a status text is drawn).
void KLVR_DORUNLOOP(double seconds);
