#include "scan_json_check.h"

#include <QJsonArray>

// The --scan object of `lists` read back, compared field for field with a scan.
QString jsonDifference(const QJsonObject& object, const DeclarationLists& lists) {
    const QJsonObject named = object["lists"].toObject();
    auto compareList = [&](const QString& word, const DeclarationList& list) -> QString {
        const QJsonArray entries = named[word].toArray();
        if (entries.size() != list.entryCount())
            return word + ": entry count";
        for (qsizetype i = 0; i < list.entryCount(); ++i) {
            const QJsonObject e = entries[i].toObject();
            const DeclarationEntry& d = list.entry(i);
            if (e.size() != 7 || e["title"].toString() != d.title || e["line"].toInteger() != d.line ||
                e["visibility"].toString() != d.visibility || e["kind"].toString() != d.kind ||
                e["name"].toString() != d.name || e["parameters"].toString() != d.parameters ||
                e["type"].toString() != d.type)
                return QString("%1 entry %2").arg(word).arg(i);
        }
        return {};
    };
    if (QString d = compareList("All", lists.all); !d.isEmpty())
        return d;
    for (DeclarationKind kind : allDeclarationKinds())
        if (QString d = compareList(declarationKindInfo(kind).word, lists.list(kind)); !d.isEmpty())
            return d;
    if (named.size() != 10)
        return "not ten lists";
    QList<qint64> separators;
    for (const QJsonValue v : object["lineSeparators"].toArray())
        separators << v.toInteger();
    if (separators != lists.lineSeparators)
        return "lineSeparators";
    QStringList names;
    for (const QJsonValue v : object["lineSeparatorsType"].toArray())
        names << v.toString();
    if (names != lists.lineSeparatorsType)
        return "lineSeparatorsType";
    QHash<QString, QString> locals;
    const QJsonObject localObject = object["locals"].toObject();
    for (auto it = localObject.begin(); it != localObject.end(); ++it)
        locals.insert(it.key(), it.value().toString());
    if (locals != lists.locals)
        return "locals";
    return {};
}

