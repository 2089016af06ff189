#include "insight/source_text.h"

#include <QFile>
#include <QFileInfo>

std::optional<QString> readSourceText(const QString& path) {
    if (QFileInfo(path).isDir())
        return std::nullopt;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    const QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError)
        return std::nullopt;
    return QString::fromUtf8(bytes);
}
