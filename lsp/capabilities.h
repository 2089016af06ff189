#pragma once
// The answers of the server's requests, one file each; every one reads the workspace
// and returns the result's JSON. The server loop (lsp/server.*) calls them.

#include "lsp/workspace.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QJsonValue>

namespace lsp {

// textDocument/documentSymbol (lsp/document_symbols.cpp)
QJsonArray documentSymbols(const Workspace& workspace, const QString& path, const TextDocument& document);
// workspace/symbol (lsp/workspace_symbols.cpp)
QJsonArray workspaceSymbols(const Workspace& workspace, const QString& query);
// textDocument/completion (lsp/completion_items.cpp)
QJsonObject completionItems(const Workspace& workspace, const QString& path, const TextDocument& document,
                            TextPosition position);
// textDocument/definition and textDocument/hover (lsp/navigation.cpp); null when none.
QJsonValue definitionAt(const Workspace& workspace, const QString& path, const TextDocument& document,
                        TextPosition position);
QJsonValue hoverAt(const Workspace& workspace, const QString& path, const TextDocument& document,
                   TextPosition position);

} // namespace lsp
