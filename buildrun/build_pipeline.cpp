// The build pipeline: Build, Make, Run, Go, Stop, Clean, Deploy, the breakpoint and
// the debugger placeholder. A build runs on its own thread; every step that touches
// widgets or the project's state is passed to the main thread, in order, and waited for.
#include "buildrun/build_output.h"
#include "buildrun/log_panel.h"
#include "editor/code.h"
#include "frame/global.h"
#include "frame/mainwindow.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QProgressBar>
#include <QPushButton>
#include <functional>

namespace {
const QString kCompiling = QStringLiteral("xcodebuild is compiling. Please wait...");

// Runs a step on the main thread: at once when already there, else waiting for it.
void onMainThread(QObject* context, const std::function<void()>& step) {
    if (klvrIsMainThread())
        step();
    else
        QMetaObject::invokeMethod(context, step, Qt::BlockingQueuedConnection);
}

QString projectName(const QString& project) { return KLVR_FILENAME(project); }

QString builtApplication(const QString& project) {
    return project + QStringLiteral("/build/Release/") + projectName(project) + QStringLiteral(".app");
}
} // namespace

QString Global::compilerPath() { return KLVR_NSBUNDLE_BUNDLEPATH() + QStringLiteral("/Contents/MacOS/klvrcompiler"); }

// The one place where a build saves the user's work first: the compiler reads every
// file from disk, so every document with unsaved typing is written (a failure is told
// as for any save, and the build goes on).
void Global::saveBeforeBuild() { saveModifiedDocuments(SaveWait::Wait); }

void Global::Build(const Value&) { global_build(); }
void Global::Make(const Value&) { global_make(); }
void Global::Run(const Value&) { global_run(); }
void Global::Go(const Value&) { global_go(); }
void Global::Stop(const Value&) { global_stop(); }
void Global::StartDebug(const Value&) { global_debug(); }
void Global::Breakpoint(const Value&) { global_breakpoint(); }

void Global::startBuildThread() {
    std::erase_if(earlierBuilds_, [](const KLThreadRef& t) { return !KLVR_NSTHREAD_ISEXECUTING(t); });
    if (KLVR_NSTHREAD_ISEXECUTING(thBuild))
        earlierBuilds_.push_back(thBuild);
    thBuild = KLVR_NSTHREAD_INIT(this, QStringLiteral("thBuildBody"));
    KLVR_NSTHREAD_START(thBuild);
}

void Global::global_build() {
    KLVR_TRACE("global_build");
    if (!ProjectIsLoaded())
        return;
    bAndRun = false;
    if (KLVR_NSTHREAD_ISEXECUTING(thBuild))
        KLVR_NSTHREAD_CANCEL(thBuild);
    startBuildThread();
}

void Global::global_make() {
    KLVR_TRACE("global_make");
    if (!ProjectIsLoaded())
        return;
    bAndRun = false;
    startBuildThread();
}

void Global::global_make2() { global_make(); }

void Global::global_run() {
    KLVR_TRACE("global_run");
    global_stop();
    bAndRun = true;
    startBuildThread();
}

void Global::thBuildBody() { Build2(QStringLiteral("Release")); }

