#include "frame/startup_options.h"

#include <QDir>
#include <QFileInfo>
#include <cstdio>

StartupOptions StartupOptions::parse(const QStringList& arguments) {
    StartupOptions options;
    for (qsizetype i = 1; i < arguments.size(); ++i) {
        const QString& a = arguments.at(i);
        if (a == QLatin1String("--screenshot")) {
            if (i + 1 >= arguments.size()) {
                options.error = QStringLiteral("--screenshot needs a file name");
                return options;
            }
            options.screenshotFile = QFileInfo(arguments.at(++i)).absoluteFilePath();
        } else if (a == QLatin1String("--build") || a == QLatin1String("--run")) {
            if (i + 1 >= arguments.size() || !options.batch.isEmpty()) {
                options.error = a + QStringLiteral(" needs one project folder");
                return options;
            }
            options.batch = a.mid(2);
            options.projectFolder = QDir::cleanPath(QFileInfo(arguments.at(++i)).absoluteFilePath());
        } else if (a.startsWith(QLatin1String("-platform")) || a == QLatin1String("-style")) {
            ++i; // Qt's own options and their values
        } else if (a.startsWith(QLatin1Char('-'))) {
            options.error = QStringLiteral("unknown option ") + a;
            return options;
        } else if (options.projectFolder.isEmpty()) {
            // A source file named here (a desktop opening a .klvr file) opens its project.
            const QFileInfo named(a);
            options.projectFolder = QDir::cleanPath(named.isFile() ? named.absolutePath() : named.absoluteFilePath());
        } else {
            options.error = QStringLiteral("only one project folder can be opened");
            return options;
        }
    }
    return options;
}

int StartupOptions::printUsage(const QString& error) {
    std::fprintf(stderr,
                 "kelvaro: %s\n"
                 "usage: kelvaro [PROJECT_FOLDER | PROJECT_FOLDER/FILE.klvr]\n"
                 "       kelvaro --screenshot FILE.png [PROJECT_FOLDER]\n"
                 "       kelvaro --build PROJECT_FOLDER\n"
                 "       kelvaro --run PROJECT_FOLDER\n"
                 "       kelvaro --pdf OUT.pdf FILE.klvr\n"
                 "       kelvaro --scan FILE...\n"
                 "       kelvaro --tags FOLDER\n",
                 error.toLocal8Bit().constData());
    return 2;
}

void StartupOptions::prepareEnvironment() const {
    if (screenshotFile.isEmpty() && batch.isEmpty())
        return;
    // A batch build never shows a window, also where there is a display.
    const bool noDisplay = !batch.isEmpty() || (qEnvironmentVariableIsEmpty("DISPLAY") &&
                                                qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY"));
    if (noDisplay && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
}
