#include "frame/mainwindow.h"

#include "buildrun/log_panel.h"
#include "editor/code.h"
#include "frame/global.h"

#include <QApplication>
#include <QCloseEvent>
#include <QComboBox>
#include <QHBoxLayout>
#include <QToolButton>

namespace {
const QString kSeparator = QStringLiteral("NSToolbarSeparatorItem");
const QString kSpace = QStringLiteral("NSToolbarSpaceItem");

// Button items: identifier suffix and tool tip.
const std::pair<const char*, const char*> kButtons[] = {
    {"back", "Go To Last Position"}, {"global", "Global"}, {"lasterror", "Go To Last Error"},
    {"run", "Run"},                  {"build", "Build"},   {"stop", "Stop"},
    {"ib", "Xcode: Interface Builder"}, {"log", "Log Window"},
};
} // namespace

mainwindow::mainwindow() { Init(); }

mainwindow::~mainwindow() { klvr_frame::forget<mainwindow>(this); }

QStringList mainwindow::ToolbarItems() {
    return {QStringLiteral("ti_projecticon"), QStringLiteral("ti_project"), QStringLiteral("ti_event"), kSeparator,
            QStringLiteral("ti_back"),        QStringLiteral("ti_global"),  QStringLiteral("ti_lasterror"), kSpace,
            QStringLiteral("ti_run"),         QStringLiteral("ti_build"),   QStringLiteral("ti_stop"),     kSpace,
            QStringLiteral("ti_ib"),          kSpace,                       QStringLiteral("ti_filesearch"),
            QStringLiteral("ti_log")};
}

void mainwindow::Init() {
    setObjectName(QStringLiteral("mw"));
    mytoolbar = new QToolBar(QStringLiteral("Toolbar"), this);
    mytoolbar->setObjectName(QStringLiteral("mytoolbar"));
    ti_project = new QWidgetAction(this);
    ti_project->setObjectName(QStringLiteral("ti_project"));
    ti_event = new QWidgetAction(this);
    ti_event->setObjectName(QStringLiteral("ti_event"));
    ti_projecticon = new QWidgetAction(this);
    ti_projecticon->setObjectName(QStringLiteral("ti_projecticon"));
    boxedSearchFile = new QLineEdit();
    boxedSearchFile->setObjectName(QStringLiteral("boxedSearchFile"));
    boxedSearchFile->setPlaceholderText(QStringLiteral("Search Project"));
    boxedSearchFile->setClearButtonEnabled(true);
    // The search field sends its whole text at once, not on each keystroke.
    connect(boxedSearchFile, &QLineEdit::returnPressed, this, &mainwindow::boxedSearchFilePerform);

    // Icons only, small size.
    mytoolbar->setToolButtonStyle(Qt::ToolButtonIconOnly);
    mytoolbar->setIconSize(QSize(24, 24));
    mytoolbar->setMovable(false);
    mytoolbar->setFloatable(false);
    resize(500, 500);
    addToolBar(Qt::TopToolBarArea, mytoolbar);
    for (const QString& identifier : ToolbarItems()) {
        if (identifier == kSeparator) {
            mytoolbar->addSeparator();
        } else if (identifier == kSpace) {
            auto* space = new QWidget(mytoolbar);
            space->setFixedWidth(16);
            mytoolbar->addWidget(space);
        } else if (QAction* item = KLVR_ToolbarItem(identifier)) {
            mytoolbar->addAction(item);
        }
    }

    Global* global = Global::sharedGlobal();
    if (global->mycode)
        setCentralWidget(global->mycode);
    setProjectItemsVisible(false);

    // The logs are panels at the bottom, shown when a build or the log button asks.
    if (global->compilerLogPanel && global->runLogPanel) {
        addDockWidget(Qt::BottomDockWidgetArea, global->compilerLogPanel);
        addDockWidget(Qt::BottomDockWidgetArea, global->runLogPanel);
        global->compilerLogPanel->hide();
        global->runLogPanel->hide();
    }
}

QWidget* mainwindow::fixedView(const QString& name, QWidget* content, int width) {
    auto* view = new QWidget();
    view->setObjectName(name);
    auto* layout = new QHBoxLayout(view);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(content);
    view->setFixedWidth(width);
    return view;
}

// A pop-up's view keeps its width as the least, and grows (up to twice that) to room
// for a title of `characters` ("NSObject" needs more than 80 pixels in most fonts).
static QWidget* titledView(QWidget* view, QComboBox* popUp, int characters) {
    view->setMaximumWidth(2 * view->minimumWidth());
    popUp->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    popUp->setMinimumContentsLength(characters);
    view->setMinimumWidth(qBound(view->minimumWidth(), popUp->sizeHint().width(), view->maximumWidth()));
    return view;
}

