#pragma once
// The texts the code pane's snippet pop-ups and shortcut buttons insert. Every
// template starts and ends with a line break and indents its body by two blanks.

#include <QString>

namespace snippets {

// The template of a pop-up item ("Sub", "If Then", "For Next", ...); "" for a title or
// any other item, which inserts nothing.
QString templateFor(const QString& item);

// The text a shortcut button inserts: "Integer..." for "Integer" and the other type
// and statement words, the title itself for any other button.
QString shortcutFor(const QString& title);

} // namespace snippets
