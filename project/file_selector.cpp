// The toolbar's two pop-ups: the file selector (classes and fixed objects) and the
// event selector, which inserts an event skeleton into the shown file.
#include "editor/code.h"
#include "editor/kltextview.h"
#include "frame/global.h"

#include <QComboBox>
#include <QStandardItemModel>

namespace {
// The seven fixed objects in the order titles are looked up.
const std::pair<const char*, const char*> kFixedObjects[] = {
    {"Global.NSObject.klvr", "Global"},
    {"AppDelegate.NSObject.klvr", "App Delegate"},
    {"Preferences.KLPreferences.klvr", "Preferences Delegate"},
    {"application.NSObject.klvr", "Application"},
    {"document.NSObject.klvr", "Document"},
    {"coredata.NSObject.klvr", "Core Data"},
    {"mysql.NSObject.klvr", "MySQL"},
};

QString fixedTitleFor(const QString& path) {
    for (const auto& [file, title] : kFixedObjects)
        if (KLVR_ENDSWITH(path, QLatin1String(file), true))
            return QLatin1String(title);
    return QString();
}

void addDisabled(QComboBox* popUp, const QString& title) {
    popUp->addItem(title);
    auto* model = qobject_cast<QStandardItemModel*>(popUp->model());
    if (model)
        model->item(popUp->count() - 1)->setEnabled(false);
}
} // namespace

void Global::UpdateToolbarSelector(const QString& path) {
    KLVR_TRACE("UpdateToolbarSelector");
    if (!pubProject || !pubEvent)
        return;
    const QSignalBlocker quietProject(pubProject);
    const QSignalBlocker quietEvent(pubEvent);
    pubProject->clear();
    QString title = fixedTitleFor(path);
    pubProject->addItem(title.isEmpty() ? KLVR_FILENAME(path) : title);
    addDisabled(pubProject, QStringLiteral("Classes:"));
    for (const QString& name : projectFiles)
        if (fixedTitleFor(name).isEmpty())
            pubProject->addItem(name);
    pubProject->insertSeparator(pubProject->count());
    addDisabled(pubProject, QStringLiteral("Objects:"));
    pubProject->addItems({QStringLiteral("Global"), QStringLiteral("App Delegate"),
                          QStringLiteral("Preferences Delegate")});
    pubProject->setCurrentIndex(0);

    pubEvent->clear();
    pubEvent->addItem(getSuperClassName(path));
    addDisabled(pubEvent, QStringLiteral("NSObject:"));
    pubEvent->addItems({QStringLiteral("  Event Init()"), QStringLiteral("  Event AwakeFromNib()"),
                        QStringLiteral("  Event Finalize()")});
    pubEvent->setCurrentIndex(0);
}

void Global::pubProjectChosen(const QString& title) {
    KLVR_TRACE("pubProject");
    if (title == QLatin1String("Classes:") || title == QLatin1String("Objects:"))
        return;
    QString name = title;
    for (const auto& [file, fixedTitle] : kFixedObjects)
        if (title == QLatin1String(fixedTitle))
            name = QLatin1String(file);
    ProjectOpenCode(ProjectPath + QLatin1Char('/') + name);
}

void Global::pubEventChosen(const QString& title) {
    KLVR_TRACE("pubEvent");
    KLTextView* view = mytextview();
    if (!KLVR_CONTAINS(title, QStringLiteral(" Event "), false) || !view || !mycode->SomeDocumentOpened())
        return;
    KLVR_KLTEXTVIEW_FINDSETOPTIONSELECTEDTEXTONLY(view, false);
    const QString event = KLVR_TRIM(title);
    const QString keyword = KLVR_LEFT(event, KLVR_INSTR(event, QStringLiteral(" "), 0, true));
    // The event line is searched with the line break in front of it, so an event on the
    // very first line is not found and a second copy is appended.
    if (!KLVR_KLTEXTVIEW_FINDNEXT(view, QStringLiteral("\n") + event) && !view->isFileReadOnly()) {
        // Inserted at the end rather than the whole text set, so it is one undo step
        // after the earlier history; its line breaks are the file's own.
        view->insertAsOneStep(view->documentText().size(), QStringLiteral("\n\n") + event +
                                                               QStringLiteral("\n  \nEnd ") + keyword +
                                                               QStringLiteral("\n"));
        view->SendScintilla(QsciScintilla::SCI_GOTOPOS, 0);
        KLVR_KLTEXTVIEW_FINDNEXT(view, QStringLiteral("\n") + event);
    }
    const QSignalBlocker quiet(pubEvent);
    pubEvent->setCurrentIndex(0);
}
