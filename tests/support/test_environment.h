#pragma once
// What every test executable sets up before the first test: the offscreen platform,
// a temporary HOME, a real KLVR_Application, scripted panels and a recording launcher.

#include "frame/launcher.h"
#include "frame/panels.h"

#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <deque>
#include <memory>
#include <mutex>
#include <optional>

class KLVR_Application;

// Records every panel shown and answers from queues the test fills. With nothing
// queued, an input panel is cancelled and an open panel chooses nothing.
class ScriptedPanels : public PanelService {
public:
    struct Shown {
        QString kind; // "message", "input", "open", "question"
        QString title;
        QString text;
        bool onMainThread = true;
    };
    void messageBox(const QString& title, const QString& text) override;
    std::optional<QString> inputPanel(const QString& title, const QString& message,
                                      const QString& defaultText) override;
    QStringList openPanel(const OpenPanelRequest& request) override;
    // Answers with the queued answer's index (-1 when it is not among the answers or
    // nothing is queued).
    int question(const QString& title, const QString& text, const QStringList& answers) override;
    // A save panel ("save", title, suggested path) answers with the first path of the
    // next queued open answer ("" when none is queued).
    QString savePanel(const QString& title, const QString& suggestedPath, const QString& type) override;
    // A print panel ("print", the printer's document name) is cancelled.
    bool printPanel(QPrinter& printer, QWidget* parent) override;

    void queueInput(std::optional<QString> answer);
    void queueOpen(QStringList paths);
    void queueAnswer(const QString& answer);
    std::vector<Shown> questions() const;
    std::vector<Shown> shown() const;
    std::vector<Shown> messages() const; // only the message boxes
    OpenPanelRequest lastOpenRequest() const;
    void clear();

private:
    mutable std::mutex mutex_;
    std::vector<Shown> shown_;
    std::deque<std::pair<bool, QString>> inputs_; // (answered, text)
    std::deque<QStringList> opens_;
    std::deque<QString> answers_;
    OpenPanelRequest lastOpen_;
};

// Records every launch; answers "found" unless the application was marked missing.
class RecordingLauncher : public LaunchService {
public:
    struct Launch {
        QString application;
        QString document;
        bool flag;
    };
    bool launch(const QString& application, const QString& document, bool flag) override;
    void setMissing(const QString& application, bool missing = true);
    std::vector<Launch> launches() const;
    void clear();

private:
    mutable std::mutex mutex_;
    std::vector<Launch> launches_;
    QStringList missing_;
};

class KelvaroTestEnvironment {
public:
    KelvaroTestEnvironment(int& argc, char** argv);
    ~KelvaroTestEnvironment();
    static KelvaroTestEnvironment& instance();

    QString home() const; // the temporary HOME of this test executable
    ScriptedPanels& panels() { return *panels_; }
    RecordingLauncher& launches() { return *launcher_; }
    // Empties HOME and forgets recorded panels and launches (call at a test's start).
    void reset();

private:
    QTemporaryDir home_;
    std::unique_ptr<KLVR_Application> app_;
    std::shared_ptr<ScriptedPanels> panels_;
    std::shared_ptr<RecordingLauncher> launcher_;
};

inline ScriptedPanels& testPanels() { return KelvaroTestEnvironment::instance().panels(); }
inline RecordingLauncher& testLauncher() { return KelvaroTestEnvironment::instance().launches(); }

// A fresh temporary folder for a test's files (removed when the object goes).
QString writeFile(const QString& path, const QByteArray& bytes);
QByteArray readFile(const QString& path);
