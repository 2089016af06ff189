#include "frame/screenshot.h"

#include "frame/global.h"
#include "frame/mainwindow.h"
#include "frame/png_writer.h"

#include <QApplication>
#include <QDeadlineTimer>
#include <QPixmap>
#include <QTimer>
#include <cstdio>

int writeScreenshotWhenIdle(Global* global, const QString& file) {
    int status = 0;
    QDeadlineTimer giveUp(120000);
    // A zero-interval timer fires only once the queued events are processed; poll
    // until background work (scans) is done, then take the picture.
    auto* poll = new QTimer(qApp);
    poll->setInterval(0);
    QObject::connect(poll, &QTimer::timeout, qApp, [=, &status] {
        if (global->isBusy() && !giveUp.hasExpired())
            return;
        poll->stop();
        QCoreApplication::processEvents();
        QWidget* window = global->mymainwindow;
        if (!window) {
            std::fprintf(stderr, "kelvaro: there is no main window to picture\n");
            status = 1;
        } else if (!writeFastPng(window->grab().toImage(), file)) {
            std::fprintf(stderr, "kelvaro: could not write %s\n", file.toLocal8Bit().constData());
            status = 1;
        }
        QApplication::quit();
    });
    poll->start();
    qApp->exec();
    return status;
}
