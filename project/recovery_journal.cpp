#include "project/recovery_journal.h"

#include "editor/kltextview.h"
#include "frame/global.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QSaveFile>
#include <QUrl>

#include <fcntl.h>
#include <unistd.h>

namespace {

const QByteArray kMagic("Kelvaro recovery 1\n");
constexpr int kPassDelayMs = 1000; // plus the write: within two seconds of the change

// Makes a finished rename durable, so a power cut after it keeps the new name.
void syncFolder(const QString& folder) {
    const int fd = ::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY);
    if (fd >= 0) {
        ::fsync(fd);
        ::close(fd);
    }
}

// Writes a copy: header lines, an empty line, then the bytes. The file is synced
// before it replaces the previous copy, so a copy on disk is always whole.
bool writeEntry(const QString& file, const QString& path, const QDateTime& changed, const QByteArray& bytes) {
    QDir().mkpath(QFileInfo(file).absolutePath());
    QSaveFile out(file);
    if (!out.open(QIODevice::WriteOnly))
        return false;
    QByteArray header = kMagic;
    header += "path: " + QUrl::toPercentEncoding(path) + '\n';
    header += "changed: " + changed.toString(Qt::ISODateWithMs).toLatin1() + '\n';
    header += "size: " + QByteArray::number(bytes.size()) + "\n\n";
    if (out.write(header) != header.size() || out.write(bytes) != bytes.size() || !out.flush()) {
        out.cancelWriting();
        return false;
    }
    ::fsync(out.handle());
    if (!out.commit())
        return false;
    syncFolder(QFileInfo(file).absolutePath());
    return true;
}

std::optional<RecoveryJournal::Entry> readEntry(const QString& file) {
    const std::optional<QByteArray> all = document_file::readAll(file);
    if (!all || !all->startsWith(kMagic))
        return std::nullopt;
    const qsizetype end = all->indexOf("\n\n");
    if (end < 0)
        return std::nullopt;
    RecoveryJournal::Entry entry;
    entry.journalFile = file;
    qint64 size = -1;
    for (const QByteArray& line : all->mid(kMagic.size(), end - kMagic.size()).split('\n')) {
        if (line.startsWith("path: "))
            entry.path = QUrl::fromPercentEncoding(line.mid(6));
        else if (line.startsWith("changed: "))
            entry.changed = QDateTime::fromString(QString::fromLatin1(line.mid(9)), Qt::ISODateWithMs);
        else if (line.startsWith("size: "))
            size = line.mid(6).toLongLong();
    }
    entry.bytes = all->mid(end + 2);
    if (entry.path.isEmpty() || size != entry.bytes.size())
        return std::nullopt; // not a whole copy
    return entry;
}

} // namespace

RecoveryJournal::RecoveryJournal(QObject* parent) : QObject(parent) {
    writer_.setMaxThreadCount(1);
    timer_.setSingleShot(true);
    timer_.setInterval(kPassDelayMs);
    connect(&timer_, &QTimer::timeout, this, &RecoveryJournal::due);
}

RecoveryJournal::~RecoveryJournal() { writer_.waitForDone(); }

QString RecoveryJournal::folder() { return Global::supportFile(QStringLiteral("Recovery")); }

QString RecoveryJournal::journalFileFor(const QString& path) {
    const QByteArray hash = QCryptographicHash::hash(QFile::encodeName(path), QCryptographicHash::Sha1).toHex();
    return folder() + QLatin1Char('/') + QString::fromLatin1(hash.left(20)) + QStringLiteral(".journal");
}

QList<RecoveryJournal::Entry> RecoveryJournal::entries() {
    QList<Entry> found;
    const QDir dir(folder());
    for (const QString& name : dir.entryList({QStringLiteral("*.journal")}, QDir::Files))
        if (std::optional<Entry> entry = readEntry(dir.filePath(name)))
            found << *entry;
    std::sort(found.begin(), found.end(), [](const Entry& a, const Entry& b) { return a.changed < b.changed; });
    return found;
}

void RecoveryJournal::watch(KLTextView* view) {
    const QString path = view->fileName();
    const QString file = journalFileFor(path);
    view->setBeforeWrite([this, file, path](const QByteArray& bytes) {
        if (writeEntry(file, path, QDateTime::currentDateTimeUtc(), bytes) && onWritten)
            onWritten(path, bytes.size());
    });
}

void RecoveryJournal::noteChange() {
    if (!timer_.isActive())
        timer_.start();
}

void RecoveryJournal::writePass(const QList<KLTextView*>& views) {
    for (KLTextView* view : views) {
        const QString path = view->fileName();
        if (path.isEmpty())
            continue;
        if (!view->isModified()) {
            if (journaled_.contains(path))
                remove(path, view);
            continue;
        }
        if (journaled_.value(path, -1) == view->changeCount())
            continue;
        journaled_.insert(path, view->changeCount());
        // The text is taken here; encoding it and writing happen on the journal's thread.
        const QByteArray text = view->editorBytes();
        const TextEncoding encoding = view->encoding();
        const bool mark = view->startsWithByteOrderMark();
        const QDateTime changed = QDateTime::currentDateTimeUtc();
        const QString file = journalFileFor(path);
        view->queueOnWriter([this, file, path, changed, text, encoding, mark] {
            const QByteArray bytes = document_file::encode(text, encoding, mark).value_or(text);
            if (writeEntry(file, path, changed, bytes) && onWritten)
                onWritten(path, bytes.size());
        });
    }
}

void RecoveryJournal::remove(const QString& path, KLTextView* view) {
    journaled_.remove(path);
    const QString file = journalFileFor(path);
    auto removal = [file] {
        if (QFile::remove(file))
            syncFolder(QFileInfo(file).absolutePath());
    };
    if (view)
        view->queueOnWriter(removal);
    else
        writer_.start(removal);
}

void RecoveryJournal::waitForWrites() { writer_.waitForDone(); }
