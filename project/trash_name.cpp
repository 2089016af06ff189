#include "project/trash_name.h"

#include <QFileInfo>

QString freeTrashName(const QString& path) {
    QString name = path + QStringLiteral(".trash");
    for (int n = 2; QFileInfo::exists(name) || QFileInfo(name).isSymLink(); ++n)
        name = path + QStringLiteral(".%1.trash").arg(n);
    return name;
}
