// Completion in a large project through a started IDE: Global's answer for a
// three-segment chain and for the no-context marker (percentiles of single requests),
// and the time from a key to the pop-up drawn by the real editor view.
//
// The project is the one bench/tools/generate_project.py writes (1,000 files of 1,000
// lines), named by KELVARO_BENCH_PROJECT (default /tmp/BigProject); the benchmark adds
// three classes of the same size that reach each other through Public members.
#include "corpus_writer.h"
#include "support/test_environment.h"

#include "editor/kltextview.h"
#include "frame/global.h"
#include "insight/completion.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <algorithm>
#include <benchmark/benchmark.h>
#include <cstdio>
#include <cstdlib>
#include <vector>

namespace {

QString projectFolder() {
    const QString named = qEnvironmentVariable("KELVARO_BENCH_PROJECT");
    return named.isEmpty() ? QStringLiteral("/tmp/BigProject") : named;
}

// The started IDE with the project open and the first chain class shown.
struct OpenIde {
    Global global;
    KLTextView* view = nullptr;

    OpenIde() {
        const QString folder = projectFolder();
        for (int n = 1; n <= 3; ++n) {
            QByteArray text = kelvaroClassSource(QStringLiteral("link%1").arg(n), 1000, quint32(n));
            text += "Public Dim next As link" + QByteArray::number(n + 1) + "\n";
            writeFile(folder + QStringLiteral("/link%1.NSObject.klvr").arg(n), text);
        }
        global.awakeFromNib();
        global.ProjectOpen(folder);
        global.ProjectOpenCode(QStringLiteral("link1.NSObject.klvr"));
        view = global.mytextview();
        if (!view || global.projectFiles.size() < 1000) {
            std::fprintf(stderr, "make the project first: bench/tools/generate_project.py %s 1000 1000\n",
                         qPrintable(folder));
            std::exit(1);
        }
        view->setCursorPosition(view->lines() - 1, 0);
    }
};

// Made on first use and never destroyed: the IDE must not outlive the application.
OpenIde& ide() {
    static OpenIde* opened = new OpenIde;
    return *opened;
}

// Times single calls and reports the 50th and 99th percentiles in microseconds.
template <typename Call>
void timeEach(benchmark::State& state, Call call) {
    std::vector<double> micros;
    QElapsedTimer clock;
    for (auto _ : state) {
        clock.start();
        call();
        micros.push_back(double(clock.nsecsElapsed()) / 1000.0);
    }
    std::sort(micros.begin(), micros.end());
    state.counters["p50_us"] = micros[micros.size() / 2];
    state.counters["p99_us"] = micros[std::min(micros.size() - 1, micros.size() * 99 / 100)];
}

// One request for `expression` (the no-context marker when empty) at the end of link1.
void BM_Completion(benchmark::State& state, const QString& expression) {
    OpenIde& o = ide();
    const QString asked = expression.isEmpty() ? QString::fromUtf16(completionNoContextMarker) : expression;
    qsizetype offered = 0;
    timeEach(state, [&] {
        const QStringList candidates = o.global.KLVR_TextView_GetCompletion(o.view, asked);
        offered = candidates.size();
        benchmark::DoNotOptimize(candidates);
    });
    state.counters["candidates"] = double(offered);
}
BENCHMARK_CAPTURE(BM_Completion, ThreeSegmentChain, QStringLiteral("me.next.next"))
    ->Iterations(2000)
    ->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(BM_Completion, NoContext, QString())->Iterations(2000)->Unit(benchmark::kMicrosecond);

// From the "." key to the list drawn: the key goes through the view's own event
// handling, then the event loop runs until the pop-up's paint is done.
void BM_PopUpAfterPoint(benchmark::State& state) {
    OpenIde& o = ide();
    KLTextView* view = o.view;
    view->window()->show();
    view->window()->activateWindow();
    view->setFocus();
    // The window's activation arrives through the event loop; a list opened before it
    // would lose the focus at once.
    QCoreApplication::processEvents();
    const auto type = [view](Qt::Key key, const QString& text) {
        QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier, text);
        QCoreApplication::sendEvent(view, &press);
        QKeyEvent release(QEvent::KeyRelease, key, Qt::NoModifier, text);
        QCoreApplication::sendEvent(view, &release);
    };
    type(Qt::Key_Return, QStringLiteral("\r"));
    type(Qt::Key_M, QStringLiteral("m"));
    type(Qt::Key_E, QStringLiteral("e"));
    std::vector<double> micros;
    QElapsedTimer clock;
    int shown = 0;
    for (auto _ : state) {
        clock.start();
        type(Qt::Key_Period, QStringLiteral("."));
        QCoreApplication::processEvents();
        micros.push_back(double(clock.nsecsElapsed()) / 1000.0);
        shown += view->isListActive() ? 1 : 0;
        state.PauseTiming();
        type(Qt::Key_Escape, QString());
        type(Qt::Key_Backspace, QString());
        QCoreApplication::processEvents();
        state.ResumeTiming();
    }
    std::sort(micros.begin(), micros.end());
    state.counters["p50_us"] = micros[micros.size() / 2];
    state.counters["p99_us"] = micros[std::min(micros.size() - 1, micros.size() * 99 / 100)];
    state.counters["lists_shown"] = shown;
    if (shown == 0)
        std::fprintf(stderr, "no list was shown; the line reads \"%s\"\n",
                     qPrintable(view->text(view->lines() - 1)));
}
BENCHMARK(BM_PopUpAfterPoint)->Iterations(300)->Unit(benchmark::kMicrosecond);

} // namespace

int main(int argc, char** argv) {
    KelvaroTestEnvironment environment(argc, argv);
    klvrSetBundlePath(QStringLiteral(KELVARO_APP_DIR));
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
