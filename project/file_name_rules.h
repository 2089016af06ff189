#pragma once
// The rules for names the user types for project files and projects, and the file
// operations that never replace what is already on disk.

#include <QString>
#include <QStringList>

namespace file_rules {

// A source file name made of segments of a-z A-Z 0-9 _ separated by single points
// ("b.NSView.klvr"); anything else ("/", blanks, control characters, "..", letters
// outside ASCII) would make a name the compiler, the class names or the file system
// cannot take.
bool isPlainSourceName(const QString& name);

// Why a typed project name cannot become a folder name, or "" when it can.
QString projectNameProblem(const QString& name);

// True when something (file, folder or a dangling link) has that path.
bool occupied(const QString& path);

// Creates an empty file; false when something already has the path or it cannot be made.
bool createNewEmptyFile(const QString& path);
// Creates a file holding `bytes`; false when something already has the path.
bool createNewFile(const QString& path, const QByteArray& bytes);

// Copies a folder tree; never replaces an existing file. False on any failure.
bool copyTree(const QString& source, const QString& destination);

// Creates the folder and any missing parents; appends to `created` each folder it made,
// outermost first, so a failed command can remove exactly those.
bool makeFolders(const QString& path, QStringList& created);

} // namespace file_rules
