#pragma once
// The statement trace: one process-wide current position (file, method, line), last
// written by KLVRS on any thread. The failure report reads it. Methods record
// themselves with KLVR_TRACE(method) at entry and KLVR_STEP(method) before a step
// worth naming; the file is the C++ source file that holds the method.

#include <QString>

// Records file, method and line; phase "0" entry, "1" statement, "2" end of method.
void KLVRS(const char* file, const char* method, const char* line, const char* phase);
void KLVRS(const QString& file, const QString& method, qint64 line, int phase);

QString KlvRF(); // current file
QString KlvRS(); // current method
QString KlvRL(); // current line

namespace klvr_trace_detail {
constexpr const char* baseName(const char* path) {
    const char* base = path;
    for (const char* p = path; *p; ++p)
        if (*p == '/')
            base = p + 1;
    return base;
}
} // namespace klvr_trace_detail

#define KLVR_TRACE(method) ::KLVRS(QString::fromLatin1(klvr_trace_detail::baseName(__FILE__)), QStringLiteral(method), __LINE__, 0)
#define KLVR_STEP(method) ::KLVRS(QString::fromLatin1(klvr_trace_detail::baseName(__FILE__)), QStringLiteral(method), __LINE__, 1)
