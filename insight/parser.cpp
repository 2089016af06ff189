#include "insight/parser.h"

#include "insight/declaration_scanner.h"
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

template <class Store> typename Store::mapped_type lookup(QMutex& mutex, const Store& store, const QString& path) {
    QMutexLocker locker(&mutex);
    return store.value(path);
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
    if (path.isEmpty())
        return;
    if (!tryLock(path))
        return; // a scan of this file is under way; its result stands
    GuardRelease release([this, path] { unlock(path); });

    // The scan works on its own copies; the stores are touched only to publish.
    const QByteArray bytes = readSourceBytes(path).value_or(QByteArray());
    DeclarationLists lists = withSourceText(bytes, [](auto text) { return declarationListsOf(recordDeclarations(text)); });

    auto all = std::make_shared<const DeclarationList>(std::move(lists.all));
    std::shared_ptr<const DeclarationList> kinds[declarationKindCount];
    for (int k = 0; k < declarationKindCount; ++k)
        kinds[k] = std::make_shared<const DeclarationList>(std::move(lists.kinds[k]));
    auto separators = std::make_shared<const QList<qint64>>(std::move(lists.lineSeparators));
    auto separatorNames = std::make_shared<const QStringList>(std::move(lists.lineSeparatorsType));
    auto locals = std::make_shared<const QHash<QString, QString>>(std::move(lists.locals));

    // The lists and scope starts are published together, then the local variables,
    // which are read from the scope starts of the same scan.
    {
        QMutexLocker locker(&storeMutex);
        aAll.insert(path, std::move(all));
        for (int k = 0; k < declarationKindCount; ++k)
            aKinds[k].insert(path, std::move(kinds[k]));
        aLineSeparators.insert(path, std::move(separators));
        aLineSeparatorsType.insert(path, std::move(separatorNames));
    }
    {
        QMutexLocker locker(&storeMutex);
        aLocalList.insert(path, std::move(locals));
    }
}

parser::List parser::GetList(DeclarationKind kind, const QString& path) const {
    KLVR_TRACE("GetList");
    return lookup(storeMutex, aKinds[int(kind)], path);
}

parser::List parser::GetAll(const QString& path) const {
    KLVR_TRACE("GetAll");
    return lookup(storeMutex, aAll, path);
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
    return lookup(storeMutex, aLineSeparators, path);
}

std::shared_ptr<const QStringList> parser::GetLineSeparatorsType(const QString& path) const {
    KLVR_TRACE("GetLineSeparatorsType");
    return lookup(storeMutex, aLineSeparatorsType, path);
}

std::shared_ptr<const QHash<QString, QString>> parser::GetLocalList(const QString& path) const {
    KLVR_TRACE("GetLocalList");
    return lookup(storeMutex, aLocalList, path);
}
