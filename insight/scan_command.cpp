#include "insight/scan_command.h"

#include "insight/declaration_scanner.h"
#include "insight/scan_json.h"
#include "insight/source_text.h"
#include "insight/tags.h"

#include <QMutex>
#include <QMutexLocker>

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <memory>
#include <optional>
#include <thread>
#include <vector>

namespace {

void printError(const QString& message) {
    const QByteArray bytes = message.toLocal8Bit() + '\n';
    std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stderr);
}

// The JSON object of one file, or nothing when it cannot be read. The lists are left
// for the end of the process to reclaim: freeing tens of thousands of small strings
// one by one would cost a large part of the run. They stay reachable, so leak checkers
// do not count them.
std::optional<QByteArray> scanFileJson(const QString& path) {
    static QMutex keptMutex;
    static auto* kept = new std::vector<std::unique_ptr<const DeclarationLists>>;

    const std::optional<QString> text = readSourceText(path);
    if (!text)
        return std::nullopt;
    auto lists = std::make_unique<const DeclarationLists>(scanDeclarations(*text));
    QByteArray json;
    json.reserve(2 * text->size());
    appendScanResultJson(json, path, *lists);
    QMutexLocker locker(&keptMutex);
    kept->push_back(std::move(lists));
    return json;
}

// Scans the files on every core, each file once, results in argument order.
std::vector<std::optional<QByteArray>> scanFilesJson(const QStringList& files) {
    std::vector<std::optional<QByteArray>> results(size_t(files.size()));
    std::atomic<qsizetype> next{0};
    auto work = [&] {
        for (qsizetype i = next++; i < files.size(); i = next++)
            results[size_t(i)] = scanFileJson(files[i]);
    };
    const qsizetype workers = std::min<qsizetype>(files.size(), std::max(1u, std::thread::hardware_concurrency()));
    std::vector<std::thread> threads;
    for (qsizetype w = 1; w < workers; ++w)
        threads.emplace_back(work);
    work();
    for (std::thread& thread : threads)
        thread.join();
    return results;
}

int runScan(const QStringList& files) {
    if (files.isEmpty()) {
        printError(QStringLiteral("usage: kelvaro --scan FILE..."));
        return 2;
    }
    std::vector<std::optional<QByteArray>> results = scanFilesJson(files);
    QByteArray json = "[";
    QStringList unreadable;
    for (size_t i = 0; i < results.size(); ++i) {
        if (!results[i]) {
            unreadable << files[qsizetype(i)];
            continue;
        }
        if (json.size() > 1)
            json += ',';
        json += *results[i];
        results[i].reset();
    }
    json += "]\n";
    std::fwrite(json.constData(), 1, size_t(json.size()), stdout);
    std::fflush(stdout);
    for (const QString& path : unreadable)
        printError(QStringLiteral("kelvaro --scan: cannot read %1").arg(path));
    return unreadable.isEmpty() ? 0 : 1;
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
