#include "insight/source_text.h"

#include <QFile>
#include <QFileInfo>

#include <cstdint>
#include <cstring>

std::optional<QByteArray> readSourceBytes(const QString& path) {
    if (QFileInfo(path).isDir())
        return std::nullopt;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError)
        return std::nullopt;
    return bytes;
}

std::optional<QString> readSourceText(const QString& path) {
    const std::optional<QByteArray> bytes = readSourceBytes(path);
    if (!bytes)
        return std::nullopt;
    return QString::fromUtf8(*bytes);
}

bool isAscii(std::string_view bytes) {
    const char* at = bytes.data();
    const char* end = at + bytes.size();
    std::uint64_t high = 0;
    for (; end - at >= 32; at += 32) {
        std::uint64_t words[4];
        std::memcpy(words, at, sizeof words);
        high |= words[0] | words[1] | words[2] | words[3];
        if (high & 0x8080808080808080ull)
            return false;
    }
    for (; at < end; ++at)
        high |= std::uint8_t(*at);
    return (high & 0x8080808080808080ull) == 0;
}
