// Charts of made-up values, and letters that are as wide on every machine.
#pragma once

#include "views/logic/ChartLayout.h"
#include <cmath>
#include <functional>

constexpr int kChartTypes[] = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 14, 16};

inline ChartData MakeChart(int columns, qint64 rows, const std::function<double(qint64 row, int column)> &value,
                           const std::function<QString(qint64 row)> &label = {})
{
    ChartData chart;
    chart.SetColumnCount(columns);
    for (int column = 1; column <= columns; ++column)
        chart.SetColumnLabel(column, QStringLiteral("Column %1").arg(column));
    chart.SetRowCount(rows);
    for (qint64 row = 1; row <= rows; ++row) {
        chart.SetRowLabel(row, label ? label(row - 1) : QStringLiteral("Row %1").arg(row));
        for (int column = 1; column <= columns; ++column) {
            const double number = value(row - 1, column - 1);
            chart.SetData(row, column, std::isnan(number) ? QString() : QString::number(number, 'g', 17));
        }
    }
    return chart;
}

// 7 pixels a letter, 14 high; the title twice as large.
inline QSizeF MeasureFixed(const QString &text, ChartFace face)
{
    const double times = face == ChartFace::Title ? 2 : 1;
    return {7 * times * double(text.size()), 14 * times};
}

inline std::vector<ChartText> TextsOf(const ChartPicture &picture, ChartRole role)
{
    std::vector<ChartText> texts;
    for (const ChartText &text : picture.Texts)
        if (text.Role == role)
            texts.push_back(text);
    return texts;
}

inline std::vector<ChartMark> MarksOf(const ChartPicture &picture, ChartMark::Kind what)
{
    std::vector<ChartMark> marks;
    for (const ChartMark &mark : picture.Marks)
        if (mark.What == what)
            marks.push_back(mark);
    return marks;
}
