// Live diagnostics of the shown document: asked for after each pause in typing, marked
// in the view when the answer still fits its text, and told in the status line while
// the cursor is on a marked line.
#include "editor/code.h"
#include "editor/kltextview.h"
#include "frame/global.h"
#include "frame/runtime.h"
#include "insight/live_check.h"

LiveCheck* Global::liveCheck() {
    if (!liveCheck_) {
        liveCheck_ = new LiveCheck(KLVR_NSBUNDLE_RESOURCEPATH(), this);
        connect(liveCheck_, &LiveCheck::checked, this, [this](KLTextView* view, bool applied) {
            if (applied && view == mytextview())
                showDiagnosticOfLine(view);
        });
    }
    return liveCheck_;
}

void Global::requestLiveCheck() {
    KLVR_TRACE("requestLiveCheck");
    if (!mycode || !mycode->SomeDocumentOpened() || ProjectPath.isEmpty())
        return;
    liveCheck()->request(mytextview(), ProjectPath);
}

void Global::showDiagnosticOfLine(KLTextView* view) {
    const QString message = view ? view->diagnosticAt(view->line()) : QString();
    if (message == shownDiagnostic_)
        return;
    const QString shown = std::exchange(shownDiagnostic_, message);
    // Cursor moves are told while the view paints, and the status line draws itself at
    // once: the status line is written after this turn. Leaving a marked line clears
    // only the diagnostic, not another text of the status line.
    QMetaObject::invokeMethod(
        this,
        [this, message, shown] {
            if (!message.isEmpty() || (mycode && mycode->statusbar && mycode->statusbar->text() == " " + shown))
                ProjectStatusBar(message);
        },
        Qt::QueuedConnection);
}
