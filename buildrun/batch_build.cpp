#include "buildrun/batch_build.h"

#include "buildrun/compiler_output.h"
#include "buildrun/log_panel.h"
#include "frame/global.h"

#include <QEventLoop>
#include <cstdio>

namespace {
void print(const QString& text) {
    const QByteArray bytes = text.toUtf8();
    std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stdout);
    std::fflush(stdout);
}

// Prints a log, ending its last line.
void printLog(const QString& log) { print(log.isEmpty() || log.endsWith(QLatin1Char('\n')) ? log : log + '\n'); }

void waitForThread(const KLThreadRef& thread) {
    if (!thread)
        return;
    QEventLoop loop;
    QObject::connect(thread.get(), &QThread::finished, &loop, &QEventLoop::quit, Qt::QueuedConnection);
    if (thread->isRunning())
        loop.exec();
}
} // namespace

int runBatchBuild(Global* global, bool run) {
    if (!global->ProjectIsLoaded()) {
        std::fprintf(stderr, "kelvaro: no project was opened\n");
        return 1;
    }
    bool done = false;
    bool launched = false;
    QObject::connect(global, &Global::statusShown, global, [&](const QString& text) {
        print(QStringLiteral("status: ") + text + QLatin1Char('\n'));
        done = done || text == QLatin1String("Done.");
        launched = launched || text == QLatin1String("Launching...");
    });
    if (run)
        global->global_run();
    else
        global->global_build();
    waitForThread(global->thBuild);
    if (run && launched && global->go)
        global->go->waitUntilEnded();
    global->flushOutput();

    printLog(global->tvCompilerlog()->toPlainText());
    if (global->bCompilerError && !global->sLastErrorFile.isEmpty())
        print(QStringLiteral("%1:%2: error: %3\n")
                  .arg(global->sLastErrorFile)
                  .arg(global->nLastErrorLine)
                  .arg(cutErrorText(global->sLastErrorText).message));
    if (run) {
        if (global->runLogPanel->droppedLines() > 0)
            print(global->runLogPanel->droppedNote() + QLatin1Char('\n'));
        printLog(global->tvRunlog()->toPlainText());
    }
    const bool built = done && !global->bCompilerError;
    const bool ran = !run || (launched && global->lastRunExitStatus() == 0);
    return built && ran ? 0 : 1;
}
