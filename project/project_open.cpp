// Opening a project folder: validation, listing and scanning its sources, showing the
// Global file, and remembering the project as the last and a recent one.
#include "editor/code.h"
#include "editor/kltextview.h"
#include "frame/global.h"
#include "frame/mainwindow.h"
#include "insight/parser.h"
#include "insight/scan_prefetch.h"

#include <QComboBox>
#include <QLabel>
#include <QThreadPool>

void Global::OpenProject(const Value&) {
    KLVR_TRACE("OpenProject");
    if (const QString path = chooseOneFolder(); !path.isEmpty())
        ProjectOpen(path);
}

void Global::ProjectOpen(const Value& pathOrSender) {
    KLVR_TRACE("ProjectOpen");
    const QString path = KLVR_STRING(pathOrSender);
    // The open documents are saved before anything else happens; when one cannot be
    // and the user keeps it, the project stays as it is.
    if (!saveBeforeLettingGo(documentViews()))
        return;
    ProjectStatusBar(QStringLiteral("Opening ") + path);
    ProjectPath = path;
    const bool opened = ProjectOpen2(path);
    scan_prefetch::finish(); // also when the folder was refused
    if (opened)
        ProjectStatusBar(QStringLiteral("Opened ") + path);
    else
        ProjectStatusBar(QString());
}

// Scans every file, both cores at once; the parser's stores are keyed by path, so the
// result is the same as scanning them one by one in listing order. What the start-up
// prefetched and was not used is let go here.
static void scanAll(const QStringList& paths) {
    parser::sharedparser()->ParseFiles(paths);
    scan_prefetch::finish();
}

bool Global::ProjectOpen2(const QString& path) {
    KLVR_TRACE("ProjectOpen2");
    std::optional<QStringList> listing = KLVR_NSFILEMANAGER_LIST(path);
    if (!listing) {
        KLVR_MSGBOX(QStringLiteral("Selected folder is not valid"), QStringLiteral("Tried ") + path);
        return false;
    }
    bool hasGlobal = false;
    for (const QString& name : *listing)
        hasGlobal = hasGlobal || KLVR_ENDSWITH(name, QStringLiteral("Global.NSObject.klvr"), true);
    if (!hasGlobal) {
        KLVR_MSGBOX(QStringLiteral("Selected folder is not a valid Kelvaro project"), QStringLiteral("Tried ") + path);
        return false;
    }

    KLVR_STEP("ProjectOpen2");
    stopRunningTask();
    startXcodeprojIfMissing();
    mycode->SetEmpty();
    if (mymainwindow) {
        if (mymainwindow->projectIconView())
            mymainwindow->projectIconView()->setPixmap(QPixmap());
        mymainwindow->setProjectItemsVisible(false);
    }
    // The previous project's documents go with it; the opening itself saves nothing.
    for (KLTextView* view : documentViews()) {
        forgetDocument(view);
        view->deleteLater();
    }
    KLVR_NSMUTABLEDICTIONARY_REMOVEALL(codes);
    projectFiles.clear();
    pubProject->clear();
    ProjectTypes.clear();

    KLVR_STEP("ProjectOpen2");
    QStringList toScan;
    for (const QString& name : *listing) {
        if (KLVR_FILEEXTENSION(name) != QLatin1String("klvr"))
            continue;
        if (KLVR_ENDSWITH(name, QStringLiteral("Global.NSObject.klvr"), true)) {
            projectFiles.insert(0, name);
        } else {
            projectFiles.append(name);
            ProjectTypes.append(filebasename(name));
        }
        toScan.append(path + QLatin1Char('/') + name);
    }
    scanAll(toScan);

    KLVR_STEP("ProjectOpen2");
    const QString projectName = KLVR_FILENAME(path);
    if (mymainwindow)
        mymainwindow->setWindowTitle(KLVR_SPACE(KLVR_LEN(path) / 2 + 20 + KLVR_LEN(projectName), QStringLiteral(" ")) +
                                     projectName + KLVR_SPACE(20, QStringLiteral(" ")) + path);
    SetProjectIcon();
    WelcomeClose();
    ProjectOpenCode(QStringLiteral("Global.NSObject.klvr"));
    dotLastPosition();

    KLVR_STEP("ProjectOpen2");
    if (!KLVR_NSFILEMANAGER_EXISTSDIRECTORY(supportFolder()))
        KLVR_NSFILEMANAGER_CREATEDIRECTORY(supportFolder());
    KLVR_WRITESTRING(path, supportFile(QStringLiteral("LastProject.txt")));
    if (mymainwindow)
        mymainwindow->setProjectItemsVisible(true);
    klvrInvoke(this, QStringLiteral("clearLogs"), Value());
    UpdateRecentProjects(path);
    makeSureXcodeprojIsThere();
    OpenXcodeProject(ProjectPath, false);
    return true;
}

// Creating the platform project: normally started when the opening begins (see
// startXcodeprojIfMissing), so it is made while the files are scanned; here it is waited
// for. Until it has ended, the compiler's error output is not reported.
void Global::makeSureXcodeprojIsThere() {
    KLVR_TRACE("makeSureXcodeprojIsThere");
    if (!xcodeprojUnderWay)
        startXcodeprojIfMissing();
    if (!xcodeprojUnderWay)
        return; // it is there
    xcodeprojUnderWay = false;
    if (go)
        go->waitUntilEnded();
    bIgnoreStdErr = false;
}

void Global::startXcodeprojIfMissing() {
    KLVR_TRACE("startXcodeprojIfMissing");
    const QString name = KLVR_FILENAME(ProjectPath);
    if (KLVR_NSFILEMANAGER_EXISTSDIRECTORY(ProjectPath + QLatin1Char('/') + name + QStringLiteral(".xcodeproj")))
        return;
    bIgnoreStdErr = true;
    stopRunningTask();
    go = KLVR_KLTASK_INIT(this, QStringLiteral("go"));
    KLVR_KLTASK_PATH(go, KLVR_NSBUNDLE_BUNDLEPATH() + QStringLiteral("/Contents/MacOS/klvrcompiler"));
    KLVR_KLTASK_ARGUMENTS(go, {ProjectPath, QStringLiteral("-xcodeproj")});
    KLVR_KLTASK_STARTANDWAIT(go, true);
    xcodeprojUnderWay = true;
}

void Global::OpenXcodeProject(const QString& folder, bool flag) {
    KLVR_TRACE("OpenXcodeProject");
    KLVR_LAUNCH(QStringLiteral("Xcode"), folder + QLatin1Char('/') + KLVR_FILENAME(folder) + QStringLiteral(".xcodeproj"),
                flag);
}

void Global::OpenXcodeProjectGUI(const Value&) { OpenXcodeProject(ProjectPath, false); }

void Global::ProjectStatusBar(const QString& text) {
    emit statusShown(text);
    if (!mycode || !mycode->statusbar)
        return;
    mycode->statusbar->setText(QStringLiteral(" ") + text);
    // The text is drawn at once, before a long operation goes on. Painting just the
    // label does that without spending a tenth of a second in the event loop.
    if (mycode->statusbar->isVisible())
        mycode->statusbar->repaint();
}

bool Global::isBusy() const { return mycode && mycode->isScanning(); }
