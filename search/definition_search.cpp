#include "search/definition_search.h"

QString definitionMatchText(const DeclarationEntry& e) {
    const QString& k = e.kind;
    const bool typed = k == QLatin1String("Dim") || k == QLatin1String("Const") || k == QLatin1String("IBOutlet");
    const bool both = k == QLatin1String("Function") || k == QLatin1String("Delegate");
    // One allocation per row: a search may list tens of thousands.
    QString text;
    text.reserve(e.visibility.size() + k.size() + e.name.size() + e.parameters.size() + e.type.size() + 8);
    text.append(e.visibility).append(QLatin1Char(' ')).append(k).append(QLatin1Char(' ')).append(e.name);
    if (!typed)
        text.append(QLatin1Char(' ')).append(e.parameters);
    if (typed || both)
        text.append(QLatin1String(" As ")).append(e.type);
    return text;
}

QList<DefinitionMatch> findDefinitions(const ScanStore& scans, const QString& projectPath,
                                       const QStringList& projectFiles, const DefinitionQuery& query) {
    const Qt::CaseSensitivity cs = query.ignoreCase ? Qt::CaseInsensitive : Qt::CaseSensitive;
    QList<DefinitionMatch> matches;
    for (const QString& name : projectFiles) {
        if (query.onlyFile && name != *query.onlyFile)
            continue;
        const auto all = scans.GetAll(projectPath + QLatin1Char('/') + name);
        if (!all)
            continue; // never scanned
        for (const DeclarationEntry& e : all->rows) {
            if (!e.isEntry())
                continue;
            const bool isPublic = e.visibility == QLatin1String("Public");
            if (!((query.publicOnes && isPublic) || (query.privateOnes && !isPublic)) ||
                query.excludedKinds.contains(e.kind))
                continue;
            if (e.name.contains(query.needle, cs))
                matches.append({name, e});
        }
    }
    return matches;
}
