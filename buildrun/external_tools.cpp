// The outside tools: the interface designer (the launcher table's "Xcode"), the
// database tools the user chose once, the file manager, web pages, the note about the
// platform project, bringing the IDE to the front and the project's Global source.
// Every application goes through the launch service; what it runs on this desktop is
// in resources/launchers.txt, and so are the web addresses.
#include "frame/global.h"
#include "frame/mainthread.h"
#include "frame/mainwindow.h"

#include <QWidget>

namespace {

const QString kAboutXcodeIntegration = QStringLiteral(
    "\nAbout Xcode integration\n\n\nKelvaro is fully compatible with Xcode.\n\nYou can open existing Xcode "
    "projects and work on a project in both IDEs in parallel.\n\nNo additional configuration needed and your "
    "projects stay always Xcode-compatible.\n\n\nKelvaro can create new Xcode projects. And you can add new "
    "files to a project in Kelvaro based on Xcode file templates.\n\n\n\nXcode Interoperability\n\nKelvaro will "
    "automatically navigate you to Xcode when working with specific files (like xib, storyboard, etc.).\n\nXcode "
    "project files are loaded and saved and changes of source code project files are exchanged. For the "
    "building process it uses xcodebuild.\n\nIn future Xcode support will be extended over the next "
    "months...\n\n");

// A location file holds one line; a line break a user's editor added is not part of it.
QString firstLine(const QString& text) {
    const qsizetype end = text.indexOf(QLatin1Char('\n'));
    QString line = end < 0 ? text : text.left(end);
    if (line.endsWith(QLatin1Char('\r')))
        line.chop(1);
    return line;
}

// Starts the remembered program; a program that is gone or cannot run is told, with
// the file to delete for choosing another one (the IDE never rewrites that file).
void startDatabaseProgram(const QString& tool, const QString& program, const QString& locationFile) {
    if (KLVR_LAUNCH(program, QString(), false))
        return;
    KLVR_MSGBOX(QStringLiteral("Error: ") + tool + QStringLiteral(" not found"),
                QStringLiteral("\"") + program + QStringLiteral("\" cannot be started. To choose another program, delete ") +
                    locationFile + QStringLiteral("."));
}

// The database tools: the program chosen the first time is remembered in the support
// folder and started directly afterwards.
void startDatabaseTool(const QString& tool, const QString& fileName) {
    if (!KLVR_NSFILEMANAGER_EXISTSDIRECTORY(Global::supportFolder()))
        KLVR_NSFILEMANAGER_CREATEDIRECTORY(Global::supportFolder());
    const QString locationFile = Global::supportFile(fileName);
    const QString location =
        KLVR_NSFILEMANAGER_EXISTSFILE(locationFile) ? firstLine(KLVR_READSTRING(locationFile)) : QString();
    if (!location.isEmpty()) {
        startDatabaseProgram(tool, location, locationFile);
        return;
    }
    KLVR_MSGBOX(QStringLiteral("Please select the GUI tool '") + tool + QStringLiteral("'"),
                QStringLiteral("If you have not installed '") + tool + QStringLiteral("' yet, download it from ") +
                    launcherTableValue(QStringLiteral("address ") + tool) + QStringLiteral(" and install it, please."));
    // Programs of this desktop are executables; the panel starts where they are.
    const QString chosen = chooseOneFile({}, QStringLiteral("/usr/bin"));
    if (chosen.isEmpty())
        return;
    KLVR_WRITESTRING(chosen, locationFile); // a failed write still starts the tool
    startDatabaseProgram(tool, chosen, locationFile);
}

} // namespace

// The project is compiled in the background, the platform project and then the
// interface file are handed to the interface designer; a compiler error of that build
// brings the IDE back to the front (bIBDelayedShow). "Xcode" is missing only when the
// compiler is, and the build says so.
static void openInterfaceFile(Global& g, const QString& xib) {
    g.bIBDelayedShow = true;
    g.global_make();
    g.OpenXcodeProject(g.ProjectPath, true);
    KLVR_LAUNCH(QStringLiteral("Xcode"),
                g.ProjectPath + QLatin1Char('/') + KLVR_FILENAME(g.ProjectPath) + QStringLiteral("/en.lproj/") + xib,
                false);
}

