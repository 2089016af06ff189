#pragma once
// The project as the language server sees it: the scans of its files as stored, read
// on every core when the client names the folder, with the scan of each open document
// as typed in place of its file's. It is the ScanStore that resolution, completion and
// find definition read, so they answer exactly as in the IDE. A document outside the
// project folder is a project of its own, of that one file.

#include "insight/file_scan.h"
#include "insight/type_resolution.h"
#include "insight/vocabulary_lists.h"
#include "lsp/text_document.h"

#include <QHash>
#include <QString>
#include <QStringList>

#include <memory>

namespace lsp {

// Which project a file belongs to: its folder and the file names of that folder the
// IDE would list.
struct ProjectScope {
    QString path;
    QStringList files;
};

class Workspace : public ScanStore {
public:
    // Reads and scans the project's files; a folder without the Global file is no
    // project, and each document is then a project of one file.
    void openFolder(const QString& folder);
    bool hasProject() const { return !project_.path.isEmpty(); }
    const ProjectScope& project() const { return project_; }
    ProjectScope scopeOf(const QString& path) const;
    // A source file that appeared in the project folder since it was read (opened or
    // saved in the editor) becomes one of the project's files; true when it was added.
    bool noteProjectFile(const QString& path);
    // Another program changed, created or deleted the file at `path`: its stored scan is
    // read again when next asked for, and a new or deleted class file joins or leaves the
    // project. An open document keeps its text as typed.
    void fileChangedOnDisk(const QString& path, bool deleted);

    // Open documents by path; their scans follow their text.
    TextDocument* document(const QString& path);
    void openDocument(const QString& path, const QString& text);
    void documentChanged(const QString& path); // after an edit of document(path)
    void closeDocument(const QString& path);   // the file's stored scan counts again
    QStringList openPaths() const { return documents_.keys(); }
    // Changes with every edit of an open document (0 for one not open).
    quint64 generation(const QString& path) const;

    VocabularyTables vocabulary;

    // ScanStore
    std::shared_ptr<const DeclarationList> GetAll(const QString& path) const override;
    std::shared_ptr<const QList<qint64>> GetLineSeparators(const QString& path) const override;
    std::shared_ptr<const QStringList> GetLineSeparatorsType(const QString& path) const override;
    std::shared_ptr<const QHash<QString, QString>> GetLocalList(const QString& path) const override;

    // The current scan of a file (open document, else the stored file, read now if the
    // folder's scan did not include it); nullptr when it cannot be read.
    std::shared_ptr<const FileScan> scanOf(const QString& path) const;

private:
    struct OpenDocument {
        TextDocument text;
        mutable std::shared_ptr<const FileScan> scan; // nullptr after a change
        quint64 generation = 0;
    };
    quint64 nextGeneration_ = 0;
    ProjectScope project_;
    mutable QHash<QString, std::shared_ptr<const FileScan>> stored_;
    QHash<QString, OpenDocument> documents_;
};

// A resolver over the workspace for the file at `path`. The scope must outlive it.
TypeResolver resolverFor(const Workspace& workspace, const ProjectScope& scope);

} // namespace lsp
