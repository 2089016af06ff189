#pragma once
// Realistic Kelvaro sources of any size, for benchmarks and for measuring project
// opening: a class made of Dims, Consts, outlets and methods whose bodies hold local
// Dims, calls, strings with apostrophes, comments and control blocks. Repeatable from
// a start value.

#include <QByteArray>
#include <QString>

// A class of about `lines` lines (never fewer), with LF line ends.
QByteArray kelvaroClassSource(const QString& className, int lines, quint32 startValue);
