#include "editor/document_file.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStringDecoder>

#include <sys/stat.h>

namespace {

// Windows-1252 from 0x80 to 0x9F; the rest of the 256 values are Latin-1. The five
// values the code page leaves open keep the control character of the same number, so
// that every byte decodes and encodes back to itself. (Qt's codecs leave this to the
// system library, which maps those five differently from one installation to another.)
constexpr char16_t kHighControls[32] = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

// The Windows-1252 byte of a character, or -1.
int windows1252Byte(char16_t c) {
    if (c < 0x80 || (c >= 0xA0 && c <= 0xFF))
        return c;
    for (int i = 0; i < 32; ++i)
        if (kHighControls[i] == c)
            return 0x80 + i;
    return -1;
}

bool isValidUtf8(const QByteArray& bytes) {
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString decoded = decoder(bytes);
    Q_UNUSED(decoded);
    return !decoder.hasError();
}

const QByteArray kByteOrderMark("\xef\xbb\xbf", 3);

} // namespace

DiskStamp DiskStamp::of(const QString& path) {
    struct stat info {};
    DiskStamp stamp;
    if (path.isEmpty() || ::stat(QFile::encodeName(path).constData(), &info) != 0 || S_ISDIR(info.st_mode))
        return stamp;
    stamp.exists = true;
    stamp.size = info.st_size;
    stamp.modifiedNs = qint64(info.st_mtim.tv_sec) * 1000000000 + info.st_mtim.tv_nsec;
    stamp.inode = info.st_ino;
    return stamp;
}

namespace document_file {

Decoded decode(const QByteArray& fileBytes) {
    Decoded result;
    const qsizetype firstLf = fileBytes.indexOf('\n');
    if (firstLf > 0 && fileBytes[firstLf - 1] == '\r')
        result.lineEnds = LineEnds::Crlf;
    else if (firstLf < 0 && fileBytes.contains('\r'))
        result.lineEnds = LineEnds::Cr;
    if (isValidUtf8(fileBytes)) {
        result.byteOrderMark = fileBytes.startsWith(kByteOrderMark);
        result.utf8 = result.byteOrderMark ? fileBytes.mid(3) : fileBytes;
        return result;
    }
    result.encoding = TextEncoding::Windows1252;
    QString text(fileBytes.size(), Qt::Uninitialized);
    char16_t* out = reinterpret_cast<char16_t*>(text.data());
    for (qsizetype i = 0; i < fileBytes.size(); ++i) {
        const auto b = static_cast<unsigned char>(fileBytes[i]);
        out[i] = b >= 0x80 && b < 0xA0 ? kHighControls[b - 0x80] : char16_t(b);
    }
    result.utf8 = text.toUtf8();
    return result;
}

std::optional<QByteArray> encode(const QByteArray& utf8, TextEncoding encoding, bool byteOrderMark) {
    if (encoding == TextEncoding::Utf8)
        return byteOrderMark ? kByteOrderMark + utf8 : utf8;
    const QString text = QString::fromUtf8(utf8);
    QByteArray bytes(text.size(), Qt::Uninitialized);
    for (qsizetype i = 0; i < text.size(); ++i) {
        const int b = windows1252Byte(text[i].unicode());
        if (b < 0)
            return std::nullopt;
        bytes[i] = char(b);
    }
    return bytes;
}

QString withLineEnds(const QString& text, LineEnds lineEnds) {
    QString unified = text;
    unified.replace(QLatin1String("\r\n"), QLatin1String("\n")).replace(QLatin1Char('\r'), QLatin1Char('\n'));
    switch (lineEnds) {
    case LineEnds::Crlf:
        return unified.replace(QLatin1Char('\n'), QLatin1String("\r\n"));
    case LineEnds::Cr:
        return unified.replace(QLatin1Char('\n'), QLatin1Char('\r'));
    case LineEnds::Lf:
        break;
    }
    return unified;
}

QString unencodable(QStringView text, TextEncoding encoding) {
    QString refused;
    if (encoding == TextEncoding::Utf8)
        return refused;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (windows1252Byte(text[i].unicode()) >= 0)
            continue;
        // A character outside the basic plane is refused whole, not as two halves.
        const qsizetype n = text[i].isHighSurrogate() && i + 1 < text.size() ? 2 : 1;
        const QStringView c = text.mid(i, n);
        if (!refused.contains(c))
            refused += c;
        i += n - 1;
    }
    return refused;
}

QString encodingName(TextEncoding encoding, bool byteOrderMark) {
    if (encoding == TextEncoding::Windows1252)
        return QStringLiteral("Windows-1252");
    return byteOrderMark ? QStringLiteral("UTF-8 with BOM") : QStringLiteral("UTF-8");
}

quint64 fingerprint(const QByteArray& bytes) {
    return qHashBits(bytes.constData(), size_t(bytes.size()), 0x4b6c7672) ^ quint64(bytes.size());
}

WriteResult writeChecked(const QString& path, const QByteArray& bytes, const std::optional<DiskStamp>& expected) {
    WriteResult result;
    if (path.isEmpty()) {
        result.error = QStringLiteral("the document has no file");
        return result;
    }
    if (expected) {
        const DiskStamp now = DiskStamp::of(path);
        if (expected->exists && !now.exists) {
            result.status = WriteStatus::DeletedOnDisk;
            return result;
        }
        if (now != *expected) {
            result.status = WriteStatus::ChangedOnDisk;
            return result;
        }
    }
    result.error = whyNotWritable(path);
    if (!result.error.isEmpty())
        return result;
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        result.error = file.errorString();
        return result;
    }
    if (file.write(bytes) != bytes.size()) {
        result.error = file.errorString();
        file.cancelWriting();
        return result;
    }
    if (!file.commit()) {
        result.error = file.errorString();
        return result;
    }
    result.status = WriteStatus::Written;
    result.stamp = DiskStamp::of(path);
    return result;
}

QString whyNotWritable(const QString& path) {
    // Replacing a read-only file through a new file would succeed on most systems;
    // the user made it read-only, so it is not written. The permission bits are asked
    // as well: a privileged user may write anything, but a file without any write
    // permission was still meant to be left alone.
    const QFileInfo info(path);
    constexpr QFile::Permissions anyWrite = QFile::WriteOwner | QFile::WriteGroup | QFile::WriteOther;
    if (info.exists() && (!info.isWritable() || !(info.permissions() & anyWrite)))
        return QStringLiteral("the file is read-only");
    const QFileInfo folder(info.absolutePath());
    if (folder.isDir() && !folder.isWritable())
        return QStringLiteral("its folder is read-only");
    return QString();
}

std::optional<QByteArray> readAll(const QString& path) {
    QFile file(path);
    if (path.isEmpty() || QFileInfo(path).isDir() || !file.open(QIODevice::ReadOnly))
        return std::nullopt;
    QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError)
        return std::nullopt;
    return bytes;
}

} // namespace document_file
