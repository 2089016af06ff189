#pragma once
// A log of child-process output as a dockable panel of the main window: monospaced,
// bounded to its last `maxLines` lines (a note above the text says when earlier lines
// were dropped), following new output while the user is at the bottom and staying put
// while the user has scrolled up.

#include <QDockWidget>

class QLabel;
class QPlainTextEdit;

class LogPanel : public QDockWidget {
    Q_OBJECT
public:
    LogPanel(const QString& title, const QString& name, int maxLines, QWidget* parent = nullptr);

    void append(const QString& text);
    void clear();
    QString text() const;
    QPlainTextEdit* view() const { return view_; }
    // Lines dropped from the top since the last clear().
    qint64 droppedLines() const { return dropped_; }
    // The note shown above the text once lines were dropped ("" while none were).
    QString droppedNote() const;

private:
    QPlainTextEdit* view_;
    QLabel* note_;
    int maxLines_;
    qint64 dropped_ = 0;
};
