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

DocumentChecker::DocumentChecker(const std::string& resourcesDir) { vocabulary_.loadPropertyLists(resourcesDir); }

void DocumentChecker::prepare(const Workspace& workspace) {
    project_.reset();
    indexOf_.clear();
    generations_.clear();
    if (!workspace.hasProject())
        return;
    const ProjectScope& scope = workspace.project();
    std::vector<klvr::SourceText> files(size_t(scope.files.size()));
    // Read on a few threads, like the compiler's own check.
    std::vector<std::thread> readers;
    const qsizetype threads = std::clamp<qsizetype>(std::thread::hardware_concurrency(), 1, 4);
    for (qsizetype t = 0; t < threads; ++t)
        readers.emplace_back([&, t] {
            for (qsizetype i = t; i < scope.files.size(); i += threads)
                files[size_t(i)] = {scope.files.at(i).toStdString(),
                                    textOf(workspace, scope.path + QLatin1Char('/') + scope.files.at(i))};
        });
    for (std::thread& reader : readers)
        reader.join();
    for (qsizetype i = 0; i < scope.files.size(); ++i) {
        const QString path = scope.path + QLatin1Char('/') + scope.files.at(i);
        indexOf_.insert(path, i);
        generations_.insert(path, workspace.generation(path));
    }
    project_ = std::make_unique<klvr::ProjectChecker>(std::move(files));
}

void DocumentChecker::closed(const QString& path) {
    if (!project_ || !indexOf_.contains(path))
        return;
    const auto bytes = readSourceBytes(path);
    project_->setText(size_t(indexOf_.value(path)), bytes ? bytes->toStdString() : std::string());
    generations_.insert(path, 0);
}

std::optional<klvr::Diagnostic> DocumentChecker::checkInProject(const Workspace& workspace, const QString& path) {
    if (!project_)
        prepare(workspace);
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
    std::optional<klvr::Diagnostic> error;
    if (workspace.hasProject() && indexOf_.contains(path)) {
        error = checkInProject(workspace, path);
    } else if (workspace.hasProject() && !project_ && workspace.project().files.contains(own) &&
               workspace.scopeOf(path).path == workspace.project().path) {
        prepare(workspace);
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
