#include "frame/launcher.h"

#include "frame/panels.h"
#include "frame/runtime.h"

#include <QFile>
#include <QFileInfo>
#include <QMutex>
#include <QProcess>
#include <QStandardPaths>
#include <QTextStream>

namespace {

QStringList alternativesFor(const QString& application) {
    QStringList alternatives;
    for (const QString& a : launcherTableValue(application).split(QLatin1Char('|')))
        if (!a.trimmed().isEmpty())
            alternatives << a.trimmed();
    return alternatives;
}

// Programs take a word that starts with "-" as an option, whatever follows it, so such
// a relative path is handed over as an absolute one (addresses never start with "-").
QString documentArgument(const QString& document) {
    if (document.startsWith(QLatin1Char('-')))
        return QFileInfo(document).absoluteFilePath();
    return document;
}

class DesktopLauncher : public LaunchService {
public:
    bool launch(const QString& application, const QString& given, bool) override {
        const QString document = documentArgument(given);
        QFileInfo direct(application);
        if (application.startsWith(QLatin1Char('/'))) {
            if (direct.isFile() && direct.isExecutable())
                return startDetached(application, document.isEmpty() ? QStringList() : QStringList{document});
            return false;
        }
        for (const QString& alternative : alternativesFor(application)) {
            QStringList words = alternative.split(QLatin1Char(' '), Qt::SkipEmptyParts);
            if (words.first() == QLatin1String("@tool")) {
                if (QFileInfo(KLVR_NSBUNDLE_BUNDLEPATH() + QStringLiteral("/Contents/MacOS/") + words.value(1))
                        .isExecutable())
                    return true;
                continue;
            }
            QString program = QStandardPaths::findExecutable(words.takeFirst());
            if (program.isEmpty())
                continue;
            QStringList arguments;
            bool needsDocument = false;
            for (const QString& w : words) {
                if (w == QLatin1String("%f")) {
                    needsDocument = true;
                    if (!document.isEmpty())
                        arguments << document;
                } else {
                    arguments << w;
                }
            }
            if (needsDocument && document.isEmpty())
                return true; // the application exists; there is nothing to open
            return startDetached(program, arguments);
        }
        return false;
    }

private:
    static bool startDetached(const QString& program, const QStringList& arguments) {
        return QProcess::startDetached(program, arguments);
    }
};

QMutex launcherMutex;
std::shared_ptr<LaunchService>& current() {
    static std::shared_ptr<LaunchService> service = std::make_shared<DesktopLauncher>();
    return service;
}

} // namespace

// Reads the launcher table of the resources each time: it is a few lines, and a user
// who edits it sees the change without restarting.
QString launcherTableValue(const QString& key) {
    QFile file(KLVR_NSBUNDLE_RESOURCEPATH() + QStringLiteral("/launchers.txt"));
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return {};
    QTextStream in(&file);
    in.setEncoding(QStringConverter::Utf8);
    while (!in.atEnd()) {
        const QString line = in.readLine().trimmed();
        if (line.isEmpty() || line.startsWith(QLatin1Char('#')))
            continue;
        const qsizetype eq = line.indexOf(QLatin1Char('='));
        if (eq >= 0 && line.left(eq).simplified() == key)
            return line.mid(eq + 1).trimmed();
    }
    return {};
}

std::shared_ptr<LaunchService> makeDesktopLauncher() { return std::make_shared<DesktopLauncher>(); }

LaunchService& launcher() {
    QMutexLocker guard(&launcherMutex);
    return *current();
}

std::shared_ptr<LaunchService> installLaunchService(std::shared_ptr<LaunchService> service) {
    QMutexLocker guard(&launcherMutex);
    std::shared_ptr<LaunchService> previous = current();
    current() = std::move(service);
    return previous;
}

bool KLVR_LAUNCH(const QString& application, const QString& document, bool flag) {
    return launcher().launch(application, document, flag);
}
void KLVR_FINDER(const QString& path) { launcher().launch(QStringLiteral("Finder"), path, true); }
void KLVR_SAFARI(const QString& addressOrPath) { launcher().launch(QStringLiteral("Safari"), addressOrPath, true); }
void KLVR_TEXTEDIT(const QString& path) { launcher().launch(QStringLiteral("TextEdit"), path, true); }
void KLVR_PREVIEW(const QString& path) { launcher().launch(QStringLiteral("Preview"), path, true); }

bool launchOrTell(const QString& application, const QString& document, bool flag) {
    if (KLVR_LAUNCH(application, document, flag))
        return true;
    const QString package = launcherTableValue(QStringLiteral("install ") + application);
    KLVR_MSGBOX(QStringLiteral("Error: ") + application + QStringLiteral(" not found"),
                package.isEmpty()
                    ? QStringLiteral("No program of this desktop opens it. Please install one and name its command "
                                     "under \"") + application +
                          QStringLiteral("\" in launchers.txt of Kelvaro's resources.")
                    : QStringLiteral("Kelvaro opens it with a program of this desktop that is not installed.\n"
                                     "Please install the Debian package \"") +
                          package + QStringLiteral("\"."));
    return false;
}
