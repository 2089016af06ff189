// In-process scan throughput: the pure engine on realistic text of several sizes, and
// ParseFile (read from disk, scan, publish) on a 200,000-line file. Bytes processed are
// the file's UTF-8 size, so the MB/s compare with the command-line figures.
#include "corpus_writer.h"
#include "insight/declaration_scanner.h"
#include "insight/parser.h"
#include "insight/scan_json.h"

#include <QFile>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

namespace {

void BM_ScanDeclarations(benchmark::State& state) {
    const QByteArray bytes = kelvaroClassSource("Bench", int(state.range(0)), 1);
    const QString text = QString::fromUtf8(bytes);
    for (auto _ : state) {
        DeclarationLists lists = scanDeclarations(text);
        benchmark::DoNotOptimize(lists);
    }
    state.SetBytesProcessed(int64_t(state.iterations()) * bytes.size());
    state.counters["declarations"] = double(scanDeclarations(text).all.entryCount());
}
BENCHMARK(BM_ScanDeclarations)->Arg(1000)->Arg(20000)->Arg(200000)->Arg(400000)->Unit(benchmark::kMillisecond);

// The record of an ASCII text read as bytes, on one thread and cut into two parts
// (what `kelvaro --scan` does with a large file).
void BM_RecordDeclarations(benchmark::State& state) {
    const QByteArray bytes = kelvaroClassSource("Bench", 200000, 1);
    const std::string_view text(bytes.constData(), size_t(bytes.size()));
    for (auto _ : state) {
        auto record = recordDeclarations(text, int(state.range(0)));
        benchmark::DoNotOptimize(record);
    }
    state.SetBytesProcessed(int64_t(state.iterations()) * bytes.size());
}
BENCHMARK(BM_RecordDeclarations)->Arg(1)->Arg(2)->Unit(benchmark::kMillisecond)->UseRealTime();

// Writing the --scan JSON of a scanned file (the command line's other big cost).
void BM_ScanJson(benchmark::State& state) {
    const QByteArray bytes = kelvaroClassSource("Bench", int(state.range(0)), 1);
    const auto record = recordDeclarations(std::string_view(bytes.constData(), size_t(bytes.size())));
    std::size_t written = 0;
    for (auto _ : state) {
        JsonOutput json;
        appendScanResultJson(json, u"Bench.NSObject.klvr", record);
        written = json.size();
        benchmark::DoNotOptimize(json);
    }
    state.SetBytesProcessed(int64_t(state.iterations()) * bytes.size());
    state.counters["json_bytes"] = double(written);
}
BENCHMARK(BM_ScanJson)->Arg(200000)->Unit(benchmark::kMillisecond);

void BM_ParseFile(benchmark::State& state) {
    QTemporaryDir dir;
    const QString path = dir.filePath("Bench.NSObject.klvr");
    const QByteArray bytes = kelvaroClassSource("Bench", int(state.range(0)), 1);
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
        state.SkipWithError("cannot write the corpus file");
        return;
    }
    file.close();
    parser p;
    for (auto _ : state)
        p.ParseFile(path);
    state.SetBytesProcessed(int64_t(state.iterations()) * bytes.size());
}
BENCHMARK(BM_ParseFile)->Arg(200000)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
