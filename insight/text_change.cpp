// The editor views' change notifications, turned into delayed work: one second after
// typing stops the code pane re-colours, saves and schedules its re-scan; every cursor
// move updates the line field and restarts the position-history timer.
#include "editor/code.h"
#include "editor/kltextview.h"
#include "frame/global.h"
#include "project/recovery_journal.h"

void Global::KLVR_TextDidChange(QObject*) {
    KLVR_TRACE("TextDidChange");
    if (bLockTextDidChange)
        return; // a file is being loaded, not typed
    recoveryJournal()->noteChange();
    KLVR_NSTIMER_STOP(tTextDidChange);
    tTextDidChange = KLVR_NSTIMER_INIT(this, QStringLiteral("tTextDidChangeFired"), 1.0);
}

void Global::tTextDidChangeFired() {
    KLVR_TRACE("tTextDidChange");
    KLVR_NSTIMER_STOP(tTextDidChange);
    if (!mycode)
        return;
    // The pass saves every document with unsaved typing. When it stops early (no
    // document shown, or the shown one emptied, which the pass leaves alone), the
    // others are saved here.
    KLTextView* shown = mytextview();
    const bool passSaves = mycode->SomeDocumentOpened() && shown->length() > 0;
    mycode->PerformTextDidChange();
    if (!passSaves)
        saveModifiedDocuments(SaveWait::Background, shown);
    requestLiveCheck(); // the checker runs on its own thread (insight/live_check_actions.cpp)
}

void Global::KLVR_TextViewDidChangeSelection(QObject* view) {
    KLVR_TRACE("TextViewDidChangeSelection");
    auto* textView = qobject_cast<KLTextView*>(view);
    if (!textView || textView != mytextview())
        return;
    UpdateLine(textView);
    showDiagnosticOfLine(textView);
    KLVR_NSTIMER_STOP(tLastPosition);
    tLastPosition = KLVR_NSTIMER_INIT(this, QStringLiteral("dotLastPosition"), 5.0);
}

void Global::RefreshCompletionAsList() {
    KLVR_TRACE("RefreshCompletionAsList");
    for (qint64 i = 0; i < KLVR_NSDICTIONARY_COUNT(codes); ++i)
        if (auto* view = qobject_cast<KLTextView*>(KLVR_NSMUTABLEDICTIONARY_VALUE(codes, i).object()))
            KLVR_KLTEXTVIEW_TYPES(view, KelvaroTypes + ProjectTypes);
}
