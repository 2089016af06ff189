#include "buildrun/log_view.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QFontDatabase>
#include <QMenu>
#include "editor/kltextview.h"

#include <QPainter>
#include <QScrollBar>

LogView::LogView(int maxLines, QWidget* parent) : QAbstractScrollArea(parent), maxLines_(maxLines) {
    setFont(KLTextView::editorFont(QFontDatabase::systemFont(QFontDatabase::FixedFont).pointSize()));
    setFocusPolicy(Qt::StrongFocus);
    viewport()->setCursor(Qt::IBeamCursor);
    viewport()->setBackgroundRole(QPalette::Base);
    viewport()->setAutoFillBackground(true);
    updateScrollBars();
}

qint64 LogView::append(const QString& text) {
    if (text.isEmpty())
        return 0;
    QScrollBar* bar = verticalScrollBar();
    const bool atBottom = bar->value() >= bar->maximum();
    qsizetype start = 0;
    for (qsizetype end = text.indexOf(QLatin1Char('\n')); end >= 0; end = text.indexOf(QLatin1Char('\n'), start)) {
        QString line = std::move(tail_);
        line.append(QStringView(text).mid(start, end - start));
        tail_ = QString();
        longest_ = std::max(longest_, int(line.size()));
        lines_.push_back(std::move(line));
        start = end + 1;
    }
    tail_.append(QStringView(text).mid(start));
    longest_ = std::max(longest_, int(tail_.size()));
    qint64 dropped = 0;
    while (lineCount() > maxLines_) {
        lines_.pop_front();
        ++dropped;
    }
    if (dropped > 0) {
        anchor_ = anchor_ < 0 ? -1 : std::max<qint64>(0, anchor_ - dropped);
        cursor_ = cursor_ < 0 ? -1 : std::max<qint64>(0, cursor_ - dropped);
    }
    const int position = bar->value();
    updateScrollBars();
    bar->setValue(atBottom ? bar->maximum() : int(std::max<qint64>(0, position - dropped)));
    viewport()->update();
    return dropped;
}

void LogView::clear() {
    lines_.clear();
    tail_.clear();
    longest_ = 0;
    anchor_ = cursor_ = -1;
    updateScrollBars();
    viewport()->update();
}

QString LogView::toPlainText() const {
    QString text;
    for (const QString& line : lines_)
        text += line + QLatin1Char('\n');
    return text + tail_;
}

qint64 LogView::lineCount() const { return qint64(lines_.size()) + (tail_.isEmpty() ? 0 : 1); }

qint64 LogView::firstVisibleLine() const { return verticalScrollBar()->value(); }

QString LogView::line(qint64 index) const {
    if (index >= 0 && index < qint64(lines_.size()))
        return lines_[size_t(index)];
    return index == qint64(lines_.size()) ? tail_ : QString();
}

QString LogView::selectedText() const {
    if (anchor_ < 0)
        return toPlainText();
    QString text;
    for (qint64 i = std::min(anchor_, cursor_); i <= std::max(anchor_, cursor_); ++i)
        text += line(i) + QLatin1Char('\n');
    return text;
}

void LogView::copy() const { QApplication::clipboard()->setText(selectedText()); }

void LogView::selectAll() {
    anchor_ = 0;
    cursor_ = lineCount() - 1;
    viewport()->update();
}

int LogView::lineHeight() const { return std::max(1, fontMetrics().lineSpacing()); }

int LogView::visibleLines() const { return std::max(1, viewport()->height() / lineHeight()); }

qint64 LogView::lineAt(int y) const {
    return std::clamp<qint64>(firstVisibleLine() + y / lineHeight(), 0, std::max<qint64>(0, lineCount() - 1));
}

void LogView::updateScrollBars() {
    verticalScrollBar()->setRange(0, int(std::max<qint64>(0, lineCount() - visibleLines())));
    verticalScrollBar()->setPageStep(visibleLines());
    const int width = longest_ * fontMetrics().horizontalAdvance(QLatin1Char('M')) + 8;
    horizontalScrollBar()->setRange(0, std::max(0, width - viewport()->width()));
    horizontalScrollBar()->setPageStep(viewport()->width());
}

void LogView::paintEvent(QPaintEvent*) {
    QPainter painter(viewport());
    const int height = lineHeight();
    const qint64 first = firstVisibleLine();
    const qint64 last = std::min(lineCount() - 1, first + visibleLines());
    const qint64 from = std::min(anchor_, cursor_), to = std::max(anchor_, cursor_);
    const int x = 4 - horizontalScrollBar()->value();
    for (qint64 i = first; i <= last; ++i) {
        const int y = int(i - first) * height;
        const bool selected = anchor_ >= 0 && i >= from && i <= to;
        if (selected)
            painter.fillRect(0, y, viewport()->width(), height, palette().highlight());
        painter.setPen(selected ? palette().highlightedText().color() : palette().text().color());
        painter.drawText(x, y + fontMetrics().ascent(), line(i));
    }
}

void LogView::resizeEvent(QResizeEvent* event) {
    QAbstractScrollArea::resizeEvent(event);
    const bool atBottom = verticalScrollBar()->value() >= verticalScrollBar()->maximum();
    updateScrollBars();
    if (atBottom)
        verticalScrollBar()->setValue(verticalScrollBar()->maximum());
}

void LogView::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || lineCount() == 0)
        return;
    cursor_ = lineAt(int(event->position().y()));
    if (!(event->modifiers() & Qt::ShiftModifier) || anchor_ < 0)
        anchor_ = cursor_;
    viewport()->update();
}

void LogView::mouseMoveEvent(QMouseEvent* event) {
    if (!(event->buttons() & Qt::LeftButton) || anchor_ < 0)
        return;
    cursor_ = lineAt(int(event->position().y()));
    viewport()->update();
}

void LogView::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Copy))
        copy();
    else if (event->matches(QKeySequence::SelectAll))
        selectAll();
    else
        QAbstractScrollArea::keyPressEvent(event);
}

void LogView::contextMenuEvent(QContextMenuEvent* event) {
    QMenu menu(this);
    menu.addAction(tr("Copy"), this, &LogView::copy);
    menu.addAction(tr("Select All"), this, &LogView::selectAll);
    menu.exec(event->globalPos());
}
