#include "frame/classframe.h"

#include <QMetaMethod>

namespace klvr_frame {

bool hasOperation(const QObject* owner, const QString& name) {
    const QMetaObject* meta = owner->metaObject();
    const QByteArray wanted = name.toLatin1();
    for (int i = 0; i < meta->methodCount(); ++i)
        if (meta->method(i).name() == wanted)
            return true;
    return false;
}

QString describe(const QObject* object) {
    if (!object)
        return QStringLiteral("(null)");
    return QStringLiteral("<%1: 0x%2>")
        .arg(QLatin1String(object->metaObject()->className()))
        .arg(quintptr(object), 0, 16);
}

} // namespace klvr_frame
