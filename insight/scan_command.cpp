#include "insight/scan_command.h"

#include "insight/declaration_scanner.h"
#include "insight/source_text.h"
#include "insight/tags.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <cstdio>

namespace {

void printError(const QString& message) {
    const QByteArray bytes = message.toLocal8Bit() + '\n';
    std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stderr);
}

QJsonArray entriesJson(const DeclarationList& list) {
    QJsonArray entries;
    for (qsizetype i = 0; i < list.entryCount(); ++i) {
        const DeclarationEntry& e = list.entry(i);
        entries.append(QJsonObject{{QStringLiteral("title"), e.title},
                                   {QStringLiteral("line"), e.line},
                                   {QStringLiteral("visibility"), e.visibility},
                                   {QStringLiteral("kind"), e.kind},
                                   {QStringLiteral("name"), e.name},
                                   {QStringLiteral("parameters"), e.parameters},
                                   {QStringLiteral("type"), e.type}});
    }
    return entries;
}

int runScan(const QStringList& files) {
    if (files.isEmpty()) {
        printError(QStringLiteral("usage: kelvaro --scan FILE..."));
        return 2;
    }
    QJsonArray results;
    int status = 0;
    QStringList unreadable;
    for (const QString& path : files) {
        const std::optional<QString> text = readSourceText(path);
        if (!text) {
            unreadable << path;
            status = 1;
            continue;
        }
        results.append(scanResultJson(path, scanDeclarations(*text)));
    }
    const QByteArray json = QJsonDocument(results).toJson(QJsonDocument::Compact) + '\n';
    std::fwrite(json.constData(), 1, size_t(json.size()), stdout);
    std::fflush(stdout);
    for (const QString& path : unreadable)
        printError(QStringLiteral("kelvaro --scan: cannot read %1").arg(path));
    return status;
}

int runTags(const QStringList& folders) {
    if (folders.size() != 1) {
        printError(QStringLiteral("usage: kelvaro --tags FOLDER"));
        return 2;
    }
    const TagsResult result = writeTagsFile(folders.first());
    for (const QString& message : result.errors)
        printError(QStringLiteral("kelvaro --tags: ") + message);
    if (result.written) {
        const QByteArray line =
            QStringLiteral("%1 tags written to %2\n").arg(result.tagCount).arg(result.tagsPath).toLocal8Bit();
        std::fwrite(line.constData(), 1, size_t(line.size()), stdout);
    }
    return result.errors.isEmpty() ? 0 : 1;
}

} // namespace

QJsonObject scanResultJson(const QString& path, const DeclarationLists& lists) {
    QJsonObject named;
    named.insert(QStringLiteral("All"), entriesJson(lists.all));
    for (DeclarationKind kind : allDeclarationKinds())
        named.insert(declarationKindInfo(kind).word, entriesJson(lists.list(kind)));

    QJsonArray separators;
    for (qint64 position : lists.lineSeparators)
        separators.append(position);
    QJsonObject locals;
    for (auto it = lists.locals.cbegin(); it != lists.locals.cend(); ++it)
        locals.insert(it.key(), it.value());

    return QJsonObject{{QStringLiteral("path"), path},
                       {QStringLiteral("lists"), named},
                       {QStringLiteral("lineSeparators"), separators},
                       {QStringLiteral("lineSeparatorsType"), QJsonArray::fromStringList(lists.lineSeparatorsType)},
                       {QStringLiteral("locals"), locals}};
}

bool isScannerCommand(const QStringList& args) {
    const QString command = args.value(1);
    return command == QLatin1String("--scan") || command == QLatin1String("--tags");
}

int runScannerCommand(const QStringList& args) {
    const QStringList rest = args.mid(2);
    return args.value(1) == QLatin1String("--scan") ? runScan(rest) : runTags(rest);
}
