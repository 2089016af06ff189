#pragma once
// The application object. It receives every failure that no code caught (the event
// loop's notify() is the one place that catches), writes the report to the system log,
// shows it, and lets the application go on.

#include "frame/klexception.h"

#include <QApplication>

struct StartupOptions;

class KLVR_Application : public QApplication {
    Q_OBJECT
public:
    KLVR_Application(int& argc, char** argv);
    ~KLVR_Application() override;

    bool notify(QObject* receiver, QEvent* event) override;
    // Logs and shows the failure report; the application keeps running.
    void reportException(const KLException& failure);

    // Runs the IDE: loads the main interface (which runs the start-up), then the event
    // loop, or writes a screenshot and quits when asked to.
    int runIde(const StartupOptions& options);
};
