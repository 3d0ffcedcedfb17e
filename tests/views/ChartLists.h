// The lists of the chart's setup under a mouse.
#pragma once

#include "controls/ListView.h"
#include <QApplication>
#include <QMouseEvent>
#include <QTest>

inline QPoint RowMiddle(ListView *list, int row)
{
    return list->visualRect(list->model()->index(row, 0)).center();
}

inline void ClickRow(ListView *list, int row, Qt::KeyboardModifiers keys = {})
{
    QTest::mouseClick(list->viewport(), Qt::LeftButton, keys, RowMiddle(list, row));
}

inline QStringList Rows(const ListView *list)
{
    QStringList rows;
    for (qint64 row = 0; row < list->Count(); ++row)
        rows << list->Text(row) + u':' + list->Tag(row);
    return rows;
}

// By the real events of a mouse: down on a row, over to the other list, up.
inline void Drag(ListView *from, int row, ListView *to)
{
    QWidget *const source = from->viewport();
    const QPoint start = RowMiddle(from, row);
    const QPoint end = source->mapFrom(source->window(), to->viewport()->mapTo(source->window(), QPoint(20, 30)));
    QTest::mousePress(source, Qt::LeftButton, {}, start);
    QTest::mouseMove(source, start + QPoint(3, 0));
    for (const QPoint &at : {start + QPoint(15, 4), end}) {
        QMouseEvent move(QEvent::MouseMove, at, source->mapToGlobal(at), Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(source, &move);
    }
    QTest::mouseRelease(source, Qt::LeftButton, {}, end);
}
