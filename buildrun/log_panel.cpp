#include "buildrun/log_panel.h"

#include <QFontDatabase>
#include <QLabel>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTextCursor>
#include <QVBoxLayout>

LogPanel::LogPanel(const QString& title, const QString& name, int maxLines, QWidget* parent)
    : QDockWidget(title, parent), maxLines_(maxLines) {
    setObjectName(name);
    auto* content = new QWidget(this);
    auto* layout = new QVBoxLayout(content);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    note_ = new QLabel(content);
    note_->setObjectName(name + QStringLiteral("Note"));
    note_->hide();
    view_ = new QPlainTextEdit(content);
    view_->setObjectName(name + QStringLiteral("Text"));
    view_->setReadOnly(true);
    view_->setUndoRedoEnabled(false);
    // One block is one line: the scroll position counts lines, and nothing is wrapped.
    view_->setLineWrapMode(QPlainTextEdit::NoWrap);
    view_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    // The line after the last line break is a block too.
    view_->setMaximumBlockCount(maxLines + 1);
    layout->addWidget(note_);
    layout->addWidget(view_);
    setWidget(content);
}

void LogPanel::append(const QString& text) {
    if (text.isEmpty())
        return;
    QScrollBar* bar = view_->verticalScrollBar();
    const bool atBottom = bar->value() >= bar->maximum();
    const int position = bar->value();
    const int before = view_->blockCount();
    QTextCursor cursor(view_->document());
    cursor.movePosition(QTextCursor::End);
    cursor.insertText(text);
    const qint64 removed = qint64(before) + text.count(QLatin1Char('\n')) - view_->blockCount();
    if (removed > 0) {
        dropped_ += removed;
        note_->setText(droppedNote());
        note_->show();
    }
    if (atBottom)
        bar->setValue(bar->maximum());
    else
        bar->setValue(int(qMax<qint64>(0, position - qMax<qint64>(0, removed))));
}

void LogPanel::clear() {
    view_->clear();
    dropped_ = 0;
    note_->hide();
}

QString LogPanel::text() const { return view_->toPlainText(); }

QString LogPanel::droppedNote() const {
    if (dropped_ == 0)
        return QString();
    return QStringLiteral("%1 earlier lines were dropped; the last %2 lines are kept.").arg(dropped_).arg(maxLines_);
}
