// The menus rebuilt each time they open, because their content depends on the open
// project or on folders on disk: "Xcode" with its submenu "Remove xib", "Examples",
// "Tools" and "Windows". Each rebuild removes every item first; nothing is kept
// between openings.
#include "frame/global.h"
#include "frame/mainwindow.h"
#include "frame/menu_table.h"

namespace {
void removeItems(QMenu* menu) {
    // Submenus of an earlier opening go with their items.
    for (QMenu* sub : menu->findChildren<QMenu*>(Qt::FindDirectChildrenOnly)) {
        sub->setParent(nullptr);
        sub->deleteLater();
    }
    menu->clear();
}

QAction* heading(QMenu* menu, const QString& title) {
    QAction* item = menu->addAction(title);
    item->setEnabled(false);
    return item;
}

bool endsWithIgnoringCase(const QString& name, const QString& end) { return name.endsWith(end, Qt::CaseInsensitive); }
} // namespace

void Global::KLVR_MenuNeedsUpdate(QMenu* menu) {
    KLVR_TRACE("MenuNeedsUpdate");
    // A submenu's title is its item's text; "Remove xib" keeps its own name apart.
    const QVariant ownTitle = menu->property("klvrMenuTitle");
    const QString title = ownTitle.isValid() ? ownTitle.toString() : plainMenuTitle(menu->title());
    const QString resources = ProjectPath + QStringLiteral("/Resources");
    if (title == QLatin1String("Remove xib")) {
        removeItems(menu);
        for (const QString& entry : KLVR_FILE_LIST(resources))
            if (endsWithIgnoringCase(entry, QStringLiteral(".xib")) &&
                !endsWithIgnoringCase(entry, QStringLiteral("MainMenu.xib"))) {
                QAction* item = commandItem(KLVR_FILENAME(entry), QStringLiteral("RemoveNib"), menu);
                item->setData(entry);
                menu->addAction(item);
            }
    } else if (title == QLatin1String("Xcode")) {
        removeItems(menu);
        for (const QString& entry : KLVR_FILE_LIST(resources))
            if (endsWithIgnoringCase(entry, QStringLiteral(".xib"))) {
                QAction* item = commandItem(KLVR_FILENAME(entry), QStringLiteral("Xcode"), menu);
                item->setData(entry);
                menu->addAction(item);
            }
        menu->addSeparator();
        QMenu* remove = menu->addMenu(QStringLiteral("(Remove xib)"));
        remove->setProperty("klvrMenuTitle", QStringLiteral("Remove xib"));
        remove->menuAction()->setProperty("tag", 1);
        connect(remove, &QMenu::aboutToShow, this, [this, remove] { menuNeedsUpdate(remove); });
        menu->addSeparator();
        QAction* newXib = commandItem(QStringLiteral("(New xib...)"), QStringLiteral("Xcode"), menu);
        newXib->setProperty("tag", 2);
        menu->addAction(newXib);
    } else if (title == QLatin1String("Examples")) {
        removeItems(menu);
        BuildExampleMenu(menu, KLVR_NSBUNDLE_RESOURCEPATH() + QStringLiteral("/Examples"));
    } else if (title == QLatin1String("Tools")) {
        removeItems(menu);
        const QString tools[] = {QStringLiteral("/Applications/Utilities/Terminal.app"),
                                 QStringLiteral("/Applications/Utilities/Activity Monitor.app"),
                                 QStringLiteral("/Applications/TextEdit.app")};
        for (const QString& path : tools) {
            if (!menu->isEmpty())
                menu->addSeparator();
            QAction* item = ToolMenuItem(path);
            item->setParent(menu);
            menu->addAction(item);
        }
    } else if (title == QLatin1String("Windows")) {
        removeItems(menu);
        for (const WindowsMenuItem& row : windowsMenuItems()) {
            if (!row.title) {
                menu->addSeparator();
                continue;
            }
            QAction* item = commandItem(QLatin1String(row.title), QStringLiteral("Windows"), menu);
            item->setProperty("tag", row.tag);
            item->setShortcuts(keysOf(row.keys));
            menu->addAction(item);
        }
        heading(menu, QStringLiteral("Classes:"));
        QString globalFile, delegateFile, preferencesFile;
        const QStringList hidden = {QStringLiteral("application.NSObject.klvr"), QStringLiteral("document.NSObject.klvr"),
                                    QStringLiteral("coredata.NSObject.klvr"), QStringLiteral("mysql.NSObject.klvr")};
        for (const QString& name : projectFiles) {
            if (name == QLatin1String("Global.NSObject.klvr"))
                globalFile = name;
            else if (name == QLatin1String("AppDelegate.NSObject.klvr"))
                delegateFile = name;
            else if (name == QLatin1String("Preferences.KLPreferences.klvr"))
                preferencesFile = name;
            else if (!hidden.contains(name)) {
                QAction* item = commandItem(name, QStringLiteral("Windows"), menu);
                item->setData(name);
                menu->addAction(item);
            }
        }
        const auto object = [&](const QString& itemTitle, const QString& file) {
            QAction* item = commandItem(itemTitle, QStringLiteral("Windows"), menu);
            item->setData(file);
            menu->addAction(item);
        };
        if (!globalFile.isEmpty()) {
            menu->addSeparator();
            heading(menu, QStringLiteral("Objects:"));
            object(QStringLiteral("Global"), globalFile);
        }
        if (!delegateFile.isEmpty()) {
            menu->addSeparator();
            object(QStringLiteral("App Delegate"), delegateFile);
        }
        if (!preferencesFile.isEmpty())
            object(QStringLiteral("Preferences Delegate"), preferencesFile);
    }
}

