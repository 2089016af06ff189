#include "frame/trace.h"

#include <QMutex>
#include <QMutexLocker>

namespace {
// One position for the whole process: the report shows the last statement traced on
// any thread, which is what a failure report needs.
struct TracePosition {
    QMutex mutex;
    QString file;
    QString method;
    QString line;
};
TracePosition& position() {
    static TracePosition p;
    return p;
}
} // namespace

void KLVRS(const char* file, const char* method, const char* line, const char*) {
    TracePosition& p = position();
    QMutexLocker guard(&p.mutex);
    p.file = QString::fromUtf8(file);
    p.method = QString::fromUtf8(method);
    p.line = QString::fromUtf8(line);
}

void KLVRS(const QString& file, const QString& method, qint64 line, int) {
    TracePosition& p = position();
    QMutexLocker guard(&p.mutex);
    p.file = file;
    p.method = method;
    p.line = QString::number(line);
}

QString KlvRF() {
    QMutexLocker guard(&position().mutex);
    return position().file;
}
QString KlvRS() {
    QMutexLocker guard(&position().mutex);
    return position().method;
}
QString KlvRL() {
    QMutexLocker guard(&position().mutex);
    return position().line;
}
