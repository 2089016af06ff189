// The menu bar made from the one menu table, and the enabling of its commands.
#include "frame/global.h"
#include "frame/menu_table.h"

#include <QHash>
#include <functional>

namespace {
// True when Global has an operation of that name (taking a Value or nothing).
bool responds(const QObject* target, const QString& name) {
    const QMetaObject* meta = target->metaObject();
    const QByteArray latin = name.toLatin1();
    return meta->indexOfMethod(latin + "(Value)") >= 0 || meta->indexOfMethod(latin + "()") >= 0;
}

const char* const kNeedsProject = "klvrNeedsProject";
const char* const kAvailable = "klvrAvailable";
} // namespace

QAction* Global::commandItem(const QString& title, const QString& action, QObject* parent) {
    auto* item = new QAction(title, parent);
    item->setObjectName(QStringLiteral("menu_") + action);
    const bool available = responds(this, action);
    item->setProperty(kAvailable, available);
    item->setEnabled(available);
    // The item is handed over by pointer: a rebuild may delete it while its command runs.
    connect(item, &QAction::triggered, this, [this, action, item = QPointer<QAction>(item)] {
        klvrInvoke(this, action, Value(item.data()));
    });
    return item;
}

QMenuBar* Global::buildMenuBar() {
    auto* bar = new QMenuBar();
    bar->setObjectName(QStringLiteral("menuBar"));
    QHash<QString, QMenu*> menus;
    // The menu of a path such as "&File/New &Class", made on first mention.
    std::function<QMenu*(const QString&)> menuAt = [&](const QString& path) -> QMenu* {
        if (QMenu* known = menus.value(path))
            return known;
        const qsizetype slash = path.lastIndexOf(QLatin1Char('/'));
        QMenu* menu = slash < 0 ? bar->addMenu(path) : menuAt(path.left(slash))->addMenu(path.mid(slash + 1));
        menu->setObjectName(QStringLiteral("menu_") + plainMenuTitle(path.mid(slash + 1)).remove(QLatin1Char(' ')));
        if (slash < 0)
            connect(menu, &QMenu::aboutToShow, this, [this, menu] { menuNeedsUpdate(menu); });
        menus.insert(path, menu);
        return menu;
    };
    for (const MenuEntry& entry : menuTable()) {
        const QString path = QString::fromUtf8(entry.menu);
        QMenu* menu = menuAt(path);
        switch (entry.kind) {
        case MenuEntry::Kind::Rebuilt:
            break;
        case MenuEntry::Kind::Separator:
            menu->addSeparator();
            break;
        case MenuEntry::Kind::RecentProjects:
            mRecentProjects = menu->addMenu(QString::fromUtf8(entry.title));
            mRecentProjects->setObjectName(QStringLiteral("mRecentProjects"));
            break;
        case MenuEntry::Kind::Command: {
            QAction* item = commandItem(QString::fromUtf8(entry.title), QString::fromLatin1(entry.action), menu);
            item->setShortcuts(menuKeys(entry));
            item->setMenuRole(entry.role);
            item->setProperty(kNeedsProject, entry.needsProject);
            menu->addAction(item);
            break;
        }
        }
    }
    menuBar_ = bar;
    updateMenuCommands();
    // The Windows menu's keys work before the menu is first opened.
    for (QMenu* menu : bar->findChildren<QMenu*>(Qt::FindDirectChildrenOnly))
        if (plainMenuTitle(menu->title()) == QLatin1String("Windows"))
            KLVR_MenuNeedsUpdate(menu);
    return bar;
}

void Global::updateMenuCommands() {
    if (!menuBar_)
        return;
    const bool loaded = ProjectIsLoaded();
    for (QAction* item : menuBar_->findChildren<QAction*>()) {
        const QVariant needs = item->property(kNeedsProject);
        if (needs.isValid())
            item->setEnabled(item->property(kAvailable).toBool() && (loaded || !needs.toBool()));
    }
}

void Global::menuNeedsUpdate(QMenu* menu) {
    // Every menu checks its commands against the project as it opens.
    updateMenuCommands();
    KLVR_MenuNeedsUpdate(menu);
}
