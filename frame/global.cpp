// Construction of the application controller and its main interface (menus and the
// welcome window): what the main interface description holds.
#include "frame/global.h"

#include "buildrun/build_output.h"
#include "editor/code.h"
#include "insight/parser.h"
#include "frame/mainwindow.h"
#include "frame/welcome_window.h"

#include <QComboBox>
#include <QPushButton>

Global::Global() { Init(); }

Global::~Global() {
    klvr_frame::forget<Global>(this);
    destroyBuildAndRunInterface();
    delete go;
    if (mymainwindow) {
        if (menuBar_ && menuBar_->parent() == mymainwindow)
            menuBar_ = nullptr; // the window owns it now
        delete mymainwindow; // takes the code pane with it
        mymainwindow = nullptr;
        mycode = nullptr;
    }
    delete mycode;
    delete menuBar_;
    delete Welcome;
    delete AboutWindow; // a window of its own, made by the About command
    delete pubProject;
    delete pubEvent;
    delete bSwitchObjC;
    delete bSwitchDebug;
}

void Global::Init() {
    CurrentFontSize = 10;
    tTextDidChange = KLVR_NSTIMER_INIT(this, QStringLiteral("tTextDidChange"));
    bLockTextDidChange = false;
    aRecentProjects.clear();
    go = nullptr;
    bIBDelayedShow = false;
    myparser = parser::sharedparser();
    pubProject = new QComboBox();
    pubProject->setObjectName(QStringLiteral("pubProject"));
    pubEvent = new QComboBox();
    pubEvent->setObjectName(QStringLiteral("pubEvent"));
    bSwitchObjC = new QPushButton();
    bSwitchObjC->setObjectName(QStringLiteral("bSwitchObjC"));
    bSwitchDebug = new QPushButton();
    bSwitchDebug->setObjectName(QStringLiteral("bSwitchDebug"));
    bIgnoreStdErr = false;
    bCompilerError = false;
    bIsLaunchingApp = false;
    bMakeOnly = false;
    bMake2Only = false;
    bBlockLastPosition = false;
    sLastPositionFile.clear();
    nLastPositionLine = 0;
    sLastErrorText.clear();
    sLastErrorFile.clear();
    nLastErrorLine = 0;
    thBuild = KLVR_NSTHREAD_INIT(this, QStringLiteral("thBuildBody"));
    bAndRun = false;
    projectFiles.clear();
    ProjectPath.clear();
    codes = Value::dictionary();
    dClassCompletion = Value::dictionary();
    dObjectCompletion = Value::dictionary();
    KelvaroKeywords.clear();
    KelvaroConsts.clear();
    dCompletion2function = Value::dictionary();
    KelvaroCommands.clear();
    ProjectTypes.clear();
    KelvaroTypes.clear();
    tLastPosition = KLVR_NSTIMER_INIT(this, QStringLiteral("tLastPosition"));
    nLastPositionLine2 = -1;
    mymainwindow = nullptr;
    createMainInterface();
}

void Global::createMainInterface() {
    mycode = code::sharedcode();
    mycode->awakeFromNib();
    mycodeview = mycode->codeView();
    createBuildAndRunInterface();
    installSearchControls();
    connect(pubProject, &QComboBox::activated, this, [this](int index) {
        pubProjectChosen(pubProject->itemText(index));
    });
    connect(pubEvent, &QComboBox::activated, this, [this](int index) { pubEventChosen(pubEvent->itemText(index)); });

    auto* welcome = new WelcomeWindow(this);
    Welcome = welcome;
    BuildDate = welcome->buildDateLabel();

    // The menu bar, made from the one menu table (frame/menu_table.cpp).
    buildMenuBar();
}

QString Global::supportFolder() { return KLVR_USER_HOMEDIRECTORY() + QStringLiteral("/Library/Kelvaro"); }

QString Global::supportFile(const QString& name) { return supportFolder() + QLatin1Char('/') + name; }
