#pragma once
// Gives the rows of lists and trees room to breathe. Owned by its view.

#include <QStyledItemDelegate>
#include <algorithm>

class RowDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        QSize size = QStyledItemDelegate::sizeHint(option, index);
        size.setHeight(std::max(size.height(), option.fontMetrics.height() + 5));
        return size;
    }
};
