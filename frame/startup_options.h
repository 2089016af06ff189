#pragma once
// The IDE's command line: `kelvaro [--screenshot FILE] [PROJECT_FOLDER]`,
// `kelvaro --build PROJECT_FOLDER`, `kelvaro --run PROJECT_FOLDER`.

#include <QString>
#include <QStringList>

struct StartupOptions {
    QString screenshotFile; // write a PNG of the main window here, then exit
    QString projectFolder;  // open this project after the start-up
    QString batch;          // "build" or "run": build (and run) the project, print, exit
    QString error;          // a usage error; empty when the line was understood

    static StartupOptions parse(const QStringList& arguments);
    // Prints the error and the usage to standard error; returns the exit status 2.
    static int printUsage(const QString& error);
    // A screenshot or a batch build needs no display: use the offscreen platform when there is none.
    void prepareEnvironment() const;
};
