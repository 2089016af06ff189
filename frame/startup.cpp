// The start-up: everything that happens between loading the main interface and the
// user's first action.
#include "frame/global.h"
#include "frame/mainwindow.h"

#include <QDateTime>
#include <QGuiApplication>
#include <QScreen>
#include <QTimeZone>
#include <sys/stat.h>

// The modification date of a file, without following a symbolic link.
static QDateTime modificationDateOf(const QString& path) {
    struct stat info {};
    if (lstat(path.toLocal8Bit().constData(), &info) != 0)
        return QDateTime();
    return QDateTime::fromSecsSinceEpoch(info.st_mtime, QTimeZone::utc());
}

void Global::KLVR_AwakeFromNib() {
    KLVR_TRACE("AwakeFromNib");
    // 1. The executable's date, shown in the welcome window.
    QDateTime built = modificationDateOf(QCoreApplication::applicationFilePath());

    // 2. (The platform adds no help-search field to the Help menu here.)

    // 3. The main window, titled, closable, miniaturizable and resizable.
    KLVR_STEP("AwakeFromNib");
    mymainwindow = KLVR_MAINWINDOW_INIT(this, QStringLiteral("mw"));
    mymainwindow->awakeFromNib();
    mymainwindow->setStyleMask(KLVR_OR(KLVR_OR(1, 2), KLVR_OR(4, 8)).toInteger());
    if (menuBar_)
        mymainwindow->setMenuBar(menuBar_);

    // 4. The developer tools.
    KLVR_STEP("AwakeFromNib");
    if (!KLVR_LAUNCH(QStringLiteral("Xcode"), QString(), false))
        KLVR_MSGBOX(QStringLiteral("Error: Xcode 4 not found"),
                    QStringLiteral("Kelvaro needs to have installed the default development packages of Mac OS X "
                                   "(/Developer/Applications/Xcode.app).\nPlease install the Objective-C compiler "
                                   "and related packages.\nYou will find it on the installation media for Mac OS X."));

    // 5. The vocabulary.
    KLVR_STEP("AwakeFromNib");
    loadVocabulary(KLVR_NSBUNDLE_RESOURCEPATH());

    // 6. The recent projects.
    KLVR_STEP("AwakeFromNib");
    UpdateRecentProjects(QString());

    // 7. The build date.
    if (BuildDate)
        BuildDate->setText(built.isValid() ? built.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss +0000")) : QString());

    // 8. Place the main window: 200 from the screen's left, 200 short of its right
    //    (less on a small screen).
    KLVR_STEP("AwakeFromNib");
    QRect screen = QGuiApplication::primaryScreen() ? QGuiApplication::primaryScreen()->availableGeometry()
                                                    : QRect(0, 0, 1440, 900);
    mymainwindow->setGeometry(mainWindowFrame(screen));
    mymainwindow->show();
    mymainwindow->showMaximized();

    // 10. Reopen the last project, or welcome the user.
    KLVR_STEP("AwakeFromNib");
    if (!projectFromCommandLine_.isEmpty())
        ProjectOpen(projectFromCommandLine_);
    else if (const QString last = lastProjectFolder(); !last.isEmpty())
        ProjectOpen(last);
    else
        showWelcome();

    // 11. What a run that was stopped (a crash, a kill, a power cut) left unsaved.
    offerRecovery();
}

QString Global::lastProjectFolder() {
    const QString lastProjectFile = supportFile(QStringLiteral("LastProject.txt"));
    if (!KLVR_NSFILEMANAGER_EXISTSFILE(lastProjectFile))
        return {};
    const QString last = KLVR_READSTRING(lastProjectFile);
    return KLVR_LEN(last) > 0 && KLVR_NSFILEMANAGER_EXISTSDIRECTORY(last) ? last : QString();
}

QRect Global::mainWindowFrame(const QRect& screen) {
    // On a small screen the margins shrink first: the window keeps 800 pixels of width
    // (what its toolbar and navigators need) and never reaches past the screen.
    constexpr int UsableWidth = 800;
    const int margin = qBound(0, (screen.width() - UsableWidth) / 2, 200);
    return QRect(screen.x() + margin, screen.y(), screen.width() - 2 * margin, screen.height());
}

void Global::showWelcome() {
    if (!Welcome)
        return;
    QRect screen = QGuiApplication::primaryScreen() ? QGuiApplication::primaryScreen()->availableGeometry()
                                                    : QRect(0, 0, 1440, 900);
    Welcome->move(screen.center() - QPoint(Welcome->width() / 2, Welcome->height() / 2));
    Welcome->show();
    Welcome->raise();
}

void Global::WelcomeClose(const Value&) {
    KLVR_TRACE("WelcomeClose");
    if (Welcome)
        Welcome->hide();
}
