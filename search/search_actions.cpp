// Global's search commands: the project search panel and the toolbar's search field.
#include "editor/code.h"
#include "frame/global.h"
#include "frame/mainwindow.h"
#include "search/finddefinition.h"
#include "search/findreplacefile.h"

namespace {
void showPanel(QWidget* window) {
    window->show();
    window->raise();
    window->activateWindow();
}
} // namespace

findreplacefile* Global::ibfindreplacefile() {
    if (!projectSearch_)
        projectSearch_ = new findreplacefile(this);
    return projectSearch_;
}

void Global::FindReplaceFile(const Value&) { global_findreplacefile(); }

void Global::global_findreplacefile() {
    KLVR_TRACE("global_findreplacefile");
    if (ProjectIsLoaded())
        FindReplaceFileShow();
}

void Global::FindReplaceFileShow() { showPanel(ibfindreplacefile()->window); }

void Global::boxedSearchFile(const Value&) {
    KLVR_TRACE("boxedSearchFile");
    if (!ProjectIsLoaded() || !mymainwindow || !mymainwindow->boxedSearchFile)
        return;
    findreplacefile* panel = ibfindreplacefile();
    panel->cbFind->setCurrentText(mymainwindow->boxedSearchFile->text());
    panel->cbReplace->setCurrentText(QString());
    FindReplaceFileShow();
    panel->perform_pbFindAll();
}

void Global::openAtLine(const QString& name, qint64 line) {
    ProjectOpenCode(ProjectPath + QLatin1Char('/') + name);
    if (mycode)
        mycode->gotoline(line + 1);
}

finddefinition* Global::ibfinddefinition() {
    if (!findDefinition_)
        findDefinition_ = new finddefinition(this);
    return findDefinition_;
}

void Global::FindDefinition(const Value&) { global_finddefinition(); }

void Global::global_finddefinition() {
    KLVR_TRACE("global_finddefinition");
    if (ProjectIsLoaded())
        showPanel(ibfinddefinition()->window);
}

void Global::Definition(const Value&) { KLVR_MSGBOX(QString(), QStringLiteral("Not implemented yet")); }
