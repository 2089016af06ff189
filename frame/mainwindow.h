#pragma once
// The one document window: the code pane as its content and the toolbar. Closing it
// stops the user's running application and ends the IDE.

#include "frame/classframe.h"
#include "frame/value.h"

#include <QMainWindow>

class mainwindow : public QMainWindow {
    Q_OBJECT
    KLVR_CLASS_FRAME(mainwindow)
public:
    mainwindow();
    ~mainwindow() override;

    // The platform's window style bits: titled 1, closable 2, miniaturizable 4, resizable 8.
    void setStyleMask(qint64 mask);
    qint64 styleMask() const { return styleMask_; }
    bool KLVR_CanBecomeKeyWindow() const { return true; }
    bool KLVR_CanBecomeMainWindow() const { return true; }
    void KLVR_WindowWillClose(const Value& notification = Value());

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void Init();
    qint64 styleMask_ = 15;
};

KLVR_DEFINE_CLASS_HELPERS(mainwindow, MAINWINDOW)
