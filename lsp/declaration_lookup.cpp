#include "lsp/declaration_lookup.h"

#include "insight/completion.h"
#include "insight/completion_context.h"
#include "lsp/protocol.h"

namespace lsp {

namespace {

bool isWordChar(QChar c) { return c.isLetterOrNumber() || c == u'_'; }

std::optional<Declaration> memberOf(const Workspace& workspace, const QString& file, const QString& name,
                                    bool publicOnly) {
    const auto all = workspace.GetAll(file);
    if (!all)
        return std::nullopt;
    for (qsizetype i = 0; i < all->entryCount(); ++i) {
        const DeclarationEntry& entry = all->entry(i);
        if (entry.name == name && (!publicOnly || entry.visibility == QLatin1String("Public")))
            return Declaration{file, entry.line - 1, entry.name,
                               entry.visibility + QLatin1Char(' ') + entry.kind + QLatin1Char(' ') + entry.title.trimmed()};
    }
    return std::nullopt;
}

// The declaration of the method `scope` and the line where the next one begins.
std::optional<Declaration> localOf(const Workspace& workspace, const QString& path, const TextDocument& document,
                                   const QString& scope, const QString& name, const QString& type) {
    const auto all = workspace.GetAll(path);
    if (!all)
        return std::nullopt;
    for (qsizetype i = 0; i < all->entryCount(); ++i) {
        const DeclarationEntry& method = all->entry(i);
        if (method.name != scope || !isMethodKind(method.kind))
            continue;
        qsizetype end = document.lineCount();
        for (qsizetype j = i + 1; j < all->entryCount(); ++j)
            if (isMethodKind(all->entry(j).kind)) {
                end = all->entry(j).line - 1;
                break;
            }
        qsizetype line = localDimLine(document, method.line, end, name);
        if (line < 0)
            line = method.line - 1; // a parameter
        return Declaration{path, line, name, QStringLiteral("Dim ") + name + QStringLiteral(" As ") + type};
    }
    return std::nullopt;
}

} // namespace

qsizetype localDimLine(const TextDocument& document, qsizetype firstLine, qsizetype endLine, const QString& name) {
    for (qsizetype line = qMax<qsizetype>(firstLine, 0); line < qMin(endLine, document.lineCount()); ++line) {
        const QStringView text = document.lineText(line).trimmed();
        if (!text.startsWith(QLatin1String("Dim ")))
            continue;
        const qsizetype at = text.indexOf(name, 4);
        if (at >= 0 && !(at + name.size() < text.size() && isWordChar(text[at + name.size()])) &&
            !isWordChar(text[at - 1]))
            return line;
    }
    return -1;
}

std::optional<Declaration> declarationAt(const Workspace& workspace, const QString& path,
                                         const TextDocument& document, TextPosition position) {
    // A position past its line or the text stands at the nearest place in the text.
    const TextPosition at = document.positionAt(document.offsetAt(position));
    const QStringView line = document.lineText(at.line);
    const qsizetype column = at.character;
    qsizetype start = column, end = column;
    while (start > 0 && isWordChar(line[start - 1]))
        --start;
    while (end < line.size() && isWordChar(line[end]))
        ++end;
    if (start == end)
        return std::nullopt;
    const CompletionLineContext context = completionContextOfLine(line.left(end));
    const QString& word = context.partialWord;
    const qint64 offset = document.offsetAt(position);
    const ProjectScope scope = workspace.scopeOf(path);
    const TypeResolver resolver = resolverFor(workspace, scope);
    const QString ownClass = sourceClassName(path);

    if (context.expression != QStringView(completionNoContextMarker)) {
        const QString type = resolver.FindType(path, offset, context.expression + QLatin1Char('.') + word, true);
        if (type.isEmpty())
            return std::nullopt;
        const Value members = resolver.vocabularyClass(type);
        if (members.isDictionary()) {
            const ValueArray& record = members.entries().value(word).items();
            if (record.isEmpty())
                return std::nullopt;
            const QString text = record.at(0).toString();
            const QString memberType = record.size() > 2 ? record.at(2).toString() : QString();
            return Declaration{{}, 0, word, memberType.isEmpty() ? text : text + QStringLiteral(" As ") + memberType};
        }
        if (type == ownClass)
            return memberOf(workspace, path, word, false);
        const QString file = resolver.classFile(type);
        return file.isEmpty() ? std::nullopt : memberOf(workspace, file, word, true);
    }
    if (word.compare(QLatin1String("me"), Qt::CaseInsensitive) == 0)
        return Declaration{path, 0, {}, QStringLiteral("Class ") + ownClass};
    const QString method = resolver.GetCurrentScope(path, offset);
    if (const QString type = resolver.FindLocalVariable(path, method, word); !type.isEmpty())
        if (auto local = localOf(workspace, path, document, method, word, type))
            return local;
    if (auto member = memberOf(workspace, path, word, false))
        return member;
    if (auto global = memberOf(workspace, scope.path + QStringLiteral("/Global.NSObject.klvr"), word, true))
        return global;
    if (const QString file = resolver.classFile(word); !file.isEmpty())
        return Declaration{file, 0, {}, QStringLiteral("Class ") + word};
    return std::nullopt;
}

} // namespace lsp
