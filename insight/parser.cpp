#include "insight/parser.h"

#include "insight/every_core.h"
#include "insight/scan_prefetch.h"
#include "insight/source_text.h"
#include "frame/trace.h"

#include <QMutexLocker>

#include <functional>

namespace {

// Takes the path out of the guard on every way out of a scan, failures included.
class GuardRelease {
public:
    explicit GuardRelease(std::function<void()> release) : release_(std::move(release)) {}
    ~GuardRelease() { release_(); }
    GuardRelease(const GuardRelease&) = delete;
    GuardRelease& operator=(const GuardRelease&) = delete;

private:
    std::function<void()> release_;
};

// The part `Part` of the file's stored scan, sharing the scan's lifetime; nullptr when
// the file was never scanned. The lists are made here if no one asked for them yet.
template <class Part, class Pick>
std::shared_ptr<const Part> lookup(QMutex& mutex, const QHash<QString, std::shared_ptr<const FileScan>>& store,
                                   const QString& path, Pick pick) {
    std::shared_ptr<const FileScan> scan;
    {
        QMutexLocker locker(&mutex);
        scan = store.value(path);
    }
    if (!scan)
        return nullptr;
    return std::shared_ptr<const Part>(scan, &pick(scan->lists()));
}

} // namespace

parser::parser() = default;

parser::~parser() { klvr_frame::forget<parser>(this); }

bool parser::tryLock(const QString& path) {
    QMutexLocker locker(&storeMutex);
    if (lock.contains(path))
        return false;
    lock.insert(path, QStringLiteral("locked"));
    return true;
}

void parser::unlock(const QString& path) {
    QMutexLocker locker(&storeMutex);
    lock.remove(path);
}

bool parser::isLocked(const QString& path) const {
    QMutexLocker locker(&storeMutex);
    return lock.contains(path);
}

void parser::ParseFile(const QString& path) {
    KLVR_TRACE("ParseFile");
    parseFile(path, true, false);
}

void parser::ParseFiles(const QStringList& paths) {
    KLVR_TRACE("ParseFiles");
    forEachOnEveryCore(paths.size(), [&](qsizetype i) { parseFile(paths[i], false, true); });
}

void parser::parseFile(const QString& path, bool makeLists, bool mayUsePrefetched) {
    if (path.isEmpty())
        return;
    if (!tryLock(path))
        return; // a scan of this file is under way; its result stands
    GuardRelease release([this, path] { unlock(path); });

    // The scan works on its own copies; the stores are touched only to publish.
    std::shared_ptr<FileScan> scan = mayUsePrefetched ? scan_prefetch::take(path) : nullptr;
    if (!scan) {
        // Each thread reads into the same memory every time; a very large file's
        // buffer is not kept.
        thread_local QByteArray buffer;
        if (!readSourceBytesInto(path, buffer))
            buffer.clear();
        scan = std::make_shared<FileScan>(buffer);
        if (buffer.capacity() > (8 << 20))
            buffer = QByteArray();
    }
    if (makeLists)
        scan->lists();

    // The lists and scope starts are published together, then the local variables,
    // which are read from the scope starts of the same scan.
    {
        QMutexLocker locker(&storeMutex);
        aAll.insert(path, scan);
        for (QHash<QString, Scan>& store : aKinds)
            store.insert(path, scan);
        aLineSeparators.insert(path, scan);
        aLineSeparatorsType.insert(path, scan);
    }
    {
        QMutexLocker locker(&storeMutex);
        aLocalList.insert(path, std::move(scan));
    }
}

parser::List parser::GetList(DeclarationKind kind, const QString& path) const {
    KLVR_TRACE("GetList");
    return lookup<DeclarationList>(storeMutex, aKinds[int(kind)], path,
                                   [kind](const DeclarationLists& lists) -> auto& { return lists.list(kind); });
}

parser::List parser::GetAll(const QString& path) const {
    KLVR_TRACE("GetAll");
    return lookup<DeclarationList>(storeMutex, aAll, path,
                                   [](const DeclarationLists& lists) -> auto& { return lists.all; });
}
parser::List parser::GetSub(const QString& path) const { return GetList(DeclarationKind::Sub, path); }
parser::List parser::GetFunction(const QString& path) const { return GetList(DeclarationKind::Function, path); }
parser::List parser::GetAction(const QString& path) const { return GetList(DeclarationKind::Action, path); }
parser::List parser::GetDim(const QString& path) const { return GetList(DeclarationKind::Dim, path); }
parser::List parser::GetConst(const QString& path) const { return GetList(DeclarationKind::Const, path); }
parser::List parser::GetEvent(const QString& path) const { return GetList(DeclarationKind::Event, path); }
parser::List parser::GetDelegate(const QString& path) const { return GetList(DeclarationKind::Delegate, path); }
parser::List parser::GetIBOutlet(const QString& path) const { return GetList(DeclarationKind::IBOutlet, path); }
parser::List parser::GetIBAction(const QString& path) const { return GetList(DeclarationKind::IBAction, path); }

std::shared_ptr<const QList<qint64>> parser::GetLineSeparators(const QString& path) const {
    KLVR_TRACE("GetLineSeparators");
    return lookup<QList<qint64>>(storeMutex, aLineSeparators, path,
                                 [](const DeclarationLists& lists) -> auto& { return lists.lineSeparators; });
}

std::shared_ptr<const QStringList> parser::GetLineSeparatorsType(const QString& path) const {
    KLVR_TRACE("GetLineSeparatorsType");
    return lookup<QStringList>(storeMutex, aLineSeparatorsType, path,
                               [](const DeclarationLists& lists) -> auto& { return lists.lineSeparatorsType; });
}

std::shared_ptr<const QHash<QString, QString>> parser::GetLocalList(const QString& path) const {
    KLVR_TRACE("GetLocalList");
    return lookup<QHash<QString, QString>>(storeMutex, aLocalList, path,
                                           [](const DeclarationLists& lists) -> auto& { return lists.locals; });
}
