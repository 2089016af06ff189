// Control of the one child process `go`, and the routing of its output.
#include "frame/global.h"

void Global::stopRunningTask() {
    KLVR_TRACE("stopRunningTask");
    if (go) {
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

void Global::go_stdout(const Value& chunk) {
    KLVR_NSOBJECT_PERFORMSELECTORONMAINTHREAD(this, QStringLiteral("appendCompilerOutput"), chunk, true);
}

void Global::go_stderr(const Value& chunk) {
    if (bIgnoreStdErr)
        return;
    KLVR_NSOBJECT_PERFORMSELECTORONMAINTHREAD(this, QStringLiteral("appendCompilerError"), chunk, true);
}
