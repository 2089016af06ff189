// The code pane: construction, showing and emptying documents, and saving.
#include "editor/code.h"

#include "editor/kltextview.h"
#include "frame/global.h"
#include "frame/mainwindow.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QStackedLayout>

code::code() { Init(); }

code::~code() { klvr_frame::forget<code>(this); }

void code::Init() {
    setObjectName(QStringLiteral("code"));
    buildInterface();
    dummy = KLVR_KLTEXTVIEW_INIT(this, QStringLiteral("dummy"));
    tUpdateTimer = KLVR_NSTIMER_INIT(this, QStringLiteral("tUpdateTimerFired"));
    thUpdateCodeInsight = KLVR_NSTHREAD_INIT(this, QStringLiteral("thUpdateCodeInsightBody"));
    bAlreadyRunning = false;
    bTextDidChange = false;
    btUpdateTimer = false;
    stack_->addWidget(dummy);
    stack_->setCurrentWidget(dummy);
    scrollview = dummy;
}

void code::KLVR_AwakeFromNib() {
    KLVR_TRACE("AwakeFromNib");
    dummy->setEditorFont(12);
    dummy->setReadOnly(true);
    line->setText(QString());
    delegates->clear();
    delegates->addItems({QStringLiteral("Delegate")});
    delegates->insertSeparator(1);
    delegates->addItem(QStringLiteral("TableView"));
    syntax->clear();
    syntax->addItem(QStringLiteral("Definition"));
    syntax->insertSeparator(1);
    syntax->addItems({"Sub", "Function", "Action", "Dim", "Const", "Event", "Delegate", "IBOutlet", "IBAction"});
    syntax2->clear();
    syntax2->addItem(QStringLiteral("Condition"));
    syntax2->insertSeparator(1);
    syntax2->addItems({"If Then", "If Then Else", "If Then Else Else If"});
    syntax3->clear();
    syntax3->addItem(QStringLiteral("Loop"));
    syntax3->insertSeparator(1);
    syntax3->addItem(QStringLiteral("For Next"));
}

void code::showDocumentInfo() {
    KLTextView* view = currentView();
    if (!documentInfo)
        return;
    if (!SomeDocumentOpened() || view->fileName().isEmpty()) {
        documentInfo->clear();
        return;
    }
    QString info = view->encodingName() + QStringLiteral(" \u00b7 ") + view->lineEndName();
    if (view->isFileReadOnly())
        info += QStringLiteral(" \u00b7 Read-only");
    documentInfo->setText(info);
    documentInfo->setToolTip(view->isFileReadOnly() ? view->fileName() + QStringLiteral(" cannot be written.")
                                                    : QString());
}

bool code::SomeDocumentOpened() const { return scrollview && scrollview != dummy; }

void code::SetScrollView(KLTextView* view) {
    KLVR_TRACE("SetScrollView");
    if (bAlreadyRunning || !view)
        return;
    bAlreadyRunning = true;
    if (stack_->indexOf(view) < 0)
        stack_->addWidget(view);
    stack_->setCurrentWidget(view);
    scrollview = view;
    KLVR_KLTEXTVIEW_TURNOFFWRAPPING(view);
    view->setReadOnly(view->isFileReadOnly());
    KLVR_KLTEXTVIEW_TURNONAUTOINDENT(view);
    view->setEditorFont(int(Global::sharedGlobal()->CurrentFontSize));
    Global::sharedGlobal()->UpdateToolbarSelector(KLVR_KLTEXTVIEW_FILENAME(view));
    reloadMatrix();
    showDocumentInfo();
    bAlreadyRunning = false;
}

void code::SetEmpty() {
    KLVR_TRACE("SetEmpty");
    Global* global = Global::sharedGlobal();
    KLTextView* empty = KLVR_KLTEXTVIEW_INIT(global, QStringLiteral("empty"));
    // Views that are no document any more (earlier empty ones) are let go; cached
    // documents stay in the container, owned by it, until their project is replaced.
    for (int i = stack_->count() - 1; i >= 0; --i) {
        auto* old = qobject_cast<KLTextView*>(stack_->widget(i));
        if (old && old != dummy && KLVR_KLTEXTVIEW_FILENAME(old).isEmpty())
            old->deleteLater();
    }
    SetScrollView(empty);
    global->ProjectStatusBar(QString());
    line->setText(QString());
    if (global->mymainwindow)
        global->mymainwindow->setWindowTitle(QString());
    const QString fontSizeFile = Global::supportFile(QStringLiteral("CurrentFontSize.txt"));
    if (KLVR_NSFILEMANAGER_EXISTSFILE(fontSizeFile))
        global->CurrentFontSize = KLVR_INTEGER(KLVR_READSTRING(fontSizeFile));
    empty->setEditorFont(int(global->CurrentFontSize));
}

bool code::Save(const QString& path) {
    KLVR_TRACE("Save");
    KLTextView* view = currentView();
    Global* global = Global::sharedGlobal();
    const QString name = KLVR_FILENAME(KLVR_KLTEXTVIEW_FILENAME(view));
    global->ProjectStatusBar(QStringLiteral("Saving ") + name);
    // A difference with the disk settled while saving may have saved the text itself.
    if (!KLVR_KLTEXTVIEW_SAVE(view, path) && view->isModified()) {
        KLVR_MSGBOX(QString(), QStringLiteral("Could not save ") + path);
        return false;
    }
    global->ProjectStatusBar(QStringLiteral("Saved ") + name);
    return true;
}

void code::gotoline(qint64 n) {
    KLVR_TRACE("gotoline");
    if (SomeDocumentOpened())
        KLVR_KLTEXTVIEW_GOTOLINE(currentView(), n - 1);
}
