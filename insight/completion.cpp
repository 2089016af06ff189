#include "insight/completion.h"

namespace {

// Element 1 (the completion text) of every member record of a member map, in its order.
QStringList completionTexts(const Value& memberMap) {
    QStringList texts;
    const ValueDictionary& members = memberMap.entries();
    texts.reserve(members.count());
    for (qsizetype i = 0; i < members.count(); ++i) {
        const ValueArray& record = members.valueAt(i).items();
        texts << (record.size() > 1 ? record.at(1).toString() : QString());
    }
    return texts;
}

} // namespace

QStringList completionCandidates(const TypeResolver& resolver, const CompletionVocabulary& vocabulary,
                                 const QString& path, qint64 position, const QString& expression) {
    if (expression == QStringView(completionNoContextMarker)) {
        const ValueDictionary& functions = vocabulary.functions.entries();
        QStringList candidates;
        candidates.reserve(functions.count() + vocabulary.constants.size());
        for (qsizetype i = 0; i < functions.count(); ++i)
            candidates << functions.valueAt(i).toString();
        candidates << vocabulary.constants;
        candidates << resolver.GetCustomClassIdentifiers(path, sourceBaseName(sourceFileName(path)));
        return candidates;
    }
    if (vocabulary.objects.entries().contains(expression))
        return completionTexts(vocabulary.objects.entries().value(expression));
    const QString type = resolver.FindType(path, position, expression, false);
    if (type.isEmpty())
        return {};
    const Value members = vocabulary.classes.entries().value(type);
    if (members.isDictionary()) {
        QStringList texts = completionTexts(members);
        if (!texts.isEmpty())
            return texts;
    }
    return resolver.GetCustomClassIdentifiers(path, type);
}

QString completionText(const TypeResolver& resolver, const CompletionVocabulary& vocabulary, const QString& path,
                       qint64 position, const QString& word) {
    if (!word.contains(QLatin1Char('.'))) {
        const ValueDictionary& functions = vocabulary.functions.entries();
        const QString key = word.toLower();
        if (functions.contains(key))
            return functions.value(key).toString();
    }
    const QString type = resolver.FindType(path, position, word, true);
    const Value members = vocabulary.classes.entries().value(type);
    if (type.isEmpty() || !members.isDictionary())
        return {};
    const Value record = members.entries().value(word.mid(word.lastIndexOf(QLatin1Char('.')) + 1));
    const ValueArray& items = record.items();
    return items.size() > 1 ? items.at(1).toString() : QString();
}
