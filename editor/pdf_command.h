#pragma once
// `kelvaro --pdf OUT.pdf FILE.klvr`: writes the pages that printing FILE gives (the
// editor's colours, font, line numbers and titles) as a PDF, without a display. The
// project title is the name of FILE's folder.

#include <QStringList>

bool isPdfCommand(const QStringList& arguments);
// The exit status: 0 when OUT was written; 2 for a wrong command line; 1 when FILE
// cannot be read or OUT cannot be written (said on standard error).
int runPdfCommand(int& argc, char** argv, const QStringList& arguments);
