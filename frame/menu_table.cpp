// The one table of the menu bar.
//
// Keys: the "command" modifier of the key equivalents is Ctrl here, "control" is
// Meta; where an item needs both, Ctrl+Alt is offered as well, because desktops often
// keep Meta combinations for themselves (docs/ARCHITECTURE.md, "Menus and keys").
#include "frame/menu_table.h"

namespace {
using K = MenuEntry::Kind;
constexpr bool P = true;  // needs an open project
constexpr bool A = false; // always available

const MenuEntry kEntries[] = {
    {K::Command, "&File", "New Project…", "NewProject", "Ctrl+Shift+N", A},
    {K::Command, "&File", "Open…", "OpenProject", "Ctrl+O", A},
    {K::RecentProjects, "&File", "Recent Projects", "", "", A},
    {K::Separator, "&File", "", "", "", A},
    {K::Command, "&File/New &Class", "Object", "NewFileObject", "Ctrl+N", P},
    {K::Command, "&File/New &Class", "View", "NewFileView", "", P},
    {K::Command, "&File/New &Class", "Window", "NewFileWindow", "", P},
    {K::Command, "&File/New &Class", "Other…", "NewFileXYZ", "", P},
    {K::Command, "&File", "Delete File…", "NewFileDelete", "", P},
    {K::Command, "&File", "Rename File…", "NewFileRename", "", P},
    {K::Command, "&File", "Duplicate File…", "NewFileDuplicate", "", P},
    {K::Separator, "&File", "", "", "", A},
    {K::Command, "&File", "Add App Delegate", "AddAppDelegate", "", P},
    {K::Command, "&File", "Add Preferences Delegate", "AddPreferencesDelegate", "", P},
    {K::Command, "&File", "Add Objective-C Class…", "NewObjCClass", "", P},
    {K::Command, "&File", "Add Resource File…", "AddResourceFile", "", P},
    {K::Command, "&File", "Add Framework…", "AddFramework", "", P},
    {K::Separator, "&File", "", "", "", A},
    {K::Command, "&File", "Application Icon…", "SelectAppIcon", "", P},
    {K::Command, "&File", "Info.plist in TextEdit", "InfoPlist", "", P},
    {K::Command, "&File", "Info.plist in Xcode", "InfoPlist2", "", P},
    {K::Command, "&File", "Show Project in Finder", "FinderProject", "", P},
    {K::Command, "&File", "Show Resources in Finder", "Finder", "", P},
    {K::Command, "&File", "Terminal in Project Folder", "CD", "", P},
    {K::Separator, "&File", "", "", "", A},
    {K::Command, "&File", "Save", "performUserSave", "Ctrl+S", P},
    {K::Command, "&File", "Close", "CloseDocument", "Ctrl+W", P},
    {K::Separator, "&File", "", "", "", A},
    {K::Command, "&File", "Quit", "Quit", "Ctrl+Q", A, QAction::QuitRole},

    {K::Command, "&Edit", "Undo", "Undo", "Ctrl+Z", A},
    {K::Command, "&Edit", "Redo", "Redo", "Ctrl+Shift+Z;Ctrl+Y", A},
    {K::Separator, "&Edit", "", "", "", A},
    {K::Command, "&Edit", "Cut", "Cut", "Ctrl+X", A},
    {K::Command, "&Edit", "Copy", "Copy", "Ctrl+C", A},
    {K::Command, "&Edit", "Paste", "Paste", "Ctrl+V", A},
    {K::Command, "&Edit", "Select All", "SelectAll", "Ctrl+A", A},
    {K::Separator, "&Edit", "", "", "", A},
    {K::Command, "&Edit", "Comment", "Comment", "Ctrl+/", P},
    {K::Command, "&Edit", "Uncomment", "Uncomment", "Ctrl+Shift+/;Ctrl+?", P},
    {K::Command, "&Edit", "Shift Left", "ShiftLeft", "Ctrl+[", P},
    {K::Command, "&Edit", "Shift Right", "ShiftRight", "Ctrl+]", P},
    {K::Command, "&Edit", "Upper Case", "ToUpperCase", "Ctrl+Shift+U", P},
    {K::Command, "&Edit", "Lower Case", "ToLowerCase", "Ctrl+U", P},
    {K::Command, "&Edit", "Auto Format", "AutoFormat", "Ctrl+Shift+I", P},
    {K::Separator, "&Edit", "", "", "", A},
    {K::Command, "&Edit", "Zoom In", "ZoomBigger", "Ctrl++;Ctrl+=", P},
    {K::Command, "&Edit", "Zoom Normal", "ZoomNormal", "Ctrl+0", P},
    {K::Command, "&Edit", "Zoom Out", "ZoomSmaller", "Ctrl+-", P},
    {K::Separator, "&Edit", "", "", "", A},
    {K::Command, "&Edit", "Print…", "PrintIt", "Ctrl+P", P},
    {K::Command, "&Edit", "Export as PDF…", "ExportPdf", "Ctrl+Shift+P", P},

    {K::Command, "F&ind", "Find…", "FindReplace", "Ctrl+F", P},
    {K::Command, "F&ind", "Find Next", "FindNext", "F3", P},
    {K::Command, "F&ind", "Find Previous", "boxedSearchPrevious", "Shift+F3", P},
    {K::Command, "F&ind", "Replace…", "FindReplace", "Ctrl+H", P},
    {K::Separator, "F&ind", "", "", "", A},
    {K::Command, "F&ind", "Find in Project…", "FindReplaceFile", "Ctrl+Shift+F", P},
    {K::Command, "F&ind", "Find Definition…", "FindDefinition", "Ctrl+Shift+D", P},
    {K::Separator, "F&ind", "", "", "", A},
    {K::Command, "F&ind", "Go to Line…", "GoToLine", "Ctrl+G", P},
    {K::Command, "F&ind", "Back", "LastPosition", "Alt+Left", P},

    {K::Command, "&Build", "Build", "Build", "Ctrl+B", P},
    {K::Command, "&Build", "Run", "Run", "Ctrl+R", P},
    {K::Command, "&Build", "Go", "Go", "Ctrl+Shift+R", P},
    {K::Command, "&Build", "Stop", "Stop", "Ctrl+.", A},
    {K::Separator, "&Build", "", "", "", A},
    {K::Command, "&Build", "Clean", "Clean", "", P},
    {K::Command, "&Build", "Deploy", "ReleaseUniversal", "", P},
    {K::Separator, "&Build", "", "", "", A},
    {K::Command, "&Build", "Last Error", "LastError", "Ctrl+E", P},
    {K::Command, "&Build", "Toggle Breakpoint", "Breakpoint", "F9", P},
    {K::Separator, "&Build", "", "", "", A},
    {K::Command, "&Build", "Interface Builder", "IB", "Ctrl+I", P},
    {K::Command, "&Build", "Preferences Interface", "Preferences", "", P},
    {K::Command, "&Build", "Open in Xcode", "OpenXcodeProjectGUI", "", P},
    {K::Command, "&Build", "Sequel Pro", "MySQL", "", P},
    {K::Command, "&Build", "MySQL Administrator", "MySQLAdmin", "", A},

    {K::Rebuilt, "&Xcode", "", "", "", A},
    {K::Rebuilt, "Exa&mples", "", "", "", A},
    {K::Rebuilt, "&Tools", "", "", "", A},
    {K::Rebuilt, "&Windows", "", "", "", A},

    {K::Command, "&Help", "Quick Start", "QuickStart", "F1", A},
    {K::Command, "&Help", "User's Guide", "UsersGuide", "", A},
    {K::Command, "&Help", "Release Notes", "ReleaseNotes", "", A},
    {K::Command, "&Help", "Language Reference", "LanguageReference", "", A},
    {K::Command, "&Help", "Interface Builder Guide", "theInterfaceBuilder", "", A},
    {K::Command, "&Help", "Cocoa Frameworks", "CocoaFrameworks", "", A},
    {K::Command, "&Help", "About Xcode Integration", "AboutXcodeIntegration", "", A},
    {K::Command, "&Help", "Forum", "Forum", "", A},
    {K::Separator, "&Help", "", "", "", A},
    {K::Command, "&Help", "Plug-ins", "Plugins", "", A},
    {K::Command, "&Help", "Preferences…", "OpenPreferences", "Ctrl+,", A, QAction::PreferencesRole},
    {K::Command, "&Help", "About Kelvaro", "About", "", A, QAction::AboutRole},
};

// "command" is Ctrl; "command and control" is Ctrl+Meta, or Ctrl+Alt.
const WindowsMenuItem kWindowsItems[] = {{"Minimize", 1, "Ctrl+M"},
                                         {"Zoom", 2, ""},
                                         {nullptr, 0, ""},
                                         {"Log Window", 3, "Ctrl+Meta+L;Ctrl+Alt+L"},
                                         {"Compiler Window", 4, "Ctrl+Meta+C;Ctrl+Alt+C"},
                                         {nullptr, 0, ""}};
} // namespace

std::span<const MenuEntry> menuTable() { return kEntries; }

std::span<const WindowsMenuItem> windowsMenuItems() { return kWindowsItems; }

QList<QKeySequence> keysOf(const char* keys) {
    QList<QKeySequence> list;
    for (const QString& text : QString::fromUtf8(keys).split(QLatin1Char(';'), Qt::SkipEmptyParts))
        list.append(QKeySequence(text, QKeySequence::PortableText));
    return list;
}

QList<QKeySequence> menuKeys(const MenuEntry& entry) { return keysOf(entry.keys); }

QList<QKeySequence> allMenuKeys() {
    QList<QKeySequence> keys;
    for (const MenuEntry& entry : menuTable())
        keys += menuKeys(entry);
    for (const WindowsMenuItem& item : windowsMenuItems())
        keys += keysOf(item.keys);
    return keys;
}

QString plainMenuTitle(const QString& title) {
    QString plain;
    for (qsizetype i = 0; i < title.size(); ++i) {
        if (title[i] == QLatin1Char('&') && i + 1 < title.size())
            ++i; // "&&" stands for one "&"; "&x" for "x"
        plain += title[i];
    }
    return plain;
}
