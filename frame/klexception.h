#pragma once
// A raised failure: what the runtime throws and what KLVR_Application reports.
// The system's code never catches these; only the event loop (KLVR_Application::notify)
// and the body wrapper of background threads do.

#include <QString>
#include <QStringList>
#include <exception>

class KLException : public std::exception {
public:
    KLException(QString name, QString reason, QString information = QString());

    const QString& name() const { return name_; }
    const QString& reason() const { return reason_; }
    // Additional information; empty when there is none.
    const QString& information() const { return information_; }
    // The call stack at the raise, one frame a line.
    const QStringList& callStack() const { return callStack_; }

    const char* what() const noexcept override { return what_.constData(); }

private:
    QString name_;
    QString reason_;
    QString information_;
    QStringList callStack_;
    QByteArray what_;
};

// Raises a failure with that name, reason and additional information; never returns.
[[noreturn]] void KLVR_EXCEPTION(const QString& name, const QString& reason,
                                 const QString& information = QString());

// The current call stack as text lines (used by KLException and by reports).
QStringList klCallStackSymbols(int skipFrames = 0);
