#include "frame/klvr_application.h"

#include "buildrun/batch_build.h"
#include "frame/failure_report.h"
#include "frame/global.h"
#include "frame/panels.h"
#include "frame/screenshot.h"
#include "frame/startup_options.h"
#include "frame/typing_hook.h"
#include "frame/value.h"

#include <cstdio>
#include <syslog.h>

KLVR_Application::KLVR_Application(int& argc, char** argv) : QApplication(argc, argv) {
    qRegisterMetaType<Value>("Value");
    setApplicationName(QStringLiteral("Kelvaro"));
    setOrganizationName(QStringLiteral("Kelvaro"));
}

KLVR_Application::~KLVR_Application() = default;

bool KLVR_Application::notify(QObject* receiver, QEvent* event) {
    try {
        return QApplication::notify(receiver, event);
    } catch (const KLException& failure) {
        klvrReportFailure(failure);
    } catch (const std::exception& failure) {
        klvrReportFailure(KLException(QStringLiteral("NSGenericException"), QString::fromLocal8Bit(failure.what())));
    }
    // A failure on another thread (a child's output handler, a background pass) is
    // reported on the main thread, which alone may show a message box.
    return false;
}

void KLVR_Application::reportException(const KLException& failure) {
    FailureReport report = buildFailureReport(failure);
    syslog(LOG_ERR, "%s", report.logEntry.toUtf8().constData());
    panels().messageBox(report.title, report.text);
}

namespace {
// An unattended run (the screenshot) must never wait for a person: messages go to
// standard error, questions are cancelled.
class UnattendedPanels : public PanelService {
public:
    void messageBox(const QString& title, const QString& text) override {
        std::fprintf(stderr, "kelvaro: %s\n%s\n", title.toLocal8Bit().constData(), text.toLocal8Bit().constData());
    }
    std::optional<QString> inputPanel(const QString&, const QString&, const QString&) override {
        return std::nullopt;
    }
    QStringList openPanel(const OpenPanelRequest&) override { return {}; }
    QString savePanel(const QString&, const QString&, const QString&) override { return {}; }
    bool printPanel(QPrinter&, QWidget*) override { return false; }
    int question(const QString& title, const QString& text, const QStringList&) override {
        messageBox(title, text);
        return -1;
    }
};
} // namespace

int KLVR_Application::runIde(const StartupOptions& options) {
    if (!options.screenshotFile.isEmpty() || !options.batch.isEmpty())
        installPanelService(std::make_shared<UnattendedPanels>());
    else if (typing_hook::requested())
        typing_hook::install();
    // Loading the main interface creates the application controller and sends it
    // awakeFromNib, which runs the whole start-up.
    Global* global = Global::sharedGlobal();
    try {
        global->setProjectFromCommandLine(options.projectFolder);
        global->awakeFromNib();
    } catch (const KLException& failure) {
        reportException(failure);
    }
    if (!options.screenshotFile.isEmpty())
        return writeScreenshotWhenIdle(global, options.screenshotFile);
    if (!options.batch.isEmpty())
        return runBatchBuild(global, options.batch == QLatin1String("run"));
    if (typing_hook::requested())
        typing_hook::start(global);
    return exec();
}
