#pragma once
// A layout that places its items left to right at their preferred size and starts a
// new row when the next item would not fit, so a narrow window shows every item
// whole on two (or more) rows instead of cutting or overlapping them.

#include <QLayout>
#include <QList>

class FlowLayout : public QLayout {
public:
    explicit FlowLayout(QWidget* parent, int spacing = 4);
    ~FlowLayout() override;

    void addItem(QLayoutItem* item) override;
    int count() const override { return int(items_.size()); }
    QLayoutItem* itemAt(int index) const override { return items_.value(index); }
    QLayoutItem* takeAt(int index) override;
    Qt::Orientations expandingDirections() const override { return {}; }
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override { return arrange(QRect(0, 0, width, 0), false); }
    void setGeometry(const QRect& rect) override;
    QSize sizeHint() const override;
    QSize minimumSize() const override;

private:
    // Places (or only measures) the items in `rect`; returns the height used.
    int arrange(const QRect& rect, bool place) const;
    QList<QLayoutItem*> items_;
};
