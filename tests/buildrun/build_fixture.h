#pragma once
// A started IDE with a project open and a compiler of the test's choice: a stand-in
// script or the real klvrcompiler. Records every status-line text and waits for builds
// and runs to end (bounded, never on a fixed delay).

#include "buildrun/log_panel.h"
#include "support/ide_fixture.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QDir>
#include <QFile>
#include <functional>

// Readable failures.
inline void PrintTo(const QString& text, std::ostream* out) { *out << '"' << text.toStdString() << '"'; }
inline void PrintTo(const QStringList& list, std::ostream* out) {
    *out << '{';
    for (const QString& text : list)
        *out << " \"" << text.toStdString() << '"';
    *out << " }";
}

class BuildFixture : public IdeFixture {
protected:
    // Installs `body` as the compiler: a shell script whose creating of the platform
    // project ("-xcodeproj") does nothing.
    void installCompiler(const QByteArray& body) {
        installScript(bundlePath() + "/Contents/MacOS/klvrcompiler",
                      "case \"$2\" in -xcodeproj) exit 0;; esac\n" + body);
    }
    // The project's real tools: the bundle's compiler and runner stand beside its own.
    void installRealCompiler() {
        for (const char* tool : {"klvrcompiler", "klvrrun"})
            QFile::link(QStringLiteral(KELVARO_APP_DIR "/Contents/MacOS/") + tool,
                        bundlePath() + "/Contents/MacOS/" + tool);
    }
    static void installScript(const QString& path, const QByteArray& body) {
        writeFile(path, "#!/bin/sh\n" + body);
        QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }
    // Starts the IDE with a project of the given files opened.
    Global& startWith(const QString& name, const QList<std::pair<QString, QByteArray>>& files) {
        Global& g = start();
        project = makeProject(name, files);
        g.ProjectOpen(project);
        // Direct, so that a status shown from another thread would be caught.
        QObject::connect(
            &g, &Global::statusShown, &g,
            [this](const QString& text) {
                statusesOnMainThread = statusesOnMainThread && klvrIsMainThread();
                statuses << text;
            },
            Qt::DirectConnection);
        testPanels().clear();
        return g;
    }
    // Waits until no build thread runs; false when that took a minute.
    bool waitForBuild() {
        const bool ended = waitUntil([this] { return !KLVR_NSTHREAD_ISEXECUTING(global->thBuild); }, 60);
        global->flushOutput();
        return ended;
    }
    // Waits for the launched application to end and its output to be shown.
    void waitForApplication() {
        if (global->go)
            global->go->waitUntilEnded();
        global->flushOutput();
    }
    QString compilerLog() const { return global->tvCompilerlog()->toPlainText(); }
    QString runLog() const { return global->tvRunlog()->toPlainText(); }
    QString status() const { return global->mycode->statusbar->text().mid(1); }
    QStringList messageTitles() const {
        QStringList titles;
        for (const auto& shown : testPanels().messages())
            titles << shown.title;
        return titles;
    }
    // Runs the event loop until `done` holds; false when that took `seconds`.
    static bool waitUntil(const std::function<bool()>& done, int seconds = 20) {
        QDeadlineTimer deadline(seconds * 1000);
        bool reached = done();
        while (!reached && !deadline.hasExpired()) {
            QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
            reached = done();
        }
        return reached; // as last seen: a state that passes may not be seen twice
    }
    // Whether a process of that id still runs: a reaped child leaves no entry, an ended
    // one not yet reaped shows as a zombie (Z) or, while it is being reaped, dead (X).
    static bool processExists(qint64 pid) {
        const QByteArray stat = readFile(QStringLiteral("/proc/%1/stat").arg(pid));
        return !stat.isEmpty() && !stat.contains(") Z ") && !stat.contains(") X ");
    }

    QString project;
    QStringList statuses;
    bool statusesOnMainThread = true;
};
