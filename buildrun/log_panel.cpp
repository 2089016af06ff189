#include "buildrun/log_panel.h"

#include <QLabel>
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
    view_ = new LogView(maxLines, content);
    view_->setObjectName(name + QStringLiteral("Text"));
    layout->addWidget(note_);
    layout->addWidget(view_);
    setWidget(content);
}

void LogPanel::append(const QString& text) {
    const qint64 removed = view_->append(text);
    if (removed > 0) {
        dropped_ += removed;
        note_->setText(droppedNote());
        note_->show();
    }
}

void LogPanel::clear() {
    view_->clear();
    dropped_ = 0;
    note_->hide();
}

QString LogPanel::droppedNote() const {
    if (dropped_ == 0)
        return QString();
    return QStringLiteral("%1 earlier lines were dropped; the last %2 lines are kept.").arg(dropped_).arg(maxLines_);
}
