#pragma once
// The report of a failure that no code caught: the text written to the system log and
// shown in a message box, after which the application goes on.

#include "frame/klexception.h"

#include <QString>

struct FailureReport {
    QString title; // "Exception " + the failure's name
    QString text;  // reason, additional information, then the report
    QString logEntry;
};

// Builds the report from the failure and the current trace position.
FailureReport buildFailureReport(const KLException& failure);

// Reports on the main thread (queued when called from another thread).
void klvrReportFailure(const KLException& failure);
