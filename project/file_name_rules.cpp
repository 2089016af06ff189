#include "project/file_name_rules.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace file_rules {

bool isPlainSourceName(const QString& name) {
    if (name.isEmpty())
        return false;
    bool segmentStarted = false;
    for (QChar c : name) {
        if (c == QLatin1Char('.')) {
            if (!segmentStarted)
                return false; // leading point or ".."
            segmentStarted = false;
            continue;
        }
        const char16_t u = c.unicode();
        const bool allowed = (u >= 'a' && u <= 'z') || (u >= 'A' && u <= 'Z') || (u >= '0' && u <= '9') || u == '_';
        if (!allowed)
            return false;
        segmentStarted = true;
    }
    return segmentStarted; // no trailing point
}

QString projectNameProblem(const QString& name) {
    if (name.trimmed().isEmpty())
        return QStringLiteral("The name is made of blanks only.");
    if (name == QLatin1String(".") || name == QLatin1String(".."))
        return QStringLiteral("\"%1\" names a folder that is already there.").arg(name);
    for (QChar c : name) {
        if (c == QLatin1Char('/'))
            return QStringLiteral("A project name cannot contain \"/\".");
        if (c.unicode() < 0x20 || c.unicode() == 0x7f)
            return QStringLiteral("A project name cannot contain control characters such as line breaks or tabs.");
    }
    return QString();
}

bool occupied(const QString& path) {
    const QFileInfo info(path);
    return info.exists() || info.isSymLink();
}

bool createNewFile(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    // NewOnly fails when anything has the name, also between a check and the write.
    if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly))
        return false;
    const bool written = file.write(bytes) == bytes.size() && file.flush();
    file.close();
    if (!written)
        QFile::remove(path); // ours, made a moment ago
    return written;
}

bool createNewEmptyFile(const QString& path) { return createNewFile(path, QByteArray()); }

bool copyTree(const QString& source, const QString& destination) {
    if (!QDir().mkpath(destination))
        return false;
    const QDir from(source);
    const QFileInfoList entries =
        from.entryInfoList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System, QDir::Name);
    for (const QFileInfo& entry : entries) {
        const QString target = destination + QLatin1Char('/') + entry.fileName();
        if (entry.isDir() && !entry.isSymLink()) {
            if (!copyTree(entry.filePath(), target))
                return false;
        } else if (!QFile::copy(entry.filePath(), target)) { // refuses an existing target
            return false;
        }
    }
    return true;
}

bool makeFolders(const QString& path, QStringList& created) {
    QStringList missing;
    QString at = QDir::cleanPath(path);
    while (!at.isEmpty() && !occupied(at)) {
        missing.prepend(at);
        const QString parent = QFileInfo(at).path();
        if (parent == at)
            break;
        at = parent;
    }
    for (const QString& folder : missing) {
        if (!QDir().mkdir(folder))
            return false;
        created << folder;
    }
    return QFileInfo(path).isDir();
}

} // namespace file_rules
