#include "insight/scan_command.h"

#include "insight/declaration_scanner.h"
#include "insight/scan_json.h"
#include "insight/source_text.h"
#include "insight/tags.h"

#include <cstdio>
#include <memory>
#include <vector>

namespace {

std::vector<std::unique_ptr<const DeclarationLists>>& keptUntilExit() {
    static auto* kept = new std::vector<std::unique_ptr<const DeclarationLists>>;
    return *kept;
}

void printError(const QString& message) {
    const QByteArray bytes = message.toLocal8Bit() + '\n';
    std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stderr);
}

int runScan(const QStringList& files) {
    if (files.isEmpty()) {
        printError(QStringLiteral("usage: kelvaro --scan FILE..."));
        return 2;
    }
    QByteArray json = "[";
    int status = 0;
    QStringList unreadable;
    for (const QString& path : files) {
        const std::optional<QString> text = readSourceText(path);
        if (!text) {
            unreadable << path;
            status = 1;
            continue;
        }
        if (json.size() > 1)
            json += ',';
        json.reserve(json.size() + 2 * text->size());
        // The lists are left for the end of the process to reclaim: freeing tens of
        // thousands of small strings one by one would cost a large part of the run.
        keptUntilExit().push_back(std::make_unique<const DeclarationLists>(scanDeclarations(*text)));
        appendScanResultJson(json, path, *keptUntilExit().back());
    }
    json += "]\n";
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

bool isScannerCommand(const QStringList& args) {
    const QString command = args.value(1);
    return command == QLatin1String("--scan") || command == QLatin1String("--tags");
}

int runScannerCommand(const QStringList& args) {
    const QStringList rest = args.mid(2);
    return args.value(1) == QLatin1String("--scan") ? runScan(rest) : runTags(rest);
}
