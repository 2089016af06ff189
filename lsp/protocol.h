#pragma once
// Small pieces of the protocol's data shared by the capabilities: URIs and paths,
// positions and ranges, the symbol kinds of declarations.

#include "insight/declarations.h"
#include "lsp/text_document.h"

#include <QJsonObject>
#include <QString>

namespace lsp {

// Error codes of JSON-RPC and of the protocol.
enum ErrorCode {
    ParseError = -32700,
    InvalidRequest = -32600,
    MethodNotFound = -32601,
    InvalidParams = -32602,
    InternalError = -32603,
    ServerNotInitialized = -32002,
    RequestCancelled = -32800,
};

// Symbol and completion item kinds used here.
enum SymbolKind { ClassSymbol = 5, MethodSymbol = 6, FieldSymbol = 8, FunctionSymbol = 12, VariableSymbol = 13,
                  ConstantSymbol = 14 };

QString pathOfUri(const QString& uri);
QString uriOfPath(const QString& path);

TextPosition positionOf(const QJsonValue& position);
QJsonObject positionJson(TextPosition position);
QJsonObject rangeJson(TextPosition start, TextPosition end);
// Line `line` (0-based) from its first to its last character.
QJsonObject lineRange(const TextDocument& document, qsizetype line);

// Sub, Function, Action, Event, Delegate and IBAction are methods; Dim and IBOutlet
// fields; Const a constant.
int symbolKindOf(const QString& declarationKind);
bool isMethodKind(const QString& declarationKind);

} // namespace lsp
