// Definition and hover: the declaration the name or chain at the cursor names.
#include "lsp/capabilities.h"

#include "insight/source_text.h"
#include "lsp/declaration_lookup.h"
#include "lsp/protocol.h"

namespace lsp {

namespace {

// The name's place on the declaration's line, read from the file when it is not open.
QJsonObject placeOf(const Workspace& workspace, const Declaration& d) {
    QString lineText;
    if (const TextDocument* open = const_cast<Workspace&>(workspace).document(d.path)) {
        lineText = open->lineText(d.line).toString();
    } else if (const auto bytes = readSourceBytes(d.path)) {
        lineText = TextDocument(decodedSourceText(*bytes)).lineText(d.line).toString();
    }
    const qsizetype at = d.name.isEmpty() ? -1 : lineText.indexOf(d.name);
    const TextPosition start{d.line, qMax<qsizetype>(at, 0)};
    const TextPosition end{d.line, at < 0 ? 0 : at + d.name.size()};
    return {{QStringLiteral("uri"), uriOfPath(d.path)}, {QStringLiteral("range"), rangeJson(start, end)}};
}

} // namespace

QJsonValue definitionAt(const Workspace& workspace, const QString& path, const TextDocument& document,
                        TextPosition position) {
    const auto found = declarationAt(workspace, path, document, position);
    if (!found || found->path.isEmpty())
        return QJsonValue::Null;
    return placeOf(workspace, *found);
}

QJsonValue hoverAt(const Workspace& workspace, const QString& path, const TextDocument& document,
                   TextPosition position) {
    const auto found = declarationAt(workspace, path, document, position);
    if (!found)
        return QJsonValue::Null;
    return QJsonObject{{QStringLiteral("contents"),
                        QJsonObject{{QStringLiteral("kind"), QStringLiteral("markdown")},
                                    {QStringLiteral("value"), QStringLiteral("```kelvaro\n") + found->text +
                                                                  QStringLiteral("\n```")}}}};
}

} // namespace lsp
