// Declarations of the whole project whose names contain the query, ignoring letter
// case, found by the find-definition engine.
#include "lsp/capabilities.h"

#include "lsp/protocol.h"
#include "search/definition_search.h"

namespace lsp {

QJsonArray workspaceSymbols(const Workspace& workspace, const QString& query) {
    QJsonArray symbols;
    if (!workspace.hasProject())
        return symbols;
    DefinitionQuery search;
    search.needle = query;
    search.ignoreCase = true;
    const ProjectScope& project = workspace.project();
    for (const DefinitionMatch& match : findDefinitions(workspace, project.path, project.files, search)) {
        const TextPosition start{qsizetype(match.entry.line - 1), 0};
        symbols.append(QJsonObject{
            {QStringLiteral("name"), match.entry.name},
            {QStringLiteral("kind"), symbolKindOf(match.entry.kind)},
            {QStringLiteral("containerName"), sourceClassName(match.file)},
            {QStringLiteral("location"),
             QJsonObject{{QStringLiteral("uri"), uriOfPath(project.path + QLatin1Char('/') + match.file)},
                         {QStringLiteral("range"), rangeJson(start, start)}}}});
    }
    return symbols;
}

} // namespace lsp
