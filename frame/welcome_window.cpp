#include "frame/welcome_window.h"

#include "frame/mainthread.h"
#include "frame/runtime.h"
#include "ui_welcome_window.h"

#include <QComboBox>
#include <QDir>
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
    // The bundled examples; each opens through its own copy (OpenExample).
    const QString examples = KLVR_NSBUNDLE_RESOURCEPATH() + QStringLiteral("/Examples");
    for (const QString& name : QDir(examples).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name))
        ui_->examples->addItem(name, examples + QLatin1Char('/') + name);
    ui_->examples->setVisible(ui_->examples->count() > 0);
    ui_->openExample->setVisible(ui_->examples->count() > 0);
    connect(ui_->openExample, &QPushButton::clicked, this, [this, target] {
        const QString example = ui_->examples->currentData().toString();
        if (!example.isEmpty())
            klvrInvoke(target, QStringLiteral("OpenExample"), Value(example));
    });
}

WelcomeWindow::~WelcomeWindow() = default;

QLabel* WelcomeWindow::buildDateLabel() const { return ui_->buildDate; }
