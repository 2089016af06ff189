#include "frame/screenshot.h"

#include "frame/global.h"
#include "frame/mainwindow.h"

#include <QApplication>
#include <QDeadlineTimer>
#include <QPixmap>
#include <QTimer>
#include <cstdio>

namespace {
// PNG is lossless at every level; a high quality number means light compression, which
// writes the picture several times faster for a file a little larger.
constexpr int screenshotQuality = 80;
} // namespace

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
        } else if (!window->grab().save(file, "PNG", screenshotQuality)) {
            std::fprintf(stderr, "kelvaro: could not write %s\n", file.toLocal8Bit().constData());
            status = 1;
        }
        QApplication::quit();
    });
    poll->start();
    qApp->exec();
    return status;
}
