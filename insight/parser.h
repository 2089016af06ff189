#pragma once
// The parser: the one shared holder of every scanned file's declaration lists, keyed by
// the path given to ParseFile. Scans run on any thread (project opening on the main
// thread, the code pane's re-scan on a background thread); the stores are guarded by
// storeMutex and readers get immutable lists, so a reader always holds a whole list,
// the previous one or the new one.

#include "frame/classframe.h"
#include "insight/declarations.h"
#include "insight/file_scan.h"
#include "insight/type_resolution.h"

#include <QHash>
#include <QMutex>
#include <QObject>
#include <QString>
#include <memory>

class parser : public QObject, public ScanStore {
    Q_OBJECT
    KLVR_CLASS_FRAME(parser)

public:
    using List = std::shared_ptr<const DeclarationList>;

    parser();
    ~parser() override;

    // Scans the file at `path` as stored and replaces its lists. An empty path does
    // nothing; a path whose scan is under way returns at once; an unreadable file scans
    // as empty text.
    Q_INVOKABLE void ParseFile(const QString& path);

    // Scans many files on every core, each as ParseFile does, taking the scans the
    // start-up prefetched where the file is unchanged. The lists of each file are made
    // when first asked for, so a project of a thousand files opens without making
    // lists nobody looks at yet.
    void ParseFiles(const QStringList& paths);

    // The stored lists of a file, or nullptr when it was never scanned.
    List GetAll(const QString& path) const override;
    List GetSub(const QString& path) const;
    List GetFunction(const QString& path) const;
    List GetAction(const QString& path) const;
    List GetDim(const QString& path) const;
    List GetConst(const QString& path) const;
    List GetEvent(const QString& path) const;
    List GetDelegate(const QString& path) const;
    List GetIBOutlet(const QString& path) const;
    List GetIBAction(const QString& path) const;
    List GetList(DeclarationKind kind, const QString& path) const;
    std::shared_ptr<const QList<qint64>> GetLineSeparators(const QString& path) const override;
    std::shared_ptr<const QStringList> GetLineSeparatorsType(const QString& path) const override;
    std::shared_ptr<const QHash<QString, QString>> GetLocalList(const QString& path) const override;

    // ---- Scope and type resolution (insight/parser_resolution.cpp) ----
    // TypeResolver's answers over these stores and the open project of Global (see
    // insight/type_resolution.h); the view gives its file path and cursor position.
    QString GetCurrentScope(const QString& path, qint64 position) const;
    QString FindLocalVariable(const QString& path, const QString& scope, const QString& name) const;
    QString FindClassVariable(const QString& path, const QString& name, const QString& visibility) const;
    QString FindGlobalVariable(const QString& name) const;
    QString FindType(QObject* view, const QString& expression, bool leaveOutLast) const;
    QStringList GetCustomClassIdentifiers(QObject* view, const QString& className) const;

    // Whether a scan of `path` is under way (the "locked" guard holds it).
    bool isLocked(const QString& path) const;

private:
    // Enters `path` into the guard; false when it is there already. One step under
    // storeMutex, so two threads can never both start the same file.
    bool tryLock(const QString& path);
    void unlock(const QString& path);
    // ParseFile's steps; `makeLists` makes the lists on this thread before publishing.
    void parseFile(const QString& path, bool makeLists, bool mayUsePrefetched);

    // The per-file stores and the guard, all guarded by storeMutex. Each store holds,
    // per path, the scan its part is read from; a scan never changes once stored, and a
    // new scan replaces it.
    using Scan = std::shared_ptr<const FileScan>;
    mutable QMutex storeMutex;
    QHash<QString, Scan> aAll;
    QHash<QString, Scan> aKinds[declarationKindCount]; // aSub ... aIBAction, in kind order
    QHash<QString, Scan> aLineSeparators;
    QHash<QString, Scan> aLineSeparatorsType;
    QHash<QString, Scan> aLocalList;
    QHash<QString, QString> lock; // path -> "locked" while its scan runs
};

KLVR_DEFINE_CLASS_HELPERS(parser, PARSER)
