// Build and run from the window, measured through Global with the real klvrcompiler and
// klvrrun (figures in docs/PERFORMANCE.md):
//   1. Run of the Hello example: from the Run command to the first output line in the
//      run log, split into the save, the compiler and the launch (median of the runs).
//   2. A program printing about 115 MB as fast as it can: the longest stall of the event
//      loop while its output arrives, the memory the process grew by, the lines kept.
//   3. Stop during that flood: from the Stop command until the program has ended.
// Usage: bench_buildrun [RUNS]
#include "buildrun/log_panel.h"
#include "editor/code.h"
#include "frame/global.h"
#include "frame/klvr_application.h"
#include "frame/mainwindow.h"

#include <QDir>
#include <QDirIterator>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QFile>
#include <QTemporaryDir>
#include <QTimer>

#include <algorithm>
#include <cstdio>
#include <ctime>
#include <unistd.h>

namespace {
class PrintingPanels : public PanelService {
public:
    void messageBox(const QString& title, const QString& text) override {
        std::fprintf(stderr, "message: %s / %s\n", qPrintable(title), qPrintable(text));
    }
    std::optional<QString> inputPanel(const QString&, const QString&, const QString&) override { return {}; }
    QStringList openPanel(const OpenPanelRequest&) override { return {}; }
    int question(const QString&, const QString&, const QStringList&) override { return -1; }
};

double ms(qint64 ns) { return double(ns) / 1e6; }

// The calling thread's own processor time: other processes on the machine cannot
// inflate it.
qint64 threadCpuNanoseconds() {
    timespec ts{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &ts);
    return qint64(ts.tv_sec) * 1'000'000'000 + ts.tv_nsec;
}

double median(std::vector<double> v) {
    std::sort(v.begin(), v.end());
    return v.empty() ? 0 : v[v.size() / 2];
}

qint64 statusKb(const char* field) {
    QFile f("/proc/self/status");
    if (!f.open(QIODevice::ReadOnly))
        return -1;
    for (const QByteArray& line : f.readAll().split('\n'))
        if (line.startsWith(field))
            return line.mid(qstrlen(field)).trimmed().split(' ').first().toLongLong();
    return -1;
}

// The child processes of this process (every thread may have started some).
QList<qint64> children() {
    QList<qint64> pids;
    QDirIterator it("/proc/self/task", QDir::Dirs | QDir::NoDotAndDotDot);
    while (it.hasNext()) {
        QFile f(it.next() + "/children");
        if (f.open(QIODevice::ReadOnly))
            for (const QByteArray& pid : f.readAll().split(' '))
                if (!pid.trimmed().isEmpty())
                    pids << pid.trimmed().toLongLong();
    }
    return pids;
}

bool alive(qint64 pid) {
    QFile f(QStringLiteral("/proc/%1/stat").arg(pid));
    return f.open(QIODevice::ReadOnly) && !f.readAll().contains(") Z ");
}

void copyFolder(const QString& from, const QString& to) {
    QDirIterator it(from, QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString path = it.next();
        const QString target = to + "/" + QDir(from).relativeFilePath(path);
        QDir().mkpath(QFileInfo(target).absolutePath());
        QFile::copy(path, target);
    }
}

// Runs the event loop until `done` holds (checked on every turn), at most `seconds`.
void runUntil(const std::function<bool()>& done, double seconds) {
    QElapsedTimer clock;
    clock.start();
    QTimer heartbeat; // wakes the loop when what is awaited sends no event
    heartbeat.start(5);
    while (!done() && clock.elapsed() < seconds * 1000)
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
}

void waitForBuildAndProgram(Global& g) {
    runUntil([&] { return !KLVR_NSTHREAD_ISEXECUTING(g.thBuild); }, 60);
    if (g.go)
        g.go->waitUntilEnded();
    g.flushOutput();
}
} // namespace

