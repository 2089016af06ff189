#include "search/findreplace.h"

#include "editor/kltextview.h"
#include "frame/global.h"
#include "search/result_table.h"
#include "ui_findreplace.h"

#include <QLineEdit>

findreplace::findreplace(QObject* owner) : QObject(owner), ui_(std::make_unique<Ui::FindReplace>()) {
    window = new QWidget(nullptr, Qt::Tool);
    ui_->setupUi(window);
    cbFind = ui_->cbFind;
    cbReplace = ui_->cbReplace;
    cbIgnoreCase = ui_->cbIgnoreCase;
    cbSelectedTextOnly = ui_->cbSelectedTextOnly;
    lInfo = ui_->lInfo;
    connect(ui_->pbNext, &QPushButton::clicked, this, [this] { pbNext(); });
    connect(ui_->pbPrevious, &QPushButton::clicked, this, [this] { pbPrevious(); });
    connect(ui_->pbReplace, &QPushButton::clicked, this, [this] { pbReplace(); });
    connect(ui_->pbReplaceFind, &QPushButton::clicked, this, [this] { pbReplaceFind(); });
    connect(ui_->pbReplaceAll, &QPushButton::clicked, this, [this] { pbReplaceAll(); });
    connect(cbFind->lineEdit(), &QLineEdit::returnPressed, this, [this] { pbNext(); });
    awakeFromNib();
}

findreplace::~findreplace() {
    klvr_frame::forget<findreplace>(this);
    delete window;
}

void findreplace::SetOptions() {
    if (KLTextView* view = Global::sharedGlobal()->mytextview()) {
        KLVR_KLTEXTVIEW_FINDSETOPTIONIGNORECASE(view, cbIgnoreCase->isChecked());
        KLVR_KLTEXTVIEW_FINDSETOPTIONSELECTEDTEXTONLY(view, cbSelectedTextOnly->isChecked());
    }
}

void findreplace::do_pbNext(QObject* sender, bool bFind) {
    KLVR_TRACE("do_pbNext");
    Global* global = Global::sharedGlobal();
    KLTextView* view = global->mytextview();
    if (!view)
        return;
    SetOptions();
    const bool fromField = sender && sender == global->boxedSearch;
    if (fromField)
        cbFind->setCurrentText(global->boxedSearch->text());
    const QString needle = cbFind->currentText();
    if (bFind && !KLVR_KLTEXTVIEW_FINDNEXT(view, needle)) {
        lInfo->setText(needle.isEmpty() ? QString() : QStringLiteral("Not found"));
    } else {
        const qint64 count = KLVR_COUNT(view->text(), needle, !cbIgnoreCase->isChecked());
        if (count == 0)
            lInfo->setText(needle.isEmpty() ? QString() : QStringLiteral("Not found"));
        else
            lInfo->setText(QString::number(count) + QStringLiteral(" found"));
        applyHistory(cbFind);
    }
    if (fromField && global->boxedSearchInfo)
        global->boxedSearchInfo->setText(lInfo->text().isEmpty() ? QStringLiteral("Search") : lInfo->text());
}

void findreplace::do_pbPrevious(QObject*) {
    KLVR_TRACE("do_pbPrevious");
    KLTextView* view = Global::sharedGlobal()->mytextview();
    if (!view)
        return;
    SetOptions();
    if (!KLVR_KLTEXTVIEW_FINDPREVIOUS(view, cbFind->currentText())) {
        lInfo->setText(QStringLiteral("Not found"));
        return;
    }
    lInfo->setText(QString());
    applyHistory(cbFind);
}

void findreplace::pbNext(const Value&) { do_pbNext(nullptr, true); }
void findreplace::pbPrevious(const Value&) { do_pbPrevious(nullptr); }
void findreplace::FindNext() { do_pbNext(nullptr, true); }

void findreplace::pbReplace(const Value&) {
    KLVR_TRACE("pbReplace");
    KLTextView* view = Global::sharedGlobal()->mytextview();
    if (!view)
        return;
    SetOptions();
    if (KLVR_KLTEXTVIEW_FINDREPLACE(view, cbReplace->currentText()))
        applyHistory(cbReplace);
}

void findreplace::pbReplaceFind(const Value&) {
    KLVR_TRACE("pbReplaceFind");
    KLTextView* view = Global::sharedGlobal()->mytextview();
    if (!view)
        return;
    SetOptions();
    if (KLVR_KLTEXTVIEW_FINDREPLACEFIND(view, cbFind->currentText(), cbReplace->currentText())) {
        applyHistory(cbFind);
        applyHistory(cbReplace);
    }
}

void findreplace::pbReplaceAll(const Value&) {
    KLVR_TRACE("pbReplaceAll");
    KLTextView* view = Global::sharedGlobal()->mytextview();
    if (!view)
        return;
    SetOptions();
    const qint64 n = KLVR_KLTEXTVIEW_FINDREPLACEALL(view, cbFind->currentText(), cbReplace->currentText());
    lInfo->setText(QString::number(n) + QStringLiteral(" replaced"));
    if (n > 0) {
        applyHistory(cbFind);
        applyHistory(cbReplace);
    }
}
