// Control of the one child process `go`, and the routing of its output: the compiler's
// output goes to the compiler log, where failures are recognised; the running
// application's output goes to the run log.
#include "buildrun/build_output.h"
#include "buildrun/compiler_output.h"
#include "buildrun/log_panel.h"
#include "frame/global.h"

#include <QElapsedTimer>

void Global::stopRunningTask() {
    KLVR_TRACE("stopRunningTask");
    if (go) {
        // What the ended process still writes belongs to no log: the next build may
        // already route output elsewhere.
        go->discardOutput();
        if (KLVR_KLTASK_ISRUNNING(go))
            KLVR_KLTASK_STOP(go);
        // The task ends its process and reading thread on its own; deleting it later
        // keeps an output handler that waits for the main thread from blocking.
        go->deleteLater();
        go = nullptr;
    }
    ProjectStatusBar(QString());
}

void Global::global_stop() {
    KLVR_TRACE("global_stop");
    if (KLVR_NSTHREAD_ISEXECUTING(thBuild))
        KLVR_NSTHREAD_CANCEL(thBuild);
    stopRunningTask();
}

// Reading thread. bIgnoreStdErr and bIsLaunchingApp are set on the main thread before
// the task that they concern starts; a chunk keeps the routing it was read under.
static void deliver(Global* global, BuildOutput* output, bool isError, const Value& chunk) {
    if (global->bIgnoreStdErr || chunk.isNil())
        return;
    const bool fromApplication = global->bIsLaunchingApp;
    quint64 sequence = 0;
    if (output->push(isError, fromApplication, chunk.rawBytes(), &sequence))
        QMetaObject::invokeMethod(global, "flushOutputSlice", Qt::QueuedConnection);
    if (klvrIsMainThread()) {
        global->flushOutput();
        return;
    }
    if (fromApplication)
        output->waitForRoom();
    else
        output->waitHandled(sequence);
}

void Global::go_stdout(const Value& chunk) { deliver(this, output_.get(), false, chunk); }

void Global::go_stderr(const Value& chunk) { deliver(this, output_.get(), true, chunk); }

// Handles queued output on the main thread: everything, or application output for one
// slice of time, then asks for the next slice when some is left.
static void drain(Global* global, BuildOutput* output, bool everything) {
    QElapsedTimer clock;
    clock.start();
    BuildOutput::Chunk chunk;
    while (output->take(&chunk)) {
        const QString text = QString::fromUtf8(chunk.bytes);
        // The running program's output goes to the run log even when a new build has
        // changed the routing since it was read.
        if (chunk.fromApplication)
            global->runLogPanel->append(text);
        else if (chunk.isError)
            global->go_stderrGUI(text);
        else
            global->go_stdoutGUI(text);
        output->handled();
        if (!everything && chunk.fromApplication && clock.nsecsElapsed() >= BuildOutput::kSliceNanoseconds) {
            QMetaObject::invokeMethod(global, "flushOutputSlice", Qt::QueuedConnection);
            return;
        }
    }
}

void Global::flushOutput() { drain(this, output_.get(), true); }

void Global::flushOutputSlice() { drain(this, output_.get(), false); }

void Global::go_stdoutGUI(const QString& text) {
    if (bIsLaunchingApp) {
        runLogPanel->append(text);
        return;
    }
    compilerLogPanel->append(text);
    if (showsPlatformCompilerFailure(text)) {
        bCompilerError = true;
        ShowInternalError(Value(compilerLogPanel->text()));
    }
}

void Global::go_stderrGUI(const QString& text) {
    if (bIsLaunchingApp) {
        runLogPanel->append(text);
        return;
    }
    bCompilerError = true;
    if (KLVR_STARTSWITH(text, QStringLiteral("Kelvaro:"), true))
        ShowError(text);
    else
        ShowInternalError(Value(text));
}

void Global::clearLogs() {
    compilerLogPanel->clear();
    runLogPanel->clear();
}
