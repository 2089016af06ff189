#include "insight/scan_command.h"

#include "insight/declaration_scanner.h"
#include "insight/every_core.h"
#include "insight/scan_json.h"
#include "insight/source_text.h"
#include "insight/tags.h"

#include <cstdio>
#include <memory>
#include <optional>
#include <thread>
#include <unistd.h>
#include <vector>

namespace {

void printError(const QString& message) {
    const QByteArray bytes = message.toLocal8Bit() + '\n';
    std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stderr);
}

// A text this large is cut into parts scanned on every core at once.
constexpr qsizetype splitAbove = 1 << 20;

// The JSON object of one file in pieces to print in order, or nothing when the file
// cannot be read. With more than one part, the locals are written on a second thread
// while this one writes the lists.
using JsonPieces = std::vector<JsonOutput>;

std::optional<JsonPieces> scanFileJson(const QString& path, int parts) {
    const std::optional<QByteArray> bytes = readSourceBytes(path);
    if (!bytes)
        return std::nullopt;
    if (bytes->size() < splitAbove)
        parts = 1;
    return withSourceText(*bytes, [&](auto text) {
        const auto record = recordDeclarations(text, parts);
        JsonPieces pieces(2);
        if (parts == 1) {
            appendScanResultJson(pieces[0], path, record);
            return pieces;
        }
        std::thread locals([&] { appendLocalsJson(pieces[1], record); });
        appendListsJson(pieces[0], path, record);
        locals.join();
        return pieces;
    });
}

// Scans the files on every core, each file once, results in argument order. A single
// large file is cut into parts instead.
std::vector<std::optional<JsonPieces>> scanFilesJson(const QStringList& files) {
    std::vector<std::optional<JsonPieces>> results(size_t(files.size()));
    if (files.size() == 1) {
        results[0] = scanFileJson(files[0], coreCount());
        return results;
    }
    forEachOnEveryCore(files.size(), [&](qsizetype i) { results[size_t(i)] = scanFileJson(files[i], 1); });
    return results;
}

bool writeAll(const char* bytes, std::size_t size) { return writeBytes(STDOUT_FILENO, {bytes, size}); }

int runScan(const QStringList& files) {
    if (files.isEmpty()) {
        printError(QStringLiteral("usage: kelvaro --scan FILE..."));
        return 2;
    }
    std::vector<std::optional<JsonPieces>> results = scanFilesJson(files);
    std::fflush(stdout);
    QStringList unreadable;
    bool first = true;
    bool written = writeAll("[", 1);
    for (size_t i = 0; i < results.size(); ++i) {
        if (!results[i]) {
            unreadable << files[qsizetype(i)];
            continue;
        }
        if (!first)
            written = written && writeAll(",", 1);
        first = false;
        for (const JsonOutput& piece : *results[i])
            written = written && piece.writeTo(STDOUT_FILENO);
        results[i].reset();
    }
    written = written && writeAll("]\n", 2);
    if (!written)
        printError(QStringLiteral("kelvaro --scan: cannot write the output"));
    for (const QString& path : unreadable)
        printError(QStringLiteral("kelvaro --scan: cannot read %1").arg(path));
    return unreadable.isEmpty() && written ? 0 : 1;
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
