// Global's search commands: the project search panel and the toolbar's search field.
#include "editor/code.h"
#include "frame/global.h"
#include "frame/mainwindow.h"
#include "search/finddefinition.h"
#include "search/findreplace.h"
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

void Global::installSearchControls() {
    boxedSearchInfo = new QLabel(QStringLiteral("Search"));
    boxedSearchInfo->setObjectName(QStringLiteral("boxedSearchInfo"));
    boxedSearch = new QLineEdit();
    boxedSearch->setObjectName(QStringLiteral("boxedSearch"));
    boxedSearch->setPlaceholderText(QStringLiteral("Find in file"));
    boxedSearch->setClearButtonEnabled(true);
    boxedSearch->setMaximumWidth(200);
    boxedSearch->setMinimumWidth(120);
    mycode->insertBesideLine(boxedSearchInfo);
    mycode->insertBesideLine(boxedSearch);
    connect(boxedSearch, &QLineEdit::returnPressed, this, [this] { boxedSearchPerform(); });
}

findreplace* Global::ibfindreplace() {
    if (!findReplace_)
        findReplace_ = new findreplace(this);
    return findReplace_;
}

void Global::FindReplace(const Value&) { global_findreplace(); }

void Global::global_findreplace() {
    KLVR_TRACE("global_findreplace");
    if (ProjectIsLoaded())
        showPanel(ibfindreplace()->window);
}

void Global::FindNext(const Value&) { global_findnext(); }

void Global::global_findnext() {
    KLVR_TRACE("global_findnext");
    if (ProjectIsLoaded())
        ibfindreplace()->FindNext();
}

void Global::boxedSearchPerform(const Value& sender) { Perform_boxedSearchPerform(sender, true); }

void Global::boxedSearchNext(const Value&) { ibfindreplace()->do_pbNext(boxedSearch, true); }

void Global::boxedSearchPrevious(const Value&) { ibfindreplace()->do_pbPrevious(boxedSearch); }

void Global::Perform_boxedSearchPerform(const Value&, bool bFind) {
    KLVR_TRACE("Perform_boxedSearchPerform");
    if (!ProjectIsLoaded() || !boxedSearch)
        return;
    const QString text = boxedSearch->text();
    if (text.isEmpty() && !findReplace_)
        return; // a panel not made yet has nothing to clear
    findreplace* panel = ibfindreplace();
    panel->cbFind->setCurrentText(text);
    panel->cbReplace->setCurrentText(QString());
    if (!text.isEmpty())
        panel->do_pbNext(boxedSearch, bFind);
}