bool Global::Build2(const QString& configuration, int* compilerExitStatus) {
    KLVR_TRACE("Build2");
    // The build thread that runs this, or null on the main thread (a deploy).
    auto* self = qobject_cast<KLThread*>(QThread::currentThread());
    bool loaded = false;
    QString project;
    onMainThread(this, [&] {
        loaded = ProjectIsLoaded();
        if (!loaded)
            return;
        project = ProjectPath;
        saveBeforeBuild();
        // A running program is ended before the routing of output changes.
        stopRunningTask();
        bCompilerError = false;
        bIsLaunchingApp = false;
        mycode->progress->show();
        compilerLogPanel->clear();
        global_compilerlogpanel();
        ProjectStatusBar(kCompiling);
    });
    if (!loaded)
        return false;

    KLVR_STEP("Build2");
    const QString compiler = compilerPath();
    const QStringList arguments{project, QStringLiteral("-") + configuration};
    KLTaskRun run;
    bool startable = QFileInfo(compiler).isExecutable();
    int exitStatus = -1;
    if (startable && klvrIsMainThread()) {
        // The wait serves the main thread, where a build asked for meanwhile may stop this
        // compiler and replace `go`: the task is only looked at while it is still there.
        QPointer<KLTask> task = go = KLVR_KLTASK_INIT(this, QStringLiteral("go"));
        KLVR_KLTASK_PATH(task, compiler);
        KLVR_KLTASK_ARGUMENTS(task, arguments);
        KLVR_KLTASK_STARTANDWAIT(task, false);
        if (task) {
            startable = !task->failedToStart();
            exitStatus = task->exitStatus();
        }
    } else if (startable) {
        onMainThread(this, [&] {
            go = KLVR_KLTASK_INIT(this, QStringLiteral("go"));
            KLVR_KLTASK_PATH(go, compiler);
            KLVR_KLTASK_ARGUMENTS(go, arguments);
            KLVR_KLTASK_STARTANDWAIT(go, true);
            run = go->lastRun();
        });
        run.wait();
        startable = !run.failedToStart();
        exitStatus = run.exitStatus();
    }
    if (compilerExitStatus)
        *compilerExitStatus = exitStatus;

    KLVR_STEP("Build2");
    bool result = false;
    onMainThread(this, [&] {
        flushOutput();
        mycode->progress->hide();
        if (!startable) {
            ProjectStatusBar(QString());
            KLVR_MSGBOX(QStringLiteral("The compiler could not be started."),
                        compiler + QStringLiteral(" is missing or not executable."));
            return;
        }
        SetProjectIcon();
        // A build that a newer one replaced leaves the window to the newer one.
        const bool superseded = self && thBuild.get() != self;
        if (superseded)
            return;
        if (bAndRun && !bCompilerError) {
            ProjectStatusBar(QString());
            bIsLaunchingApp = true;
            compilerLogPanel->hide();
            const QString executable =
                builtApplication(project) + QStringLiteral("/Contents/MacOS/") + projectName(project);
            if (KLVR_NSFILEMANAGER_EXISTSFILE(executable)) {
                ProjectStatusBar(QStringLiteral("Launching..."));
                runLogPanel->clear();
                startApplication(executable);
                OpenXcodeProjectGUI();
            }
        }
        const bool cancelled = self ? self->isCancelled() : KLVR_NSTHREAD_ISCANCELLED(thBuild);
        if (!cancelled) {
            compilerLogPanel->hide();
            if (!bCompilerError) {
                ProjectStatusBar(QStringLiteral("Done."));
                OpenXcodeProjectGUI();
            }
            result = true;
        } else {
            ProjectStatusBar(bAndRun ? QStringLiteral("Stopped.") : QStringLiteral("Cancelled."));
        }
    });
    return result;
}

void Global::startApplication(const QString& executable) {
    if (go)
        go->deleteLater(); // the compiler's task, ended
    go = KLVR_KLTASK_INIT(this, QStringLiteral("go"));
    KLVR_KLTASK_PATH(go, executable);
    KLVR_KLTASK_ARGUMENTS(go, {});
    KLVR_KLTASK_STARTANDWAIT(go, true);
}

void Global::global_go() { Launching(); }

void Global::Launching() {
    KLVR_TRACE("Launching");
    if (!ProjectIsLoaded())
        return;
    ProjectStatusBar(QStringLiteral("Launching..."));
    runLogPanel->clear();
    stopRunningTask();
    const QString name = projectName(ProjectPath);
    const QString executable =
        ProjectPath + QLatin1Char('/') + name + QStringLiteral(".app/Contents/MacOS/") + name;
    if (!KLVR_NSFILEMANAGER_EXISTSFILE(executable)) {
        KLVR_MSGBOX(QStringLiteral("There is no application to start."), QString());
        return;
    }
    // The status clears itself, also while the application still runs.
    tLaunchStatus = KLVR_NSTIMER_INIT(this, QStringLiteral("clearLaunchStatus"), 5.0);
    startApplication(executable);
}

void Global::clearLaunchStatus() { ProjectStatusBar(QString()); }

int Global::lastRunExitStatus() const { return go && !go->isRunning() ? go->exitStatus() : -1; }

void Global::Clean(const Value&) {
    KLVR_TRACE("Clean");
    if (!ProjectIsLoaded())
        return;
    // The runtime splits a command line at blanks that no backslash precedes.
    const auto escaped = [](const QString& path) {
        return KLVR_REPLACE(path, QStringLiteral(" "), QStringLiteral("\\ "), true);
    };
    KLVR_RUN(escaped(compilerPath()), {QStringLiteral("-Clean"), escaped(ProjectPath)});
    KLVR_MSGBOX(QStringLiteral("Temporary project files removed."), QString());
}

