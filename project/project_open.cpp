// Opening a project folder: validation, listing and scanning its sources, and
// remembering it as the last and a recent project.
#include "frame/global.h"
#include "frame/mainwindow.h"

#include <QStatusBar>

void Global::OpenProject(const Value&) {
    KLVR_TRACE("OpenProject");
    KLVR_NSOPENPANEL_CANCHOOSEFILES(nullptr, false);
    KLVR_NSOPENPANEL_CANCHOOSEDIRECTORIES(nullptr, true);
    KLVR_NSOPENPANEL_ALLOWSMULTIPLESELECTION(nullptr, false);
    KLVR_NSOPENPANEL_TYPES(nullptr, {});
    if (KLVR_NSOPENPANEL_RUN(nullptr)) {
        QString path = KLVR_NSOPENPANEL_FILENAME(nullptr);
        if (KLVR_LEN(path) > 0)
            ProjectOpen(path);
    }
}

void Global::ProjectOpen(const Value& pathOrSender) {
    KLVR_TRACE("ProjectOpen");
    const QString path = KLVR_STRING(pathOrSender);
    ProjectStatusBar(QStringLiteral("Opening ") + path);
    ProjectPath = path;
    if (ProjectOpen2(path))
        ProjectStatusBar(QStringLiteral("Opened ") + path);
    else
        ProjectStatusBar(QString());
}

bool Global::ProjectOpen2(const QString& path) {
    KLVR_TRACE("ProjectOpen2");
    std::optional<QStringList> listing = KLVR_NSFILEMANAGER_LIST(path);
    if (!listing) {
        KLVR_MSGBOX(QStringLiteral("Selected folder is not valid"), QStringLiteral("Tried ") + path);
        return false;
    }
    bool hasGlobal = false;
    for (const QString& name : *listing)
        if (KLVR_ENDSWITH(name, QStringLiteral("Global.NSObject.klvr"), true))
            hasGlobal = true;
    if (!hasGlobal) {
        KLVR_MSGBOX(QStringLiteral("Selected folder is not a valid Kelvaro project"), QStringLiteral("Tried ") + path);
        return false;
    }
    KLVR_STEP("ProjectOpen2");
    stopRunningTask();
    projectFiles.clear();
    ProjectTypes.clear();
    for (const QString& name : *listing) {
        if (KLVR_FILEEXTENSION(name) != QLatin1String("klvr"))
            continue;
        if (KLVR_ENDSWITH(name, QStringLiteral("Global.NSObject.klvr"), true)) {
            projectFiles.insert(0, name);
        } else {
            projectFiles.append(name);
            ProjectTypes.append(KLVR_LEFT(name, KLVR_INSTR(name, QStringLiteral("."), 0, true)));
        }
    }
    const QString projectName = KLVR_FILENAME(path);
    if (mymainwindow)
        mymainwindow->setWindowTitle(KLVR_SPACE(KLVR_LEN(path) / 2 + 20 + KLVR_LEN(projectName), QStringLiteral(" ")) +
                                     projectName + KLVR_SPACE(20, QStringLiteral(" ")) + path);
    WelcomeClose();
    KLVR_NSFILEMANAGER_CREATEDIRECTORY(supportFolder());
    KLVR_WRITESTRING(path, supportFile(QStringLiteral("LastProject.txt")));
    UpdateRecentProjects(path);
    return true;
}

void Global::ProjectStatusBar(const QString& text) {
    if (mymainwindow)
        mymainwindow->statusBar()->showMessage(text);
}

bool Global::isBusy() const { return false; }
