#pragma once
// A log of child-process output as a dockable panel of the main window: a LogView
// bounded to its last `maxLines` lines, with a note above it once earlier lines were
// dropped. It follows new output while the user is at the bottom and stays put while
// the user has scrolled up.

#include "buildrun/log_view.h"

#include <QDockWidget>

class QLabel;

class LogPanel : public QDockWidget {
    Q_OBJECT
public:
    LogPanel(const QString& title, const QString& name, int maxLines, QWidget* parent = nullptr);

    void append(const QString& text);
    void clear();
    QString text() const { return view_->toPlainText(); }
    LogView* view() const { return view_; }
    // Lines dropped from the top since the last clear().
    qint64 droppedLines() const { return dropped_; }
    // The note shown above the text once lines were dropped ("" while none were).
    QString droppedNote() const;

private:
    LogView* view_;
    QLabel* note_;
    int maxLines_;
    qint64 dropped_ = 0;
};
