#include "support/test_environment.h"

#include "frame/klvr_application.h"
#include "frame/runtime.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QPrinter>
#include <QThread>
#include <cstdlib>
#include <gtest/gtest.h>

namespace {
KelvaroTestEnvironment* current = nullptr;
}

void ScriptedPanels::messageBox(const QString& title, const QString& text) {
    std::lock_guard guard(mutex_);
    shown_.push_back({QStringLiteral("message"), title, text, QThread::currentThread() == qApp->thread()});
}

std::optional<QString> ScriptedPanels::inputPanel(const QString& title, const QString& message, const QString&) {
    std::lock_guard guard(mutex_);
    shown_.push_back({QStringLiteral("input"), title, message});
    if (inputs_.empty())
        return std::nullopt;
    auto [given, text] = inputs_.front();
    inputs_.pop_front();
    if (!given)
        return std::nullopt;
    return text;
}

QStringList ScriptedPanels::openPanel(const OpenPanelRequest& request) {
    std::lock_guard guard(mutex_);
    shown_.push_back({QStringLiteral("open"), request.directory, request.types.join(QLatin1Char(','))});
    lastOpen_ = request;
    if (opens_.empty())
        return {};
    QStringList answer = opens_.front();
    opens_.pop_front();
    return answer;
}

QString ScriptedPanels::savePanel(const QString& title, const QString& suggestedPath, const QString&) {
    std::lock_guard guard(mutex_);
    shown_.push_back({QStringLiteral("save"), title, suggestedPath});
    if (opens_.empty())
        return {};
    const QStringList answer = opens_.front();
    opens_.pop_front();
    return answer.value(0);
}

bool ScriptedPanels::printPanel(QPrinter& printer, QWidget*) {
    std::lock_guard guard(mutex_);
    shown_.push_back({QStringLiteral("print"), printer.docName(), QString()});
    return false;
}

int ScriptedPanels::question(const QString& title, const QString& text, const QStringList& answers) {
    std::lock_guard guard(mutex_);
    shown_.push_back({QStringLiteral("question"), title, text + QStringLiteral("\n[") + answers.join(QLatin1Char('|')) + QLatin1Char(']')});
    if (answers_.empty())
        return -1;
    const QString answer = answers_.front();
    answers_.pop_front();
    return int(answers.indexOf(answer));
}

void ScriptedPanels::queueAnswer(const QString& answer) {
    std::lock_guard guard(mutex_);
    answers_.push_back(answer);
}

std::vector<ScriptedPanels::Shown> ScriptedPanels::questions() const {
    std::lock_guard guard(mutex_);
    std::vector<Shown> out;
    for (const Shown& s : shown_)
        if (s.kind == QLatin1String("question"))
            out.push_back(s);
    return out;
}

void ScriptedPanels::queueInput(std::optional<QString> answer) {
    std::lock_guard guard(mutex_);
    inputs_.push_back({answer.has_value(), answer.value_or(QString())});
}

void ScriptedPanels::queueOpen(QStringList paths) {
    std::lock_guard guard(mutex_);
    opens_.push_back(std::move(paths));
}

std::vector<ScriptedPanels::Shown> ScriptedPanels::shown() const {
    std::lock_guard guard(mutex_);
    return shown_;
}

std::vector<ScriptedPanels::Shown> ScriptedPanels::messages() const {
    std::lock_guard guard(mutex_);
    std::vector<Shown> out;
    for (const Shown& s : shown_)
        if (s.kind == QLatin1String("message"))
            out.push_back(s);
    return out;
}

OpenPanelRequest ScriptedPanels::lastOpenRequest() const {
    std::lock_guard guard(mutex_);
    return lastOpen_;
}

void ScriptedPanels::clear() {
    std::lock_guard guard(mutex_);
    shown_.clear();
    inputs_.clear();
    opens_.clear();
    answers_.clear();
}

bool RecordingLauncher::launch(const QString& application, const QString& document, bool flag) {
    std::lock_guard guard(mutex_);
    launches_.push_back({application, document, flag});
    return !missing_.contains(application);
}

void RecordingLauncher::setMissing(const QString& application, bool missing) {
    std::lock_guard guard(mutex_);
    missing_.removeAll(application);
    if (missing)
        missing_ << application;
}

std::vector<RecordingLauncher::Launch> RecordingLauncher::launches() const {
    std::lock_guard guard(mutex_);
    return launches_;
}

void RecordingLauncher::clear() {
    std::lock_guard guard(mutex_);
    launches_.clear();
    missing_.clear();
}

KelvaroTestEnvironment::KelvaroTestEnvironment(int& argc, char** argv) {
    current = this;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("HOME", home_.path().toLocal8Bit());
    app_ = std::make_unique<KLVR_Application>(argc, argv);
    klvrSetBundlePath(QStringLiteral(KELVARO_APP_DIR));
    panels_ = std::make_shared<ScriptedPanels>();
    launcher_ = std::make_shared<RecordingLauncher>();
    installPanelService(panels_);
    installLaunchService(launcher_);
}

KelvaroTestEnvironment::~KelvaroTestEnvironment() { current = nullptr; }

KelvaroTestEnvironment& KelvaroTestEnvironment::instance() { return *current; }

QString KelvaroTestEnvironment::home() const { return home_.path(); }

void KelvaroTestEnvironment::reset() {
    QDir home(home_.path());
    for (const QString& entry : home.entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot)) {
        QFileInfo info(home.filePath(entry));
        if (info.isDir())
            QDir(info.filePath()).removeRecursively();
        else
            QFile::remove(info.filePath());
    }
    panels_->clear();
    launcher_->clear();
}

QString writeFile(const QString& path, const QByteArray& bytes) {
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile file(path);
    // A test's own files must be written, or what it checks later means nothing.
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) || file.write(bytes) != bytes.size())
        ADD_FAILURE() << "could not write the test file " << path.toStdString();
    return path;
}

QByteArray readFile(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return file.readAll();
}