QAction* mainwindow::buttonItem(const QString& suffix, const QString& toolTip) {
    auto* item = new QWidgetAction(this);
    item->setObjectName(QStringLiteral("ti_") + suffix);
    auto* button = new QToolButton();
    button->setObjectName(QStringLiteral("b_") + suffix);
    button->setIcon(QIcon(KLVR_NSBUNDLE_RESOURCEPATH() + QStringLiteral("/ti_") + suffix + QStringLiteral(".png")));
    button->setIconSize(QSize(24, 24));
    button->setAutoRaise(true);
    button->setToolTip(toolTip);
    button->setFixedSize(32, 28);
    // The button's name binds it to this window's operation of the same name.
    const QString operation = QStringLiteral("b_") + suffix;
    connect(button, &QToolButton::clicked, this, [this, operation] { klvrInvoke(this, operation, Value()); });
    QWidget* view = fixedView(QStringLiteral("v_") + suffix, button, 32);
    item->setDefaultWidget(view);
    item->setToolTip(toolTip);
    return item;
}

QAction* mainwindow::KLVR_ToolbarItem(const QString& identifier) {
    for (const auto& [suffix, toolTip] : kButtons)
        if (identifier == QStringLiteral("ti_") + QLatin1String(suffix))
            return buttonItem(QLatin1String(suffix), QLatin1String(toolTip));
    Global* global = Global::sharedGlobal();
    if (identifier == QLatin1String("ti_projecticon")) {
        projectIconView_ = new QLabel();
        projectIconView_->setObjectName(QStringLiteral("v_projecticon"));
        projectIconView_->setFixedSize(32, 25);
        projectIconView_->setScaledContents(true);
        ti_projecticon->setDefaultWidget(projectIconView_);
        return ti_projecticon;
    }
    if (identifier == QLatin1String("ti_project")) {
        global->pubProject->setParent(nullptr); // the previous view must not take it along
        global->pubProject->setFrame(false);
        ti_project->setDefaultWidget(titledView(fixedView(QStringLiteral("v_project"), global->pubProject, 150),
                                                global->pubProject, 16));
        return ti_project;
    }
    if (identifier == QLatin1String("ti_event")) {
        global->pubEvent->setParent(nullptr);
        global->pubEvent->setFrame(false);
        ti_event->setDefaultWidget(titledView(fixedView(QStringLiteral("v_event"), global->pubEvent, 80),
                                              global->pubEvent, 10));
        return ti_event;
    }
    if (identifier == QLatin1String("ti_filesearch")) {
        auto* item = new QWidgetAction(this);
        item->setObjectName(QStringLiteral("ti_filesearch"));
        boxedSearchFile->setMinimumWidth(120); // gives way first in a narrow window
        boxedSearchFile->setMaximumWidth(300);
        item->setDefaultWidget(boxedSearchFile);
        return item;
    }
    return nullptr;
}

void mainwindow::setProjectItemsVisible(bool visible) {
    for (QWidgetAction* item : {ti_project.data(), ti_event.data(), ti_projecticon.data()})
        if (item)
            item->setVisible(visible);
    // The menu commands that need a project follow it.
    Global::sharedGlobal()->updateMenuCommands();
}

void mainwindow::setStyleMask(qint64 mask) {
    styleMask_ = mask;
    Qt::WindowFlags flags = Qt::Window | Qt::CustomizeWindowHint;
    if (mask & 1)
        flags |= Qt::WindowTitleHint;
    if (mask & 2)
        flags |= Qt::WindowCloseButtonHint;
    if (mask & 4)
        flags |= Qt::WindowMinimizeButtonHint;
    if (mask & 8)
        flags |= Qt::WindowMaximizeButtonHint;
    setWindowFlags(flags);
}

static void sendToGlobal(const char* operation) {
    klvrInvoke(Global::sharedGlobal(), QString::fromLatin1(operation), Value());
}

void mainwindow::b_back() { sendToGlobal("global_back"); }
void mainwindow::b_global() { sendToGlobal("global_global"); }
void mainwindow::b_lasterror() { sendToGlobal("global_lasterror"); }
void mainwindow::b_run() { sendToGlobal("global_run"); }
void mainwindow::b_build() { sendToGlobal("global_build"); }
void mainwindow::b_stop() { sendToGlobal("global_stop"); }
void mainwindow::b_ib() { sendToGlobal("global_ib"); }
void mainwindow::b_log() { sendToGlobal("global_runlogpanel"); }
void mainwindow::boxedSearchFilePerform() { sendToGlobal("boxedSearchFile"); }

void mainwindow::KLVR_WindowWillClose(const Value&) {
    KLVR_TRACE("WindowWillClose");
    // Ends the user's application and a build under way, and waits until they are gone.
    Global::sharedGlobal()->endBuildAndRun();
    QApplication::quit();
}

void mainwindow::closeEvent(QCloseEvent* event) {
    // What was typed is saved before the window goes; when a document cannot be saved
    // and the user keeps it, the window stays.
    if (!closing_ && !Global::sharedGlobal()->prepareToQuit()) {
        event->ignore();
        return;
    }
    if (!closing_) {
        closing_ = true;
        KLVR_WindowWillClose();
    }
    event->accept();
}
