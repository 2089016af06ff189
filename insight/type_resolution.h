#pragma once
// Scope and type resolution: which method a position lies in, what type a name or a
// dotted chain ("me.list.count") has, and which identifiers a project class offers.
// Plain code over the stored scans and the vocabulary classes that returns values; it
// never reads source text, so its answers are as fresh as the last scan of each file.
// The IDE reads the parser's stores through it (parser::resolver); a program without
// widgets brings its own ScanStore.

#include "frame/value.h"
#include "insight/declarations.h"

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>
#include <memory>

// Source file naming, <Class>.<SuperClass>.klvr: the last component of a path; a name
// before its first "." (the whole name when that "." is missing or first); the class of
// a path (its file name before the first ".").
QString sourceFileName(const QString& path);
QString sourceBaseName(const QString& name);
QString sourceClassName(const QString& path);

// The stored scans resolution reads. Each call returns one whole part of the last scan
// of a file, or nullptr when the file was never scanned; an implementation shared with
// scanning threads hands out each part under its lock.
class ScanStore {
public:
    virtual ~ScanStore() = default;
    virtual std::shared_ptr<const DeclarationList> GetAll(const QString& path) const = 0;
    virtual std::shared_ptr<const QList<qint64>> GetLineSeparators(const QString& path) const = 0;
    virtual std::shared_ptr<const QStringList> GetLineSeparatorsType(const QString& path) const = 0;
    virtual std::shared_ptr<const QHash<QString, QString>> GetLocalList(const QString& path) const = 0;
};

// The open project as resolution sees it. The references must outlive the resolver.
struct ResolutionProject {
    const QString& projectPath;
    const QStringList& projectFiles;  // file names in the project folder
    const Value& vocabularyClasses;   // class name -> member name -> [text, completion, type]
};

class TypeResolver {
public:
    TypeResolver(const ScanStore& scans, const ResolutionProject& project) : scans_(scans), project_(project) {}

    // The name of the method-like declaration that `position` (0-based) lies in, "" for
    // none. A position at a scope start (the line break before a declaration) still
    // belongs to the scope before it.
    QString GetCurrentScope(const QString& path, qint64 position) const;
    // The type of the local variable or parameter `name` of `scope`, "" when unknown.
    QString FindLocalVariable(const QString& path, const QString& scope, const QString& name) const;
    // The type of the first member `name` of the file's "All" list, Public ones only
    // when `visibility` is "Public", "" when none.
    QString FindClassVariable(const QString& path, const QString& name, const QString& visibility) const;
    // The type of a Public member of the project's Global file.
    QString FindGlobalVariable(const QString& name) const;
    // The type of a dotted expression written at `position` of the file at `path`;
    // with `leaveOutLast` the type of everything before its last segment.
    QString FindType(const QString& path, qint64 position, const QString& expression, bool leaveOutLast) const;
    // Name and parameters of every member of the project class `className`: every one
    // when it is the class of the file at `path`, the Public ones otherwise.
    QStringList GetCustomClassIdentifiers(const QString& path, const QString& className) const;

    // The full path of the project's file of class `className`, "" when there is none.
    QString classFile(const QString& className) const;
    // The member map of a vocabulary class, nil when `name` is none.
    Value vocabularyClass(const QString& name) const;

private:
    const ScanStore& scans_;
    ResolutionProject project_;
};
