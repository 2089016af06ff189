// Control of the one child process `go`.
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