void Global::BuildExampleMenu(QMenu* menu, const QString& folder) {
    for (const QString& name : KLVR_FILE_LIST(folder)) {
        if (name.startsWith(QLatin1Char('.')))
            continue;
        const QString path = folder + QLatin1Char('/') + name;
        if (KLVR_NSFILEMANAGER_EXISTSDIRECTORY(path) &&
            !KLVR_NSFILEMANAGER_EXISTSFILE(path + QStringLiteral("/Global.NSObject.klvr"))) {
            BuildExampleMenu(menu->addMenu(name), path); // a group of examples
            continue;
        }
        QAction* item = commandItem(name, QStringLiteral("Examples"), menu);
        item->setData(path);
        menu->addAction(item);
    }
}

QAction* Global::ToolMenuItem(const QString& path) {
    QAction* item = commandItem(KLVR_FILENAME(path), QStringLiteral("Tools"), nullptr);
    item->setData(path);
    return item;
}

namespace {
QAction* senderItem(const Value& sender) { return qobject_cast<QAction*>(sender.object()); }
QString representedObject(const Value& sender) {
    QAction* item = senderItem(sender);
    return item ? item->data().toString() : QString();
}
int tagOf(const Value& sender) {
    QAction* item = senderItem(sender);
    return item ? item->property("tag").toInt() : 0;
}
void showPanel(QWidget* panel) {
    if (!panel)
        return;
    panel->show();
    panel->raise();
}
} // namespace

void Global::Examples(const Value& sender) {
    KLVR_TRACE("Examples");
    const QString path = representedObject(sender);
    if (!path.isEmpty())
        OpenExample(path); // opened through its copy, never in the application folder
}

void Global::Tools(const Value& sender) {
    KLVR_TRACE("Tools");
    KLVR_LAUNCH(representedObject(sender), QString(), true);
}

void Global::Windows(const Value& sender) {
    KLVR_TRACE("Windows");
    switch (tagOf(sender)) {
    case 1:
        if (mymainwindow)
            mymainwindow->showMinimized();
        break;
    case 2:
        if (mymainwindow)
            mymainwindow->isMaximized() ? mymainwindow->showNormal() : mymainwindow->showMaximized();
        break;
    case 3:
        global_runlogpanel();
        break;
    case 4:
        global_compilerlogpanel();
        break;
    case 5:
        showPanel(DebugPanel);
        break;
    default:
        if (const QString name = representedObject(sender); !name.isEmpty() && ProjectIsLoaded())
            ProjectOpenCode(name);
    }
}
