// Completion: the IDE's candidates for the expression before the cursor (completion's
// engine over the workspace), the whole word's own completion text first, filtered by
// the partial word as the editor view filters them. Each item inserts its text.
#include "lsp/capabilities.h"

#include "insight/completion.h"
#include "insight/completion_context.h"
#include "lsp/protocol.h"

#include <QSet>

namespace lsp {

namespace {

enum CompletionKind { MethodItem = 2, FunctionItem = 3, FieldItem = 5, PropertyItem = 10, ConstantItem = 21 };

// The kind of each candidate by where it can come from: a built-in function, a
// constant, a declaration of a project class, otherwise a vocabulary member.
class KindOf {
public:
    KindOf(const Workspace& workspace, const QStringList& classFiles) : vocabulary_(workspace.vocabulary) {
        const ValueDictionary& functions = vocabulary_.functions.entries();
        for (qsizetype i = 0; i < functions.count(); ++i)
            functions_.insert(functions.valueAt(i).toString());
        for (const QString& file : classFiles)
            if (const auto all = workspace.GetAll(file))
                for (qsizetype i = 0; i < all->entryCount(); ++i) {
                    const DeclarationEntry& e = all->entry(i);
                    declared_.insert(e.name + e.parameters, e.kind == QLatin1String("Const") ? ConstantItem
                                                            : isMethodKind(e.kind)           ? MethodItem
                                                                                             : FieldItem);
                }
    }
    int operator()(const QString& candidate) const {
        if (const auto found = declared_.constFind(candidate); found != declared_.constEnd())
            return *found;
        if (functions_.contains(candidate))
            return FunctionItem;
        if (vocabulary_.consts.contains(candidate))
            return ConstantItem;
        return candidate.contains(QLatin1Char('(')) ? MethodItem : PropertyItem;
    }

private:
    const VocabularyTables& vocabulary_;
    QSet<QString> functions_;
    QHash<QString, int> declared_;
};

} // namespace

QJsonObject completionItems(const Workspace& workspace, const QString& path, const TextDocument& document,
                            TextPosition position) {
    const qsizetype offset = document.offsetAt(position);
    const TextPosition at = document.positionAt(offset);
    const CompletionLineContext context = completionContextOfLine(document.lineText(at.line).left(at.character));
    QJsonArray items;
    const QJsonObject empty{{QStringLiteral("isIncomplete"), false}, {QStringLiteral("items"), items}};
    if (context.inTextOrComment)
        return empty;
    const ProjectScope scope = workspace.scopeOf(path);
    const TypeResolver resolver = resolverFor(workspace, scope);
    const VocabularyTables& v = workspace.vocabulary;
    const CompletionVocabulary vocabulary{v.functions, v.consts, v.objects, v.classes};
    const bool noContext = context.expression == QStringView(completionNoContextMarker);
    QStringList candidates = completionCandidates(resolver, vocabulary, path, offset, context.expression);
    if (!context.partialWord.isEmpty()) {
        const QString word = noContext ? context.partialWord : context.expression + QLatin1Char('.') + context.partialWord;
        const QString own = completionText(resolver, vocabulary, path, offset, word);
        if (!own.isEmpty()) {
            candidates.removeAll(own);
            candidates.prepend(own);
        }
    }
    candidates.removeAll(QString());
    candidates = filterCompletionCandidates(candidates, context.partialWord);

    QStringList classFiles{path};
    if (!noContext)
        if (const QString file = resolver.classFile(resolver.FindType(path, offset, context.expression, false));
            !file.isEmpty())
            classFiles << file;
    const KindOf kindOf(workspace, classFiles);
    const TextPosition wordStart{at.line, context.wordStart};
    for (qsizetype i = 0; i < candidates.size(); ++i) {
        const QString& text = candidates.at(i);
        items.append(QJsonObject{
            {QStringLiteral("label"), text},
            {QStringLiteral("kind"), kindOf(text)},
            {QStringLiteral("sortText"), QStringLiteral("%1").arg(i, 6, 10, QLatin1Char('0'))},
            {QStringLiteral("filterText"), text},
            {QStringLiteral("textEdit"),
             QJsonObject{{QStringLiteral("range"), rangeJson(wordStart, at)}, {QStringLiteral("newText"), text}}}});
    }
    return {{QStringLiteral("isIncomplete"), false}, {QStringLiteral("items"), items}};
}

} // namespace lsp