void Global::ReleaseUniversal(const Value&) {
    KLVR_TRACE("ReleaseUniversal");
    int exitStatus = -1;
    if (!Build2(QStringLiteral("Deploy"), &exitStatus))
        return;
    // A compiler that reported an error or was stopped wrote no new application.
    if (exitStatus != 0)
        return;
    KLVR_MSGBOX(QStringLiteral("Deployment"),
                QStringLiteral("Application has been created and will be copied to the Desktop and maybe moved to "
                               "other locations."));
    const QString desktop = KLVR_USER_HOMEDIRECTORY() + QStringLiteral("/Desktop");
    const QString target = desktop + QLatin1Char('/') + projectName(ProjectPath) + QStringLiteral(".app");
    if (KLVR_NSFILEMANAGER_EXISTSDIRECTORY(target)) {
        KLVR_MSGBOX(QStringLiteral("Deployment Error"), QStringLiteral("Application has not been copied to\n\n") +
                                                            target +
                                                            QStringLiteral("\n\nbecause there is already an existing app"));
        return;
    }
    // The copy never creates the Desktop and never replaces what is there.
    if (!KLVR_NSFILEMANAGER_EXISTSDIRECTORY(desktop) ||
        !KLVR_NSFILEMANAGER_COPY(builtApplication(ProjectPath), target))
        KLVR_MSGBOX(QStringLiteral("Deployment Error"), QStringLiteral("Failed to copy application"));
}

void Global::global_breakpoint() { ProjectCurrentCodeToggleBreakpoint(); }

void Global::ProjectCurrentCodeToggleBreakpoint() {
    if (ProjectIsLoaded() && mytextview())
        KLVR_KLTEXTVIEW_TOGGLEBREAKPOINT(mytextview());
}

void Global::global_debug() { KLVR_MSGBOX(QStringLiteral("Sorry. Not implemented yet."), QString()); }

void Global::bSwitchDebugPressed() { DebugPanel->show(); }

void Global::bSwitchObjCPressed() { ObjC->show(); }

void Global::endBuildAndRun() {
    if (go && KLVR_KLTASK_ISRUNNING(go)) {
        KLVR_KLTASK_STOP(go);
        go->waitUntilEnded();
    }
    global_stop();
    for (const KLThreadRef& thread : earlierBuilds_)
        KLVR_NSTHREAD_CANCEL(thread);
    // The build threads pass their steps to this thread, so it keeps serving them.
    earlierBuilds_.push_back(thBuild);
    for (const KLThreadRef& thread : earlierBuilds_)
        while (thread && !thread->wait(5))
            QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents, 5);
    earlierBuilds_.clear();
    // A build that was waiting may have started its compiler just now.
    if (go && KLVR_KLTASK_ISRUNNING(go)) {
        KLVR_KLTASK_STOP(go);
        go->waitUntilEnded();
    }
}

void Global::createBuildAndRunInterface() {
    output_ = std::make_unique<BuildOutput>();
    compilerLogPanel = new LogPanel(QStringLiteral("Compiler Window"), QStringLiteral("compilerLogPanel"), 100000);
    runLogPanel = new LogPanel(QStringLiteral("Run Log"), QStringLiteral("runLogPanel"), 100000);
    compilerLogPanel->hide();
    runLogPanel->hide();
    DebugPanel = new QWidget();
    DebugPanel->setObjectName(QStringLiteral("DebugPanel"));
    DebugPanel->setWindowTitle(QStringLiteral("Debugger"));
    ObjC = new QWidget();
    ObjC->setObjectName(QStringLiteral("ObjC"));
    ObjC->setWindowTitle(QStringLiteral("Objective-C"));
    connect(bSwitchDebug, &QPushButton::clicked, this, [this] { bSwitchDebugPressed(); });
    connect(bSwitchObjC, &QPushButton::clicked, this, [this] { bSwitchObjCPressed(); });
}

void Global::destroyBuildAndRunInterface() {
    endBuildAndRun();
    output_->close();
    // Docked panels belong to the main window; the others are deleted here.
    for (QWidget* panel : {static_cast<QWidget*>(compilerLogPanel), static_cast<QWidget*>(runLogPanel)})
        if (panel && !panel->parent())
            delete panel;
    delete DebugPanel;
    delete ObjC;
}

LogView* Global::tvCompilerlog() const { return compilerLogPanel->view(); }
LogView* Global::tvRunlog() const { return runLogPanel->view(); }
