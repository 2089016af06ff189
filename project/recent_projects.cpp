// The recent-projects list: at most five folders, newest first, kept in the support
// folder and shown in the "Open Recent" menu.
#include "frame/global.h"

#include <QAction>

void Global::UpdateRecentProjects(const QString& path) {
    KLVR_TRACE("UpdateRecentProjects");
    const QString listFile = supportFile(QStringLiteral("RecentProjects.txt"));
    if (KLVR_LEN(path) > 0) {
        // No check for duplicates: a project opened again gets a second entry on top.
        aRecentProjects.insert(0, path);
        if (aRecentProjects.size() > 5)
            aRecentProjects.removeLast();
        KLVR_WRITEARRAY(aRecentProjects, listFile);
    } else if (KLVR_NSFILEMANAGER_EXISTSFILE(listFile)) {
        aRecentProjects = KLVR_READARRAY(listFile);
    }
    if (!mRecentProjects)
        return;
    mRecentProjects->clear();
    for (const QString& project : aRecentProjects) {
        QAction* item = mRecentProjects->addAction(project);
        item->setEnabled(true);
        item->setData(project);
        connect(item, &QAction::triggered, this, [this, item] { RecentProjectChosen(Value(item)); });
    }
}

void Global::RecentProjectChosen(const Value& sender) {
    KLVR_TRACE("RecentProjects");
    auto* item = qobject_cast<QAction*>(sender.object());
    if (item)
        ProjectOpen(item->data().toString());
}
