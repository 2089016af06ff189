#include "frame/welcome_window.h"

#include "frame/mainthread.h"
#include "ui_welcome_window.h"

#include <QPointer>

WelcomeWindow::WelcomeWindow(QObject* controller) : ui_(std::make_unique<Ui::WelcomeWindow>()) {
    ui_->setupUi(this);
    setObjectName(QStringLiteral("Welcome"));
    QPointer<QObject> target(controller);
    auto send = [target](const char* operation) {
        return [target, operation] { klvrInvoke(target, QString::fromLatin1(operation), Value()); };
    };
    connect(ui_->newProject, &QPushButton::clicked, this, send("NewProject"));
    connect(ui_->openProject, &QPushButton::clicked, this, send("OpenProject"));
    connect(ui_->quickStart, &QPushButton::clicked, this, send("QuickStart"));
    connect(ui_->close, &QPushButton::clicked, this, send("WelcomeClose"));
}

WelcomeWindow::~WelcomeWindow() = default;

QLabel* WelcomeWindow::buildDateLabel() const { return ui_->buildDate; }
