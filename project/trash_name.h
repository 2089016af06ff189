#pragma once
// Files are never destroyed: what would be deleted or overwritten is kept beside itself
// under a name ending in ".trash".

#include <QString>

// `path` + ".trash" when no such file exists, else the first free of
// `path` + ".2.trash", ".3.trash", ...
QString freeTrashName(const QString& path);