int main(int argc, char** argv) {
    QTemporaryDir home;
    qputenv("HOME", home.path().toUtf8());
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const int runs = argc > 1 ? std::max(1, atoi(argv[1])) : 21;
    KLVR_Application app(argc, argv);
    installPanelService(std::make_shared<PrintingPanels>());
    klvrSetBundlePath(KELVARO_APP_DIR);

    QTemporaryDir projects;
    const QString hello = projects.path() + "/Hello";
    copyFolder(KELVARO_SOURCE_DIR "/resources/Examples/Hello", hello);
    const QString flood = projects.path() + "/Flood";
    QDir().mkpath(flood);
    QFile f(flood + "/Global.NSObject.klvr");
    f.open(QIODevice::WriteOnly);
    f.write("\nEvent AwakeFromNib()\n  Dim i As Integer\n  For i = 1 To 2000000\n"
            "    Print(\"flood line of output with some text to fill it up \" & i)\n  Next\nEnd Event\n");
    f.close();

    Global g;
    g.awakeFromNib();
    g.mymainwindow->resize(1200, 900);

    // 1. Hello: Run to the first line of output.
    g.ProjectOpen(hello);
    std::vector<double> total, save, compiler, launch;
    for (int i = 0; i < runs; ++i) {
        QElapsedTimer clock;
        qint64 compiling = -1, compiled = -1, launching = -1, first = -1;
        auto c1 = QObject::connect(&g, &Global::statusShown, [&](const QString& text) {
            if (text.startsWith("xcodebuild") && compiling < 0)
                compiling = clock.nsecsElapsed();
            else if (text.isEmpty() && compiling >= 0 && compiled < 0)
                compiled = clock.nsecsElapsed();
            else if (text == "Launching...")
                launching = clock.nsecsElapsed();
        });
        clock.start();
        g.global_run();
        runUntil([&] {
            // The run log is emptied when the program is launched.
            if (first < 0 && launching >= 0 && g.tvRunlog()->lineCount() > 0)
                first = clock.nsecsElapsed();
            return first >= 0;
        }, 20);
        waitForBuildAndProgram(g);
        QObject::disconnect(c1);
        if (first < 0 || launching < 0) {
            std::fprintf(stderr, "run %d produced no output\n", i);
            return 1;
        }
        if (i == 0)
            continue; // the first run fills the caches
        total.push_back(ms(first));
        save.push_back(ms(compiling));
        compiler.push_back(ms(compiled - compiling));
        launch.push_back(ms(first - launching));
    }
    std::printf("Run of Hello to its first output line, median of %zu: %.1f ms "
                "(save and preparation %.1f ms, compiler %.1f ms, launch to first line %.1f ms)\n",
                total.size(), median(total), median(save), median(compiler), median(launch));

    // 2. A flood of output, with the run log in view.
    g.ProjectOpen(flood);
    g.mymainwindow->show();
    g.global_runlogpanel();
    const qint64 rssBefore = statusKb("VmRSS:");
    QElapsedTimer clock;
    qint64 last = -1, longest = 0, lastCpu = 0, longestCpu = 0;
    std::vector<double> gaps;
    QTimer probe;
    probe.setInterval(0);
    QObject::connect(&probe, &QTimer::timeout, [&] {
        const qint64 now = clock.nsecsElapsed();
        const qint64 cpu = threadCpuNanoseconds();
        if (last >= 0) {
            longest = std::max(longest, now - last);
            longestCpu = std::max(longestCpu, cpu - lastCpu);
            gaps.push_back(ms(now - last));
        }
        last = now;
        lastCpu = cpu;
    });
    bool launched = false;
    auto c3 = QObject::connect(&g, &Global::statusShown, [&](const QString& text) {
        if (text == "Launching...") {
            launched = true;
            clock.start();
            probe.start();
        }
    });
    g.global_run();
    runUntil([&] { return launched; }, 30);
    runUntil([&] { return g.go && !g.go->isRunning(); }, 120);
    probe.stop();
    g.flushOutput();
    const double floodSeconds = ms(clock.nsecsElapsed()) / 1000;
    std::sort(gaps.begin(), gaps.end());
    std::printf("Flood of %lld lines: %.1f s, longest event-loop stall %.1f ms wall clock, %.1f ms of the "
                "interface thread's own time (99.9th percentile %.1f ms wall clock), run log keeps %lld lines "
                "(note: \"%s\"), memory grew by %lld MB (peak RSS %lld MB)\n",
                g.runLogPanel->droppedLines() + g.tvRunlog()->lineCount(), floodSeconds, ms(longest),
                ms(longestCpu), gaps.empty() ? 0.0 : gaps[size_t(double(gaps.size()) * 0.999)],
                g.tvRunlog()->lineCount(), qPrintable(g.runLogPanel->droppedNote()),
                (statusKb("VmRSS:") - rssBefore) / 1024, statusKb("VmHWM:") / 1024);

    // 3. Stop during the flood.
    std::vector<double> stops;
    for (int i = 0; i < 5; ++i) {
        launched = false;
        g.global_run();
        runUntil([&] { return launched; }, 30);
        runUntil([&] { return g.tvRunlog()->lineCount() > 20000; }, 30);
        const QList<qint64> before = children();
        QElapsedTimer stopClock;
        stopClock.start();
        g.global_stop();
        runUntil([&] {
            for (qint64 pid : before)
                if (alive(pid))
                    return false;
            return true;
        }, 10);
        stops.push_back(ms(stopClock.nsecsElapsed()));
        waitForBuildAndProgram(g);
    }
    QObject::disconnect(c3);
    std::printf("Stop during the flood until the program has ended, median of %zu: %.1f ms (max %.1f ms)\n",
                stops.size(), median(stops), *std::max_element(stops.begin(), stops.end()));
    return 0;
}
