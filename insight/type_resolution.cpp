#include "insight/type_resolution.h"

namespace {

// The type of the first entry named `name` (Public ones only when asked) of a list.
QString memberType(const DeclarationList* all, QStringView name, bool publicOnly) {
    if (!all)
        return {};
    for (qsizetype i = 0; i < all->entryCount(); ++i) {
        const DeclarationEntry& entry = all->entry(i);
        if (entry.name == name && (!publicOnly || entry.visibility == QLatin1String("Public")))
            return entry.type;
    }
    return {};
}

// Element `index` of a vocabulary member record as text; "" for a short record.
QString recordElement(const Value& record, qsizetype index) {
    const ValueArray& items = record.items();
    return index < items.size() ? items.at(index).toString() : QString();
}

} // namespace

QString sourceFileName(const QString& path) {
    QStringView p(path);
    while (p.size() > 1 && p.endsWith(QLatin1Char('/')))
        p.chop(1);
    return p.mid(p.lastIndexOf(QLatin1Char('/')) + 1).toString();
}

QString sourceBaseName(const QString& name) {
    const qsizetype point = name.indexOf(QLatin1Char('.'));
    return point > 0 ? name.left(point) : name;
}

QString sourceClassName(const QString& path) {
    const QString name = sourceFileName(path);
    const qsizetype point = name.indexOf(QLatin1Char('.'));
    return point < 0 ? name : name.left(point);
}

QString TypeResolver::GetCurrentScope(const QString& path, qint64 position) const {
    const auto starts = scans_.GetLineSeparators(path);
    const auto names = scans_.GetLineSeparatorsType(path);
    if (!starts || !names)
        return {};
    // Both parts are read under the store's lock one after the other; a scan published
    // between them could make them differ in length, so only common indexes are used.
    const qsizetype count = qMin(starts->size(), names->size());
    qint64 kept = -1;
    qsizetype keptIndex = -1;
    for (qsizetype i = count - 1; i >= 0; --i) {
        const qint64 start = starts->at(i);
        if (start < position && start > kept) {
            kept = start;
            keptIndex = i;
        }
    }
    return keptIndex < 0 ? QString() : names->at(keptIndex);
}

QString TypeResolver::FindLocalVariable(const QString& path, const QString& scope, const QString& name) const {
    const auto locals = scans_.GetLocalList(path);
    return locals ? locals->value(scope + QLatin1Char('.') + name) : QString();
}

QString TypeResolver::FindClassVariable(const QString& path, const QString& name, const QString& visibility) const {
    return memberType(scans_.GetAll(path).get(), name, visibility == QLatin1String("Public"));
}

QString TypeResolver::FindGlobalVariable(const QString& name) const {
    return FindClassVariable(project_.projectPath + QStringLiteral("/Global.NSObject.klvr"), name,
                             QStringLiteral("Public"));
}

QString TypeResolver::classFile(const QString& className) const {
    for (const QString& file : project_.projectFiles) {
        const qsizetype point = file.indexOf(QLatin1Char('.'));
        if (QStringView(file).left(point < 0 ? file.size() : point) == className)
            return project_.projectPath + QLatin1Char('/') + file;
    }
    return {};
}

Value TypeResolver::vocabularyClass(const QString& name) const {
    return project_.vocabularyClasses.entries().value(name);
}

QString TypeResolver::FindType(const QString& path, qint64 position, const QString& expression,
                               bool leaveOutLast) const {
    const QStringList segments = expression.split(QLatin1Char('.'));
    const qsizetype visited = leaveOutLast ? segments.size() - 1 : segments.size();
    if (visited <= 0)
        return {};
    // A chain names few classes however long it is: each project class's file is
    // looked for once per request.
    QHash<QString, QString> filesOfClasses;
    QString type;
    for (qsizetype i = 0; i < visited; ++i) {
        QStringView segment = segments.at(i);
        if (const qsizetype paren = segment.indexOf(QLatin1Char('(')); paren >= 0)
            segment = segment.left(paren);
        if (i == 0) {
            if (segment.toString().toLower() == QLatin1String("me")) {
                type = sourceClassName(path);
                continue;
            }
            const QString name = segment.toString();
            type = FindLocalVariable(path, GetCurrentScope(path, position), name);
            if (type.isEmpty())
                type = FindClassVariable(path, name, QString());
            if (type.isEmpty())
                type = FindGlobalVariable(name);
        } else {
            // A type that is neither a vocabulary class nor a project class, or a
            // segment that names no Public member, makes the whole chain unknown.
            const Value members = vocabularyClass(type);
            if (members.isDictionary()) {
                type = recordElement(members.entries().value(segment.toString()), 2);
            } else {
                auto file = filesOfClasses.find(type);
                if (file == filesOfClasses.end())
                    file = filesOfClasses.insert(type, classFile(type));
                type = file->isEmpty() ? QString() : memberType(scans_.GetAll(*file).get(), segment, true);
            }
        }
        if (type.isEmpty())
            return {};
    }
    return type;
}

QStringList TypeResolver::GetCustomClassIdentifiers(const QString& path, const QString& className) const {
    QString file = path;
    bool publicOnly = false;
    if (className != sourceBaseName(sourceFileName(path))) {
        file = classFile(className);
        if (file.isEmpty())
            return {};
        publicOnly = true;
    }
    QStringList identifiers;
    const auto all = scans_.GetAll(file);
    if (!all)
        return identifiers;
    identifiers.reserve(all->entryCount());
    for (qsizetype i = 0; i < all->entryCount(); ++i) {
        const DeclarationEntry& entry = all->entry(i);
        if (!publicOnly || entry.visibility == QLatin1String("Public"))
            identifiers << entry.name + entry.parameters;
    }
    return identifiers;
}
