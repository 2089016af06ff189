#include "frame/klexception.h"

#include <cxxabi.h>
#include <execinfo.h>

#include <cstdlib>

KLException::KLException(QString name, QString reason, QString information)
    : name_(std::move(name)), reason_(std::move(reason)), information_(std::move(information)),
      callStack_(klCallStackSymbols(2)), what_((name_ + QStringLiteral(": ") + reason_).toUtf8()) {}

void KLVR_EXCEPTION(const QString& name, const QString& reason, const QString& information) {
    throw KLException(name, reason, information);
}

// Demangles the symbol part of one backtrace line ("binary(_ZN3Foo3barEv+0x12) [0x...]").
static QString readableFrame(const char* line) {
    QString text = QString::fromLocal8Bit(line);
    qsizetype open = text.indexOf(QLatin1Char('('));
    qsizetype plus = text.indexOf(QLatin1Char('+'), open);
    if (open < 0 || plus < 0 || plus == open + 1)
        return text;
    QByteArray mangled = text.mid(open + 1, plus - open - 1).toLocal8Bit();
    int status = 0;
    char* demangled = abi::__cxa_demangle(mangled.constData(), nullptr, nullptr, &status);
    if (status != 0 || !demangled)
        return text;
    QString result = text.left(open + 1) + QString::fromLocal8Bit(demangled) + text.mid(plus);
    std::free(demangled);
    return result;
}

QStringList klCallStackSymbols(int skipFrames) {
    void* frames[64];
    int count = backtrace(frames, 64);
    char** symbols = backtrace_symbols(frames, count);
    QStringList lines;
    if (!symbols)
        return lines;
    for (int i = skipFrames; i < count; ++i)
        lines << QStringLiteral("%1   %2").arg(i - skipFrames).arg(readableFrame(symbols[i]));
    std::free(symbols);
    return lines;
}
