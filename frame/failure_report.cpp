#include "frame/failure_report.h"

#include "frame/klvr_application.h"
#include "frame/trace.h"

#include <QCoreApplication>
#include <QMetaObject>
#include <QThread>

FailureReport buildFailureReport(const KLException& failure) {
    FailureReport report;
    report.logEntry = QStringLiteral("\n\nException in\n file '%1'\n at '%2'\n line '%3'\n\ncallStackSymbols:\n%4")
                          .arg(KlvRF(), KlvRS(), KlvRL(), failure.callStack().join(QLatin1Char('\n')));
    report.title = QStringLiteral("Exception ") + failure.name();
    report.text = failure.reason();
    if (!failure.information().isEmpty())
        report.text += QStringLiteral("\n\n") + failure.information();
    report.text += report.logEntry;
    return report;
}

void klvrReportFailure(const KLException& failure) {
    auto* app = qobject_cast<KLVR_Application*>(QCoreApplication::instance());
    if (!app)
        return;
    if (QThread::currentThread() == app->thread()) {
        app->reportException(failure);
        return;
    }
    QMetaObject::invokeMethod(app, [app, failure] { app->reportException(failure); }, Qt::QueuedConnection);
}
