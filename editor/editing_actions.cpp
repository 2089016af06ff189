// The editing commands of the application controller: line commands, case, automatic
// formatting, zoom, printing and "Export as PDF…". The text work lies in the editor
// view (one undo step each); these pick the view and report.
#include "frame/global.h"

#include "editor/code.h"
#include "editor/kltextview.h"
#include "editor/page_renderer.h"

#include <QFileInfo>

namespace {
constexpr qint64 NormalFontSize = 10;
constexpr qint64 SmallestFontSize = 4;
} // namespace

KLTextView* Global::editableView(bool toChange) {
    KLTextView* view = mytextview();
    if (!view || !mycode || view == mycode->dummy || view->fileName().isEmpty())
        return nullptr;
    if (toChange && view->isReadOnly()) {
        emit view->readOnlyEditAttempted();
        return nullptr;
    }
    return view;
}

void Global::Comment(const Value&) { global_comment(); }
void Global::Uncomment(const Value&) { global_uncomment(); }
void Global::ShiftLeft(const Value&) { global_shiftleft(); }
void Global::ShiftRight(const Value&) { global_shiftright(); }

void Global::global_comment() {
    KLVR_TRACE("global_comment");
    if (KLTextView* view = editableView())
        KLVR_KLTEXTVIEW_COMMENT(view);
}

void Global::global_uncomment() {
    KLVR_TRACE("global_uncomment");
    if (KLTextView* view = editableView())
        KLVR_KLTEXTVIEW_UNCOMMENT(view);
}

void Global::global_shiftleft() {
    KLVR_TRACE("global_shiftleft");
    if (KLTextView* view = editableView())
        KLVR_KLTEXTVIEW_SHIFTLEFT(view);
}

void Global::global_shiftright() {
    KLVR_TRACE("global_shiftright");
    if (KLTextView* view = editableView())
        KLVR_KLTEXTVIEW_SHIFTRIGHT(view);
}

void Global::ToLowerCase(const Value&) {
    KLVR_TRACE("ToLowerCase");
    if (KLTextView* view = editableView())
        KLVR_KLTEXTVIEW_LOWERCASE(view);
}

void Global::ToUpperCase(const Value&) {
    KLVR_TRACE("ToUpperCase");
    if (KLTextView* view = editableView())
        KLVR_KLTEXTVIEW_UPPERCASE(view);
}

void Global::AutoFormat(const Value&) {
    KLVR_TRACE("AutoFormat");
    if (KLTextView* view = editableView())
        KLVR_KLTEXTVIEW_AUTOFORMAT(view);
}

// ---------------------------------------------------------------- zoom

namespace {
// The shown view takes the size; the size file keeps it (not checked: a failed write
// leaves the next start at the old size).
void applyFontSize(Global* global, KLTextView* view) {
    view->setEditorFont(int(global->CurrentFontSize));
    KLVR_NSFILEMANAGER_CREATEDIRECTORY(Global::supportFolder());
    KLVR_WRITESTRING(QString::number(global->CurrentFontSize), Global::supportFile(QStringLiteral("CurrentFontSize.txt")));
}
} // namespace

void Global::ZoomBigger(const Value&) {
    KLVR_TRACE("ZoomBigger");
    if (KLTextView* view = editableView(false)) {
        CurrentFontSize = CurrentFontSize + 1;
        applyFontSize(this, view);
    }
}

void Global::ZoomNormal(const Value&) {
    KLVR_TRACE("ZoomNormal");
    if (KLTextView* view = editableView(false)) {
        CurrentFontSize = NormalFontSize;
        applyFontSize(this, view);
    }
}

void Global::ZoomSmaller(const Value&) {
    KLVR_TRACE("ZoomSmaller");
    if (KLTextView* view = editableView(false)) {
        if (CurrentFontSize > SmallestFontSize)
            CurrentFontSize = CurrentFontSize - 1;
        applyFontSize(this, view);
    }
}

// ---------------------------------------------------------------- printing

QString Global::printProjectTitle(const QString& documentPath) const {
    // A file shown without a project is printed under its folder's name.
    return KLVR_FILENAME(ProjectPath.isEmpty() ? QFileInfo(documentPath).absolutePath() : ProjectPath);
}

void Global::PrintIt(const Value&) {
    KLVR_TRACE("PrintIt");
    if (KLTextView* view = editableView(false))
        KLVR_KLTEXTVIEW_PRINTSHOWINGPRINTPANEL(view, printProjectTitle(view->fileName()),
                                               page_renderer::fileTitle(view->fileName()), true);
}

void Global::ExportPdf(const Value&) {
    KLVR_TRACE("ExportPdf");
    KLTextView* view = editableView(false);
    if (!view)
        return;
    const QString title = page_renderer::fileTitle(view->fileName());
    // Suggested beside the project, not in it: the project folder holds its sources.
    const QString folder = ProjectPath.isEmpty() ? QFileInfo(view->fileName()).absolutePath()
                                                 : QFileInfo(ProjectPath).absolutePath();
    const QString path = panels().savePanel(QStringLiteral("Export as PDF"),
                                            folder + QLatin1Char('/') + KLVR_FILENAME(view->fileName()).section(QLatin1Char('.'), 0, 0) +
                                                QStringLiteral(".pdf"),
                                            QStringLiteral("pdf"));
    if (path.isEmpty())
        return;
    // A PDF never takes the place of a document that is open here.
    const QFileInfo target(path);
    for (KLTextView* open : documentViews())
        if (target.exists() && QFileInfo(open->fileName()).canonicalFilePath() == target.canonicalFilePath()) {
            KLVR_MSGBOX(QStringLiteral("Could not export ") + path,
                        QStringLiteral("That file is an open document; choose another name."));
            return;
        }
    QString error;
    if (!view->exportPdf(path, printProjectTitle(view->fileName()), title, &error)) {
        KLVR_MSGBOX(QStringLiteral("Could not export ") + path, error);
        return;
    }
    ProjectStatusBar(QStringLiteral("Exported ") + KLVR_FILENAME(path));
}
