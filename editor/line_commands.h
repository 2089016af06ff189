#pragma once
// The line-oriented edit commands of the editor view, as plain functions from the
// selected lines to their new text. A line here is its text without the line break.
//
//  - comment:   puts the comment mark "'" in front of each line (empty lines stay empty),
//  - uncomment: removes the first "'" of each line whose first non-blank character it is,
//  - shift right: indents each non-empty line by two blanks (the indentation step of the
//    language's templates); shift left: removes up to two leading blanks, or one tab,
//  - auto format: re-indents by block structure, two blanks a level (see autoFormat).

#include <QStringList>

namespace line_commands {

constexpr int IndentStep = 2;

QStringList comment(const QStringList& lines);
QStringList uncomment(const QStringList& lines);
QStringList shiftRight(const QStringList& lines);
QStringList shiftLeft(const QStringList& lines);

// Re-indents lines by their block structure, starting at `baseLevel`. A block opens
// with a method-like declaration (Sub, Function, Action, Event, Delegate, IBAction,
// optionally after Public or Private, and with a parameter list), a multi-line
// "If ... Then", For, While, Do, Select, Try or With; it closes with End, Next, Loop or
// Wend. Else, ElseIf, Case, Catch and Finally stand one level out for themselves. Blank
// lines become empty; trailing blanks are removed; nothing but indentation changes.
QStringList autoFormat(const QStringList& lines, int baseLevel = 0);

} // namespace line_commands
