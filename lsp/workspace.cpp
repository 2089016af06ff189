#include "lsp/workspace.h"

#include "insight/every_core.h"
#include "insight/source_text.h"
#include "search/project_search.h"

#include <QFileInfo>

namespace lsp {

namespace {

const QString globalFileName = QStringLiteral("Global.NSObject.klvr");

template <class Part, class Pick>
std::shared_ptr<const Part> partOf(std::shared_ptr<const FileScan> scan, Pick pick) {
    if (!scan)
        return nullptr;
    return std::shared_ptr<const Part>(scan, &pick(scan->lists()));
}

} // namespace

void Workspace::openFolder(const QString& folder) {
    stored_.clear();
    project_ = {};
    const QString path = QFileInfo(folder).absoluteFilePath();
    if (folder.isEmpty() || !QFileInfo::exists(path + QLatin1Char('/') + globalFileName))
        return;
    project_ = {path, project_search::sourceFilesOf(path)};
    // Every file is read and scanned on every core, as the IDE's opening does; the
    // lists of a file are made when first asked for.
    QList<std::shared_ptr<const FileScan>> scans(project_.files.size());
    forEachOnEveryCore(project_.files.size(), [&](qsizetype i) {
        thread_local QByteArray buffer;
        if (!readSourceBytesInto(project_.path + QLatin1Char('/') + project_.files.at(i), buffer))
            buffer.clear();
        scans[i] = std::make_shared<FileScan>(buffer);
        if (buffer.capacity() > (8 << 20))
            buffer = QByteArray();
    });
    for (qsizetype i = 0; i < scans.size(); ++i)
        stored_.insert(project_.path + QLatin1Char('/') + project_.files.at(i), std::move(scans[i]));
}

ProjectScope Workspace::scopeOf(const QString& path) const {
    const QFileInfo info(path);
    if (hasProject() && info.absolutePath() == project_.path) {
        if (project_.files.contains(info.fileName()))
            return project_;
        // A new file of the project, not yet saved when the folder was read.
        ProjectScope scope = project_;
        scope.files.append(info.fileName());
        return scope;
    }
    return {info.absolutePath(), {info.fileName()}};
}

bool Workspace::noteProjectFile(const QString& path) {
    const QFileInfo info(path);
    if (!hasProject() || info.absolutePath() != project_.path || project_.files.contains(info.fileName()) ||
        !info.isFile())
        return false;
    QStringList names = project_.files;
    names.append(info.fileName());
    names.sort(); // the IDE lists the folder by name, the Global file first
    project_.files = project_search::sourceFiles(names);
    return project_.files.contains(info.fileName());
}

void Workspace::fileChangedOnDisk(const QString& path, bool deleted) {
    stored_.remove(path);
    const QFileInfo info(path);
    if (!hasProject() || info.absolutePath() != project_.path)
        return;
    if (!deleted) {
        noteProjectFile(path);
        return;
    }
    if (!documents_.contains(path))
        project_.files.removeAll(info.fileName());
}

TextDocument* Workspace::document(const QString& path) {
    const auto found = documents_.find(path);
    return found == documents_.end() ? nullptr : &found->text;
}

void Workspace::openDocument(const QString& path, const QString& text) {
    documents_.insert(path, OpenDocument{TextDocument(text), nullptr, ++nextGeneration_});
}

quint64 Workspace::generation(const QString& path) const {
    const auto found = documents_.constFind(path);
    return found == documents_.constEnd() ? 0 : found->generation;
}

void Workspace::documentChanged(const QString& path) {
    const auto found = documents_.find(path);
    if (found != documents_.end()) {
        found->scan.reset();
        found->generation = ++nextGeneration_;
    }
}

void Workspace::closeDocument(const QString& path) {
    documents_.remove(path);
    stored_.remove(path); // read again from the file, which may have been saved
}

std::shared_ptr<const FileScan> Workspace::scanOf(const QString& path) const {
    const auto open = documents_.constFind(path);
    if (open != documents_.constEnd()) {
        // A document is scanned again only when asked about after a change, so typing
        // costs no scan.
        if (!open->scan)
            open->scan = std::make_shared<FileScan>(open->text.text().toUtf8());
        return open->scan;
    }
    auto stored = stored_.constFind(path);
    if (stored != stored_.constEnd())
        return *stored;
    const std::optional<QByteArray> bytes = readSourceBytes(path);
    if (!bytes)
        return nullptr;
    return *stored_.insert(path, std::make_shared<FileScan>(*bytes));
}

std::shared_ptr<const DeclarationList> Workspace::GetAll(const QString& path) const {
    return partOf<DeclarationList>(scanOf(path), [](const DeclarationLists& l) -> auto& { return l.all; });
}

std::shared_ptr<const QList<qint64>> Workspace::GetLineSeparators(const QString& path) const {
    return partOf<QList<qint64>>(scanOf(path), [](const DeclarationLists& l) -> auto& { return l.lineSeparators; });
}

std::shared_ptr<const QStringList> Workspace::GetLineSeparatorsType(const QString& path) const {
    return partOf<QStringList>(scanOf(path), [](const DeclarationLists& l) -> auto& { return l.lineSeparatorsType; });
}

std::shared_ptr<const QHash<QString, QString>> Workspace::GetLocalList(const QString& path) const {
    return partOf<QHash<QString, QString>>(scanOf(path), [](const DeclarationLists& l) -> auto& { return l.locals; });
}

TypeResolver resolverFor(const Workspace& workspace, const ProjectScope& scope) {
    return TypeResolver(workspace, {scope.path, scope.files, workspace.vocabulary.classes});
}

} // namespace lsp
