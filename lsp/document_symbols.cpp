// Declarations of one document, as the navigators list them; each method holds its
// local variables and parameters.
#include "lsp/capabilities.h"

#include "lsp/declaration_lookup.h"
#include "lsp/protocol.h"

#include <algorithm>

namespace lsp {

namespace {

QJsonObject symbol(const QString& name, const QString& detail, int kind, const QJsonObject& range,
                   const QJsonObject& selection) {
    return {{QStringLiteral("name"), name.isEmpty() ? QStringLiteral("?") : name},
            {QStringLiteral("detail"), detail},
            {QStringLiteral("kind"), kind},
            {QStringLiteral("range"), range},
            {QStringLiteral("selectionRange"), selection}};
}

// The name's place in its line, or the whole line when it is not written there.
QJsonObject nameRange(const TextDocument& document, qsizetype line, const QString& name) {
    const qsizetype at = name.isEmpty() ? -1 : document.lineText(line).indexOf(name);
    return at < 0 ? lineRange(document, line) : rangeJson({line, at}, {line, at + name.size()});
}

} // namespace

QJsonArray documentSymbols(const Workspace& workspace, const QString& path, const TextDocument& document) {
    QJsonArray symbols;
    const auto all = workspace.GetAll(path);
    const auto locals = workspace.GetLocalList(path);
    if (!all)
        return symbols;
    for (qsizetype i = 0; i < all->entryCount(); ++i) {
        const DeclarationEntry& entry = all->entry(i);
        const qsizetype line = qMin(entry.line - 1, document.lineCount() - 1);
        const QString detail = entry.parameters + (entry.type.isEmpty() ? QString() : QStringLiteral(" As ") + entry.type);
        if (!isMethodKind(entry.kind)) {
            symbols.append(symbol(entry.name, detail, symbolKindOf(entry.kind), lineRange(document, line),
                                  nameRange(document, line, entry.name)));
            continue;
        }
        // A method reaches to the line before the next method.
        qsizetype end = document.lineCount() - 1;
        for (qsizetype j = i + 1; j < all->entryCount(); ++j)
            if (isMethodKind(all->entry(j).kind)) {
                end = qMax(line, all->entry(j).line - 2);
                break;
            }
        // The method's locals and parameters, in line order (the table has none).
        struct Local {
            qsizetype line;
            QString name, type;
        };
        QList<Local> found;
        if (locals) {
            const QString prefix = entry.name + QLatin1Char('.');
            for (auto local = locals->constBegin(); local != locals->constEnd(); ++local) {
                if (!local.key().startsWith(prefix))
                    continue;
                const QString name = local.key().mid(prefix.size());
                const qsizetype at = localDimLine(document, line + 1, end + 1, name);
                found.append({at < 0 ? line : at, name, local.value()}); // not on a Dim line: a parameter
            }
        }
        std::sort(found.begin(), found.end(), [](const Local& a, const Local& b) {
            return a.line != b.line ? a.line < b.line : a.name < b.name;
        });
        QJsonArray children;
        for (const Local& local : found)
            children.append(symbol(local.name, QStringLiteral("As ") + local.type, VariableSymbol,
                                   lineRange(document, local.line), nameRange(document, local.line, local.name)));
        QJsonObject method = symbol(entry.name, detail, MethodSymbol,
                                    rangeJson({line, 0}, {end, document.lineText(end).size()}),
                                    nameRange(document, line, entry.name));
        if (!children.isEmpty())
            method.insert(QStringLiteral("children"), children);
        symbols.append(method);
    }
    return symbols;
}

} // namespace lsp
