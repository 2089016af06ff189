#include "editor/flow_layout.h"

#include <QWidget>

FlowLayout::FlowLayout(QWidget* parent, int spacing) : QLayout(parent) { setSpacing(spacing); }

FlowLayout::~FlowLayout() {
    while (QLayoutItem* item = takeAt(0))
        delete item;
}

void FlowLayout::addItem(QLayoutItem* item) { items_.append(item); }

QLayoutItem* FlowLayout::takeAt(int index) {
    return index >= 0 && index < items_.size() ? items_.takeAt(index) : nullptr;
}

void FlowLayout::setGeometry(const QRect& rect) {
    QLayout::setGeometry(rect);
    arrange(rect, true);
}

QSize FlowLayout::sizeHint() const {
    // One row when there is room for it.
    int width = 0, height = 0;
    for (QLayoutItem* item : items_) {
        if (item->isEmpty())
            continue;
        const QSize hint = item->sizeHint();
        width += hint.width() + (width ? spacing() : 0);
        height = qMax(height, hint.height());
    }
    const QMargins m = contentsMargins();
    return QSize(width + m.left() + m.right(), height + m.top() + m.bottom());
}

QSize FlowLayout::minimumSize() const {
    // As narrow as the widest item; the height follows from heightForWidth.
    QSize size;
    for (QLayoutItem* item : items_)
        if (!item->isEmpty())
            size = size.expandedTo(item->sizeHint());
    const QMargins m = contentsMargins();
    return size + QSize(m.left() + m.right(), m.top() + m.bottom());
}

int FlowLayout::arrange(const QRect& rect, bool place) const {
    const QMargins m = contentsMargins();
    const QRect area = rect.adjusted(m.left(), m.top(), -m.right(), -m.bottom());
    int x = area.x(), y = area.y(), rowHeight = 0;
    for (QLayoutItem* item : items_) {
        if (item->isEmpty())
            continue;
        const QSize hint = item->sizeHint();
        if (x > area.x() && x + hint.width() > area.right() + 1) {
            x = area.x();
            y += rowHeight + spacing();
            rowHeight = 0;
        }
        if (place)
            item->setGeometry(QRect(QPoint(x, y), hint));
        x += hint.width() + spacing();
        rowHeight = qMax(rowHeight, hint.height());
    }
    return y + rowHeight - rect.y() + m.bottom();
}
