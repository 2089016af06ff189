#pragma once
// The About window: the application's name, version and build date.

#include <QWidget>

class QLabel;

class AboutBox : public QWidget {
    Q_OBJECT
public:
    // `buildDate` is the text the welcome window shows (the executable's date).
    explicit AboutBox(const QString& buildDate);
    QString versionText() const;
    QString buildDateText() const;

private:
    QLabel* version_ = nullptr;
    QLabel* buildDate_ = nullptr;
};
