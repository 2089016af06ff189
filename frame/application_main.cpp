// Entry of the IDE executable. Commands that only print or write files run before any
// window system is touched, so they work with no display; everything else starts
// KLVR_Application and the start-up.
#include "frame/application_main.h"

#include "editor/pdf_command.h"
#include "frame/global.h"
#include "frame/klvr_application.h"
#include "frame/startup_options.h"
#include "insight/scan_command.h"
#include "insight/scan_prefetch.h"

#include <QStringList>

int kelvaroMain(int argc, char** argv) {
    QStringList args;
    for (int i = 0; i < argc; ++i)
        args << QString::fromLocal8Bit(argv[i]);

    // Commands that need no window (each returns the process's exit status).
    if (isScannerCommand(args))
        return runScannerCommand(args);
    // -- end of commands that need no window --
    // A printout as PDF: on the offscreen platform, without the start-up.
    if (isPdfCommand(args))
        return runPdfCommand(argc, argv, args);

    StartupOptions options = StartupOptions::parse(args);
    if (!options.error.isEmpty())
        return StartupOptions::printUsage(options.error);
    options.prepareEnvironment();
    // The project the start-up is about to open is scanned while the window system starts.
    scan_prefetch::start(options.projectFolder.isEmpty() ? Global::lastProjectFolder() : options.projectFolder);
    KLVR_Application app(argc, argv);
    return app.runIde(options);
}
