#pragma once
// The editor view's keys: the editor component binds many keys of its own, some of
// which silently destroy text (Ctrl+L cuts the line, Ctrl+T swaps two lines) or
// shadow the menu bar's keys (Ctrl+Shift+Z, Ctrl+/, Ctrl+[). The view keeps its
// moving and typing keys and leaves these to the menu bar.

class QsciScintilla;

// Removes every binding of the view that is a menu bar key, and every binding of
// the line and case commands that change text without a menu item.
void leaveKeysToMenus(QsciScintilla* view);
