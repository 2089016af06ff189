#include "frame/mainwindow.h"

#include "frame/global.h"

#include <QApplication>
#include <QCloseEvent>

mainwindow::mainwindow() { Init(); }

mainwindow::~mainwindow() { klvr_frame::forget<mainwindow>(this); }

void mainwindow::Init() {
    setObjectName(QStringLiteral("mw"));
    resize(500, 500);
}

void mainwindow::setStyleMask(qint64 mask) {
    styleMask_ = mask;
    Qt::WindowFlags flags = Qt::Window;
    if (mask & 1)
        flags |= Qt::WindowTitleHint;
    if (mask & 2)
        flags |= Qt::WindowCloseButtonHint;
    if (mask & 4)
        flags |= Qt::WindowMinimizeButtonHint;
    if (mask & 8)
        flags |= Qt::WindowMaximizeButtonHint;
    setWindowFlags(flags | Qt::CustomizeWindowHint);
}

void mainwindow::KLVR_WindowWillClose(const Value&) {
    KLVR_TRACE("WindowWillClose");
    Global* global = Global::sharedGlobal();
    global->stopRunningTask();
    QApplication::quit();
}

void mainwindow::closeEvent(QCloseEvent* event) {
    KLVR_WindowWillClose();
    event->accept();
}
