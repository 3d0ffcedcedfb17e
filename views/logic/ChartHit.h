#pragma once
// What lies at a place of a laid-out chart, in words. Any thread that owns the data; nothing raises.

#include "views/logic/ChartLayout.h"

// The row whose slot holds this pixel, at least the first and at most the last that is shown; -1 where none is.
qint64 RowAtPixel(const ChartPicture &picture, double x);

struct ChartHit
{
    QString Text; // lines; "" where nothing lies
    QPointF Mark; // the place that the text is about
    bool IsRow = false;
};
ChartHit HitChart(const ChartData &data, const ChartOptions &options, const ChartPicture &picture,
                  const QPointF &position);
