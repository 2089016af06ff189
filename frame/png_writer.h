#pragma once
// Writing a screenshot as PNG quickly: no row filters and the fastest deflate level. A
// window's picture is mostly flat colour, so this is as small as the usual settings and
// takes a third of the time.

#include <QImage>
#include <QString>

// Writes `image` (any format; written as 8-bit RGB) to `path`. False when the file
// cannot be written.
bool writeFastPng(const QImage& image, const QString& path);
