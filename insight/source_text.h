#pragma once
// Reading a source file for the scanner: the whole file as UTF-8, line endings as
// stored.

#include <QString>
#include <optional>

// The text of the file, or nothing when it cannot be read (missing, a folder, no
// permission).
std::optional<QString> readSourceText(const QString& path);
