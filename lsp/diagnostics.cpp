#include "lsp/diagnostics.h"

#include "insight/source_text.h"
#include "lsp/protocol.h"

#include <QFileInfo>

#include <algorithm>

namespace lsp {

namespace {

std::string textOf(const Workspace& workspace, const QString& path) {
    if (const TextDocument* open = const_cast<Workspace&>(workspace).document(path))
        return open->text().toStdString();
    const auto bytes = readSourceBytes(path);
    return bytes ? bytes->toStdString() : std::string();
}

} // namespace

DocumentChecker::DocumentChecker(const std::string& resourcesDir, const Workspace& workspace) {
    const ProjectScope project = workspace.hasProject() ? workspace.project() : ProjectScope();
    preparing_ = std::thread([this, resourcesDir, project] { prepare(resourcesDir, project); });
}

DocumentChecker::~DocumentChecker() { waitUntilPrepared(); }

void DocumentChecker::waitUntilPrepared() {
    if (preparing_.joinable())
        preparing_.join();
}

void DocumentChecker::prepare(const std::string& resourcesDir, const ProjectScope& scope) {
    vocabulary_.loadPropertyLists(resourcesDir);
    if (scope.path.isEmpty())
        return;
    std::vector<klvr::SourceText> files(size_t(scope.files.size()));
    for (qsizetype i = 0; i < scope.files.size(); ++i) {
        const auto bytes = readSourceBytes(scope.path + QLatin1Char('/') + scope.files.at(i));
        files[size_t(i)] = {scope.files.at(i).toStdString(), bytes ? bytes->toStdString() : std::string()};
    }
    for (qsizetype i = 0; i < scope.files.size(); ++i)
        indexOf_.insert(scope.path + QLatin1Char('/') + scope.files.at(i), i);
    // Open documents are taken as typed at the first check (their generation is not 0).
    project_ = std::make_unique<klvr::ProjectChecker>(std::move(files));
}

void DocumentChecker::closed(const QString& path) {
    waitUntilPrepared();
    if (!project_ || !indexOf_.contains(path))
        return;
    const auto bytes = readSourceBytes(path);
    project_->setText(size_t(indexOf_.value(path)), bytes ? bytes->toStdString() : std::string());
    generations_.insert(path, 0);
}

std::optional<klvr::Diagnostic> DocumentChecker::checkInProject(const Workspace& workspace, const QString& path) {
    if (!project_)
        return std::nullopt;
    for (const QString& open : workspace.openPaths()) {
        const auto index = indexOf_.constFind(open);
        if (index == indexOf_.constEnd() || generations_.value(open) == workspace.generation(open))
            continue;
        project_->setText(size_t(*index), textOf(workspace, open));
        generations_.insert(open, workspace.generation(open));
    }
    return project_->check(size_t(indexOf_.value(path)), vocabulary_);
}

QJsonArray DocumentChecker::check(const Workspace& workspace, const QString& path) {
    QJsonArray diagnostics;
    const TextDocument* document = const_cast<Workspace&>(workspace).document(path);
    if (!document)
        return diagnostics;
    const QString own = QFileInfo(path).fileName();
    waitUntilPrepared();
    std::optional<klvr::Diagnostic> error;
    if (quint64(document->text().size()) > klvr::kMaxSourceBytes) {
        // The compiler refuses to read a file this large (its UTF-8 is at least as long).
        error = klvr::Diagnostic{"File too large", 1, own.toStdString()};
    } else if (indexOf_.contains(path)) {
        error = checkInProject(workspace, path);
    } else {
        // A file outside the project, or new in it: its scope checked whole, a file on
        // its own as a project with an empty Global file.
        const ProjectScope scope = workspace.scopeOf(path);
        std::vector<klvr::SourceText> files;
        if (scope.files.isEmpty() || scope.files.front() != QLatin1String(klvr::kGlobalFileName))
            files.push_back({klvr::kGlobalFileName, std::string()});
        std::size_t index = 0;
        for (const QString& name : scope.files) {
            if (name == own)
                index = files.size();
            files.push_back({name.toStdString(), textOf(workspace, scope.path + QLatin1Char('/') + name)});
        }
        error = klvr::checkSourceOf(files, index, vocabulary_);
    }
    if (!error || QString::fromStdString(error->file) != own)
        return diagnostics;
    const qsizetype line = std::clamp<qsizetype>(error->line - 1, 0, document->lineCount() - 1);
    diagnostics.append(QJsonObject{{QStringLiteral("range"), lineRange(*document, line)},
                                   {QStringLiteral("severity"), 1},
                                   {QStringLiteral("source"), QStringLiteral("klvrcompiler")},
                                   {QStringLiteral("message"), QString::fromStdString(error->message)}});
    return diagnostics;
}

} // namespace lsp
