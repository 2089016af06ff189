#pragma once
// The welcome window shown when no project is open. Its buttons send the
// application controller's commands by name.

#include <QLabel>
#include <QWidget>
#include <memory>

namespace Ui {
class WelcomeWindow;
}

class WelcomeWindow : public QWidget {
    Q_OBJECT
public:
    explicit WelcomeWindow(QObject* controller);
    ~WelcomeWindow() override;
    QLabel* buildDateLabel() const;

private:
    std::unique_ptr<Ui::WelcomeWindow> ui_;
};
