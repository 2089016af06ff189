// File operations. Every write of a file is atomic (QSaveFile), so a crash or a full
// disk never leaves a truncated file behind.
#include "frame/runtime.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QMutex>
#include <QProcess>
#include <QSaveFile>

QString KLVR_READSTRING(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return QString();
    QString text = QString::fromUtf8(file.readAll());
    if (text.isNull())
        text = QLatin1String(""); // an empty file is an empty, not a missing, text
    return text;
}

static bool writeAtomically(const QByteArray& bytes, const QString& path) {
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    if (file.write(bytes) != bytes.size()) {
        file.cancelWriting();
        return false;
    }
    return file.commit();
}

bool KLVR_WRITESTRING(const QString& text, const QString& path) { return writeAtomically(text.toUtf8(), path); }

QStringList KLVR_READARRAY(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QJsonDocument doc = QJsonDocument::fromJson(file.readAll());
    QStringList out;
    for (const QJsonValue& v : doc.array())
        if (v.isString())
            out << v.toString();
    return out;
}

bool KLVR_WRITEARRAY(const QStringList& array, const QString& path) {
    return writeAtomically(QJsonDocument(QJsonArray::fromStringList(array)).toJson(), path);
}

bool KLVR_FILE_COPY(const QString& source, const QString& destination) { return QFile::copy(source, destination); }

bool KLVR_FILE_MOVE(const QString& source, const QString& destination) {
    // A move never replaces an existing file.
    if (QFileInfo::exists(destination))
        return false;
    return QFile::rename(source, destination);
}

bool KLVR_FILE_CREATEFILE(const QString& path) {
    if (QFileInfo::exists(path))
        return false;
    QFile file(path);
    return file.open(QIODevice::NewOnly | QIODevice::WriteOnly);
}

bool KLVR_FILE_REMOVEFILE(const QString& path) { return QFile::remove(path); }

QStringList KLVR_FILE_LIST(const QString& folder) {
    return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                                  QDir::Name);
}

bool KLVR_NSFILEMANAGER_EXISTSFILE(const QString& path) { return QFileInfo::exists(path); }

bool KLVR_NSFILEMANAGER_EXISTSDIRECTORY(const QString& path) { return QFileInfo(path).isDir(); }

bool KLVR_NSFILEMANAGER_CREATEDIRECTORY(const QString& path) { return QDir().mkpath(path); }

bool KLVR_NSFILEMANAGER_DELETE(const QString& path) {
    QFileInfo info(path);
    if (info.isDir() && !info.isSymLink())
        return QDir(path).removeRecursively();
    return QFile::remove(path);
}

static bool copyRecursively(const QString& source, const QString& destination) {
    QFileInfo info(source);
    if (!info.isDir())
        return QFile::copy(source, destination);
    if (!QDir().mkpath(destination))
        return false;
    const QStringList entries =
        QDir(source).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    for (const QString& name : entries)
        if (!copyRecursively(source + QLatin1Char('/') + name, destination + QLatin1Char('/') + name))
            return false;
    return true;
}

bool KLVR_NSFILEMANAGER_COPY(const QString& source, const QString& destination) {
    if (!QFileInfo::exists(source) || QFileInfo::exists(destination))
        return false;
    return copyRecursively(source, destination);
}

std::optional<QStringList> KLVR_NSFILEMANAGER_LIST(const QString& folder) {
    QDir dir(folder);
    if (!dir.exists() || !QFileInfo(folder).isReadable())
        return std::nullopt;
    return dir.entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
}

QString KLVR_USER_HOMEDIRECTORY() {
    QString home = QDir::homePath();
    while (home.size() > 1 && home.endsWith(QLatin1Char('/')))
        home.chop(1);
    return home;
}

namespace {
QMutex bundleMutex;
QString bundleOverride;
} // namespace

void klvrSetBundlePath(const QString& bundlePath) {
    QMutexLocker guard(&bundleMutex);
    bundleOverride = bundlePath;
}

QString KLVR_NSBUNDLE_BUNDLEPATH() {
    {
        QMutexLocker guard(&bundleMutex);
        if (!bundleOverride.isEmpty())
            return bundleOverride;
    }
    // The executable lies in <bundle>/Contents/MacOS.
    QString exe = QCoreApplication::applicationDirPath();
    if (exe.isEmpty())
        exe = QFileInfo(QStringLiteral("/proc/self/exe")).canonicalFilePath().section(QLatin1Char('/'), 0, -2);
    return QDir::cleanPath(exe + QStringLiteral("/../.."));
}

QString KLVR_NSBUNDLE_RESOURCEPATH() { return KLVR_NSBUNDLE_BUNDLEPATH() + QStringLiteral("/Contents/Resources"); }

QString KLVR_NSBUNDLE_EXECUTABLEPATH() {
    return KLVR_NSBUNDLE_BUNDLEPATH() + QStringLiteral("/Contents/MacOS/kelvaro");
}

QStringList klvrSplitCommandLine(const QString& commandLine) {
    QStringList parts;
    QString current;
    bool inWord = false;
    for (qsizetype i = 0; i < commandLine.size(); ++i) {
        QChar c = commandLine.at(i);
        if (c == QLatin1Char('\\') && i + 1 < commandLine.size()) {
            current += commandLine.at(++i);
            inWord = true;
        } else if (c == QLatin1Char(' ') || c == QLatin1Char('\t') || c == QLatin1Char('\n')) {
            if (inWord)
                parts << current;
            current.clear();
            inWord = false;
        } else {
            current += c;
            inWord = true;
        }
    }
    if (inWord)
        parts << current;
    return parts;
}

int KLVR_RUN(const QString& path, const QStringList& arguments) {
    QStringList words = klvrSplitCommandLine(path);
    for (const QString& a : arguments)
        words << klvrSplitCommandLine(a);
    if (words.isEmpty())
        return -1;
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedChannels);
    process.start(words.takeFirst(), words);
    if (!process.waitForStarted(-1))
        return -1;
    process.waitForFinished(-1);
    return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
}
