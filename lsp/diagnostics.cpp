#include "lsp/diagnostics.h"

#include "insight/source_text.h"
#include "lsp/protocol.h"
#include "tools/lang/project.h"

#include <QFileInfo>

#include <algorithm>

namespace lsp {

DocumentChecker::DocumentChecker(const std::string& resourcesDir) { vocabulary_.loadPropertyLists(resourcesDir); }

QJsonArray DocumentChecker::check(Workspace& workspace, const QString& path) const {
    QJsonArray diagnostics;
    TextDocument* document = workspace.document(path);
    if (!document)
        return diagnostics;
    const ProjectScope scope = workspace.scopeOf(path);
    const QString own = QFileInfo(path).fileName();
    std::vector<klvr::SourceText> files;
    files.reserve(size_t(scope.files.size()) + 1);
    // A file on its own is checked as a project with an empty Global file.
    if (scope.files.isEmpty() || scope.files.front() != QLatin1String(klvr::kGlobalFileName))
        files.push_back({klvr::kGlobalFileName, std::string()});
    std::size_t index = 0;
    for (const QString& name : scope.files) {
        const QString file = scope.path + QLatin1Char('/') + name;
        if (name == own)
            index = files.size();
        std::string text;
        if (const TextDocument* open = workspace.document(file))
            text = open->text().toStdString();
        else if (const auto bytes = readSourceBytes(file))
            text = bytes->toStdString();
        files.push_back({name.toStdString(), std::move(text)});
    }
    const std::optional<klvr::Diagnostic> error = klvr::checkSourceOf(files, index, vocabulary_);
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
