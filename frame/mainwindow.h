#pragma once
// The one document window: the code pane as its content and a toolbar with the file
// selector, the event selector, the project icon, navigation, build and run buttons,
// the interface designer, the project search field and the log. Every button only
// forwards to an operation of Global. Closing the window stops the user's running
// application and ends the IDE.

#include "frame/classframe.h"
#include "frame/value.h"

#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QPointer>
#include <QToolBar>
#include <QWidgetAction>

class mainwindow : public QMainWindow {
    Q_OBJECT
    KLVR_CLASS_FRAME(mainwindow)
public:
    mainwindow();
    ~mainwindow() override;

    QPointer<QToolBar> mytoolbar;
    QPointer<QWidgetAction> ti_project;
    QPointer<QWidgetAction> ti_event;
    QPointer<QWidgetAction> ti_projecticon;
    QPointer<QLineEdit> boxedSearchFile;

    // The toolbar's entries in order: both the allowed and the default list. The
    // platform's separator and space items are "NSToolbarSeparatorItem" and
    // "NSToolbarSpaceItem".
    static QStringList ToolbarItems();
    QStringList KLVR_ToolbarAllowedItemIdentifiers() const { return ToolbarItems(); }
    QStringList KLVR_ToolbarDefaultItemIdentifiers() const { return ToolbarItems(); }
    // The item factory; nullptr for an unknown identifier (and for separators and
    // spaces, which the toolbar makes itself).
    QAction* KLVR_ToolbarItem(const QString& identifier);
    // The image view of the project icon item (a new one with every factory call).
    QLabel* projectIconView() const { return projectIconView_; }
    // Shows or hides the views of the project, event and project icon items.
    void setProjectItemsVisible(bool visible);

    // The platform's window style bits: titled 1, closable 2, miniaturizable 4, resizable 8.
    void setStyleMask(qint64 mask);
    qint64 styleMask() const { return styleMask_; }
    bool KLVR_CanBecomeKeyWindow() const { return true; }
    bool KLVR_CanBecomeMainWindow() const { return true; }
    void KLVR_WindowWillClose(const Value& notification = Value());

    Q_INVOKABLE void b_back();
    Q_INVOKABLE void b_global();
    Q_INVOKABLE void b_lasterror();
    Q_INVOKABLE void b_run();
    Q_INVOKABLE void b_build();
    Q_INVOKABLE void b_stop();
    Q_INVOKABLE void b_ib();
    Q_INVOKABLE void b_log();
    Q_INVOKABLE void boxedSearchFilePerform();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void Init();
    QAction* buttonItem(const QString& suffix, const QString& toolTip);
    QWidget* fixedView(const QString& name, QWidget* content, int width);
    qint64 styleMask_ = 15;
    QPointer<QLabel> projectIconView_;
    bool closing_ = false;
};

KLVR_DEFINE_CLASS_HELPERS(mainwindow, MAINWINDOW)
