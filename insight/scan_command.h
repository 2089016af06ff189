#pragma once
// The scanner's command line, answered before any window system is touched:
//   kelvaro --scan FILE...   one JSON array with the scan of each file
//   kelvaro --tags FOLDER    FOLDER/tags in the ctags format for the .klvr files there

#include <QStringList>

// Whether args[1] names one of the scanner's commands.
bool isScannerCommand(const QStringList& args);
// Runs the command and returns the process's exit status.
int runScannerCommand(const QStringList& args);
