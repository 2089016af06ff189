#pragma once
// The project search on the command line, answered without any window system:
//   kelvaro --find TEXT PROJECT [--ignore-case] [--skip-comments]
// prints every occurrence the project search panel lists, in its order, one a line as
// FILE:LINE:COLUMN:LINE TEXT (FILE relative to PROJECT, LINE and COLUMN 1-based, COLUMN
// in UTF-16 units). Exit status 0 when something was found, 1 when nothing, 2 for a
// usage error.

#include <QStringList>

bool isFindCommand(const QStringList& args);
int runFindCommand(const QStringList& args);
