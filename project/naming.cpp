// The only places that take a source file name <Class>.<SuperClass>.klvr apart; the
// class of a name or path follows the resolution engine's rules.
#include "frame/global.h"
#include "insight/type_resolution.h"

QString Global::filebasename(const QString& name) {
    return sourceBaseName(name);
}

QString Global::getClassName(const QString& path) {
    return sourceClassName(path);
}

QString Global::getSuperClassName(const QString& nameOrPath) {
    QString rest = nameOrPath;
    qint64 point = KLVR_INSTRREV(rest, QStringLiteral("."), -1, true);
    if (point >= 0)
        rest = KLVR_LEFT(rest, point);
    point = KLVR_INSTRREV(rest, QStringLiteral("."), -1, true);
    return point >= 0 ? KLVR_MID(rest, point + 1, -1) : rest;
}
