// The only places that take a source file name <Class>.<SuperClass>.klvr apart.
#include "frame/global.h"

QString Global::filebasename(const QString& name) {
    qint64 point = KLVR_INSTR(name, QStringLiteral("."), 0, true);
    return point > 0 ? KLVR_LEFT(name, point) : name;
}

QString Global::getClassName(const QString& path) {
    const QString name = KLVR_FILENAME(path);
    return KLVR_LEFT(name, KLVR_INSTR(name, QStringLiteral("."), 0, true));
}

QString Global::getSuperClassName(const QString& nameOrPath) {
    QString rest = nameOrPath;
    qint64 point = KLVR_INSTRREV(rest, QStringLiteral("."), -1, true);
    if (point >= 0)
        rest = KLVR_LEFT(rest, point);
    point = KLVR_INSTRREV(rest, QStringLiteral("."), -1, true);
    return point >= 0 ? KLVR_MID(rest, point + 1, -1) : rest;
}
