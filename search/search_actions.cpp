// Global's search commands: the project search panel and the toolbar's search field.
#include "frame/global.h"
#include "frame/mainwindow.h"
#include "search/findreplacefile.h"

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

void Global::FindReplaceFileShow() {
    QWidget* window = ibfindreplacefile()->window;
    window->show();
    window->raise();
    window->activateWindow();
}

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