void Global::IB(const Value&) { global_ib(); }

void Global::global_ib() {
    KLVR_TRACE("global_ib");
    if (!ProjectIsLoaded())
        return;
    openInterfaceFile(*this, QStringLiteral("MainMenu.xib"));
}

void Global::Preferences(const Value&) {
    KLVR_TRACE("Preferences");
    if (!ProjectIsLoaded())
        return;
    openInterfaceFile(*this, QStringLiteral("Preferences.xib"));
}

// An item of the "Xcode" menu: tag 2 is "(New xib...)"; the others name an interface
// file of the project, which the successful build then opens.
void Global::Xcode(const Value& item) {
    KLVR_TRACE("Xcode");
    QObject* menuItem = item.object();
    if (menuItem && menuItem->property("tag").toInt() == 2) {
        // Reached by name: creating interface files belongs to the project's file
        // operations, and without them the item does nothing.
        klvrInvoke(this, QStringLiteral("subNewNib"), Value());
        return;
    }
    bIBDelayedShow = true;
    global_make();
}

void Global::CD(const Value&) { global_cd(); }

void Global::global_cd() {
    KLVR_TRACE("global_cd");
    if (!ProjectIsLoaded())
        return;
    KLVR_MSGBOX(QStringLiteral("Sorry. Not implemented yet."), QString());
}

void Global::MySQL(const Value&) { global_mysql(); }

void Global::global_mysql() {
    KLVR_TRACE("global_mysql");
    if (!ProjectIsLoaded())
        return;
    startDatabaseTool(QStringLiteral("Sequel Pro"), QStringLiteral("SequelPro.txt"));
}

void Global::MySQLAdmin(const Value&) {
    KLVR_TRACE("MySQLAdmin");
    startDatabaseTool(QStringLiteral("MySQL Administrator"), QStringLiteral("MySQLAdmin.txt"));
}

void Global::Finder(const Value&) {
    KLVR_TRACE("Finder");
    if (!ProjectIsLoaded())
        return;
    launchOrTell(QStringLiteral("Finder"),
                 ProjectPath + QLatin1Char('/') + KLVR_FILENAME(ProjectPath) + QStringLiteral("/Resources/"), true);
}

void Global::FinderProject(const Value&) {
    KLVR_TRACE("FinderProject");
    if (!ProjectIsLoaded())
        return;
    launchOrTell(QStringLiteral("Finder"), ProjectPath, true);
}

void Global::CocoaFrameworks(const Value&) {
    KLVR_TRACE("CocoaFrameworks");
    launchOrTell(QStringLiteral("Safari"), launcherTableValue(QStringLiteral("address Framework documentation")), true);
}

void Global::Forum(const Value&) {
    KLVR_TRACE("Forum");
    launchOrTell(QStringLiteral("Safari"), launcherTableValue(QStringLiteral("address Forum")), true);
}

void Global::AboutXcodeIntegration(const Value&) {
    KLVR_TRACE("AboutXcodeIntegration");
    KLVR_MSGBOX(kAboutXcodeIntegration, QString());
}

// Brings the IDE's window in front of the other applications: the main window, or the
// welcome window while no project is open.
void Global::NSApplication_ActivateIgnoringOtherApps(const Value&) {
    KLVR_TRACE("NSApplication_ActivateIgnoringOtherApps");
    QWidget* window = mymainwindow;
    if (!(window && window->isVisible()))
        window = Welcome;
    if (!(window && window->isVisible()))
        return;
    window->setWindowState(window->windowState() & ~Qt::WindowMinimized);
    window->raise();
    window->activateWindow();
}

void Global::goGlobal(const Value&) { global_global(); }

void Global::global_global() {
    KLVR_TRACE("global_global");
    if (!ProjectIsLoaded())
        return;
    ProjectOpenCode(ProjectPath + QStringLiteral("/Global.NSObject.klvr"));
}
