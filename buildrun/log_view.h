#pragma once
// The text of a log: lines of child-process output, monospaced, read-only. It keeps at
// most `maxLines` lines, dropping the oldest, and paints only the lines in view, so
// appending costs the same whatever the log holds and megabytes of output never make
// the interface wait for a text layout. Whole lines are selected with the mouse or
// keyboard and copied.

#include <QAbstractScrollArea>
#include <deque>

class LogView : public QAbstractScrollArea {
    Q_OBJECT
public:
    explicit LogView(int maxLines, QWidget* parent = nullptr);

    // Appends output; returns the number of lines dropped from the top to make room.
    qint64 append(const QString& text);
    void clear();
    QString toPlainText() const;
    // Lines held, counting an unfinished last line.
    qint64 lineCount() const;
    // The 0-based line shown at the top.
    qint64 firstVisibleLine() const;
    QString line(qint64 index) const;
    // The selected lines as text (all of them when none are selected).
    QString selectedText() const;

public slots:
    void copy() const;
    void selectAll();

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    void updateScrollBars();
    int lineHeight() const;
    int visibleLines() const;
    qint64 lineAt(int y) const;

    std::deque<QString> lines_; // finished lines
    QString tail_;              // the last line while no line break has ended it
    int maxLines_;
    int longest_ = 0;           // characters of the longest line held so far
    qint64 anchor_ = -1;        // selection: first and last selected line, -1 for none
    qint64 cursor_ = -1;
};
