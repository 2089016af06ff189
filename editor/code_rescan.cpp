// The re-scan pipeline: one second after typing pauses the text is re-coloured and
// saved; five seconds later a background thread re-scans the file and the navigators
// are refilled on the interface thread.
#include "editor/code.h"

#include "editor/kltextview.h"
#include "frame/global.h"
#include "insight/parser.h"

void code::PerformTextDidChange() {
    KLVR_TRACE("PerformTextDidChange");
    KLTextView* view = currentView();
    if (!view || view == dummy || view->length() == 0)
        return;
    if (bTextDidChange)
        return;
    bTextDidChange = true;
    KLVR_KLTEXTVIEW_PERFORMSYNTAXHIGHLIGHTING(view);
    UpdateCodeInsight();
    bTextDidChange = false;
}

void code::UpdateCodeInsight() {
    KLVR_TRACE("UpdateCodeInsight");
    KLTextView* view = currentView();
    if (view && view != dummy) {
        // The parser reads the file from disk, so the file must hold what is scanned.
        // Every document with unsaved typing is written on its view's writer thread, in
        // order with earlier saves; a document without changes is never written.
        Global::sharedGlobal()->saveModifiedDocuments(Global::SaveWait::Background);
    }
    KLVR_NSTIMER_STOP(tUpdateTimer);
    tUpdateTimer = KLVR_NSTIMER_INIT(this, QStringLiteral("tUpdateTimerFired"), 5.0);
}

void code::tUpdateTimerFired() {
    KLVR_TRACE("tUpdateTimer");
    tUpdateTimer99();
}

void code::tUpdateTimer99() {
    KLVR_TRACE("tUpdateTimer99");
    KLVR_NSTIMER_STOP(tUpdateTimer);
    // The thread must not touch widgets: it is told the file to scan here.
    KLTextView* view = currentView();
    {
        QMutexLocker guard(&scanMutex_);
        scanPath_ = view && view != dummy ? KLVR_KLTEXTVIEW_FILENAME(view) : QString();
        pendingSave_ = {};
        if (!scanPath_.isEmpty() && view->isModified())
            pendingSave_ = view->saveInBackground(scanPath_);
    }
    thUpdateCodeInsight = KLVR_NSTHREAD_INIT(this, QStringLiteral("thUpdateCodeInsightBody"));
    KLVR_NSTHREAD_START(thUpdateCodeInsight);
}

void code::thUpdateCodeInsightBody() {
    KLVR_TRACE("thUpdateCodeInsight");
    if (btUpdateTimer.exchange(true))
        return; // a re-scan is running; this one is dropped, not queued
    struct Release {
        std::atomic<bool>& flag;
        ~Release() { flag = false; }
    } release{btUpdateTimer};
    QString path;
    std::shared_future<bool> save;
    {
        QMutexLocker guard(&scanMutex_);
        path = scanPath_;
        save = pendingSave_;
    }
    if (path.isEmpty())
        return;
    // The text of the last automatic save must be on disk before the scan reads it.
    if (save.valid())
        save.wait();
    parser::sharedparser()->ParseFile(path);
    KLVR_NSOBJECT_PERFORMSELECTORONMAINTHREAD(this, QStringLiteral("reloadMatrix"), Value(), true);
    QMetaObject::invokeMethod(this, &code::codeInsightUpdated, Qt::QueuedConnection);
}
