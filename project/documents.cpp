// Documents: each source file opened since the project was opened keeps its own
// editor view in `codes`, so switching back shows its edits, undo history and cursor.
#include "editor/code.h"
#include "editor/kltextview.h"
#include "frame/global.h"
#include "frame/mainwindow.h"

namespace {
// The fixed objects: file name and the title the file selector shows for it.
struct FixedObject {
    const char* fileName;
    const char* title;
};
const FixedObject kAddedWhenMissing[] = {{"application.NSObject.klvr", "Application"},
                                         {"document.NSObject.klvr", "Document"},
                                         {"coredata.NSObject.klvr", "Core Data"},
                                         {"mysql.NSObject.klvr", "MySQL"}};
} // namespace

KLTextView* Global::mytextview() const { return mycode ? mycode->currentView() : nullptr; }

KLTextView* Global::documentView(const QString& path) const {
    return qobject_cast<KLTextView*>(KLVR_NSDICTIONARY_OBJECT(codes, path).object());
}

void Global::ProjectOpenCode(const QString& nameOrPath) {
    KLVR_TRACE("ProjectOpenCode");
    const QString path = KLVR_CONTAINS(nameOrPath, QStringLiteral("/"), true)
                             ? nameOrPath
                             : ProjectPath + QLatin1Char('/') + nameOrPath;
    const QString name = KLVR_FILENAME(path);
    // The document being left keeps nothing unsaved (the write goes on in the background).
    saveModifiedDocuments(SaveWait::Background);

    // The delegates are made from their templates when they are first opened.
    if (name == QLatin1String("AppDelegate.NSObject.klvr"))
        PerformAddAppDelegate();
    else if (name == QLatin1String("Preferences.KLPreferences.klvr"))
        PerformAddPreferencesDelegate();
    // The fixed objects that may not exist yet are listed before they are loaded.
    for (const FixedObject& fixed : kAddedWhenMissing)
        if (name == QLatin1String(fixed.fileName) && !KLVR_NSFILEMANAGER_EXISTSFILE(path) &&
            !projectFiles.contains(name))
            projectFiles.append(name);

    // The position being left, for Back.
    sLastPositionFile = KLVR_FILENAME(ProjectCurrentFilename());
    nLastPositionLine = KLVR_INTEGER(ProjectCurrentLine());
    KLVR_NSTIMER_STOP(tLastPosition);

    ProjectStatusBar(QStringLiteral("Opening ") + name);
    KLTextView* view = documentView(path);
    if (view) {
        UpdateLine(view);
        mycode->SetScrollView(view);
    } else {
        view = KLVR_KLTEXTVIEW_INIT(this, QStringLiteral("document"));
        view->setEditorFont(10);
        KLVR_KLTEXTVIEW_KEYWORDS(view, KelvaroKeywords);
        KLVR_KLTEXTVIEW_COMMANDS(view, KelvaroCommands);
        KLVR_KLTEXTVIEW_TYPES(view, KelvaroTypes + ProjectTypes);
        bLockTextDidChange = true;
        if (!KLVR_KLTEXTVIEW_LOAD(view, path)) {
            delete view;
            KLVR_MSGBOX(QStringLiteral("Could not load ") + path, QString());
            bLockTextDidChange = false;
            ProjectStatusBar(QString());
            return;
        }
        UpdateLine(view);
        KLVR_NSMUTABLEDICTIONARY_REPLACE(codes, path, Value(view));
        adoptDocument(view);
        mycode->SetScrollView(view);
        view->setCursorPosition(0, 0);
        bLockTextDidChange = false;
    }
    if (mymainwindow)
        mymainwindow->activateWindow();
    view->setFocus();
    ProjectStatusBar(QStringLiteral("Opened ") + name);
    nLastPositionLine2 = KLVR_KLTEXTVIEW_LINE(view);
    tLastPosition = KLVR_NSTIMER_INIT(this, QStringLiteral("dotLastPosition"), 5.0);
    // The search field's count follows the shown document.
    Perform_boxedSearchPerform(Value(), false);
}

void Global::ProjectReopenCode(const QString& name) {
    KLVR_TRACE("ProjectReopenCode");
    // The reload keeps the line; a document with unsaved changes asks first, and the
    // text it had stays one Undo away.
    if (KLTextView* view = documentView(ProjectPath + QLatin1Char('/') + name))
        checkDocumentOnDisk(view);
}

void Global::ProjectCloseCode(const QString& path) {
    KLVR_TRACE("ProjectCloseCode");
    KLTextView* view = documentView(path);
    // What was typed is saved before the document goes (or the user keeps it open).
    if (view && !saveBeforeLettingGo({view}))
        return;
    discardDocument(path);
}

QString Global::ProjectCurrentFilename() const {
    KLTextView* view = mytextview();
    if (!view || KLVR_CLASSNAME(view) != QLatin1String("KLTextView") || view == mycode->dummy)
        return QString();
    return KLVR_KLTEXTVIEW_FILENAME(view);
}

QString Global::ProjectCurrentLine() const {
    KLTextView* view = mytextview();
    return view ? QString::number(KLVR_KLTEXTVIEW_LINE(view)) : QStringLiteral("0");
}

void Global::ProjectCurrentCodeGotoLine(qint64 line) {
    if (!ProjectIsLoaded())
        return;
    if (KLTextView* view = mytextview())
        KLVR_KLTEXTVIEW_GOTOLINE(view, line);
}

void Global::performUserSave(const Value&) {
    KLVR_TRACE("performUserSave");
    if (!ProjectIsLoaded() || !mycode || !mycode->SomeDocumentOpened())
        return;
    KLTextView* view = mytextview();
    // An explicit save settles a difference with the disk that was left open.
    diskQuestions_.remove(view);
    checkDocumentOnDisk(view);
    userSaveUnderWay_ = true;
    mycode->Save(KLVR_KLTEXTVIEW_FILENAME(view));
    userSaveUnderWay_ = false;
}
