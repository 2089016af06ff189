#pragma once
// The menu bar, defined once: every fixed command with its menu, title, key and
// whether it needs an open project. `buildMenuBar` (frame/menu_bar.cpp) turns the
// table into menus; the menus that depend on the project or on folders on disk
// ("Xcode", "Examples", "Tools", "Windows") are only named here and are filled each
// time they open (frame/rebuilt_menus.cpp).

#include <QAction>
#include <QKeySequence>
#include <QList>
#include <span>

struct MenuEntry {
    enum class Kind {
        Command,        // an item that sends `action` to Global
        Separator,      // a line between groups
        RecentProjects, // the submenu that UpdateRecentProjects fills
        Rebuilt,        // a whole menu whose items are made when it opens
    };
    Kind kind;
    const char* menu;   // "&File", or "&File/New &Class" for a submenu
    const char* title;  // the item's title
    const char* action; // Global's operation, reached by name
    const char* keys;   // shortcuts, separated by ";" (portable text), or ""
    bool needsProject;  // disabled while no project is open
    QAction::MenuRole role = QAction::NoRole;
};

// The fixed items at the top of the rebuilt "Windows" menu; a null title is a separator.
struct WindowsMenuItem {
    const char* title;
    int tag;
    const char* keys;
};
std::span<const WindowsMenuItem> windowsMenuItems();
// The shortcuts of a "keys" text ("Ctrl+Meta+L;Ctrl+Alt+L").
QList<QKeySequence> keysOf(const char* keys);

// Every entry, in menu order; a menu appears in the bar where its first entry is.
std::span<const MenuEntry> menuTable();
// The shortcuts of an entry (empty for none).
QList<QKeySequence> menuKeys(const MenuEntry& entry);
// Every shortcut of the menu bar, also those of the rebuilt menus' fixed items: the
// editor view leaves these keys to the menus.
QList<QKeySequence> allMenuKeys();
// A menu's title without its mnemonic marks ("E&xamples" -> "Examples").
QString plainMenuTitle(const QString& title);
