#pragma once
// `kelvaro --screenshot FILE`: once the start-up has finished and the event loop is
// idle, a PNG of the main window is written to FILE and the application quits.

#include <QString>

class Global;

// Runs the event loop until the picture is written; returns the exit status.
int writeScreenshotWhenIdle(Global* global, const QString& file);
