// The worked cases of the chart: what a grid's texts become in it, and which columns are listed.
#include "tests/visual/CaseRunners.h"

#include "views/logic/ChartData.h"

namespace {

ChartGrid GridOf(const QJsonObject &args)
{
    const QJsonArray cells = A(args, "cells");
    return {cells.size(), int(cells.first().toArray().size()),
            [cells](qint64 row, int column) { return cells[int(row)][column].toString(); }};
}

QJsonValue RunGrid(const QJsonObject &args)
{
    ChartData chart;
    FillChart(chart, GridOf(args), T(args, "label_fields"), T(args, "data_fields"));
    QJsonArray columns, labels, data;
    for (int column = 1; column <= chart.ColumnCount(); ++column)
        columns.append(chart.ColumnLabel(column));
    for (qint64 row = 1; row <= chart.RowCount(); ++row) {
        labels.append(chart.RowLabel(row));
        QJsonArray values;
        for (int column = 1; column <= chart.ColumnCount(); ++column)
            values.append(chart.Data(row, column));
        data.append(values);
    }
    return QJsonObject{{QStringLiteral("column_count"), chart.ColumnCount()},
                       {QStringLiteral("column_labels"), columns},
                       {QStringLiteral("row_count"), chart.RowCount()},
                       {QStringLiteral("row_labels"), labels},
                       {QStringLiteral("data"), data}};
}

QJsonValue RunFields(const QJsonObject &args)
{
    QJsonArray fields;
    for (const ChartField &field : ChartFields(GridOf(args)))
        fields.append(QJsonArray{field.Text, QString::number(field.Tag)});
    return fields;
}

constexpr CaseRunner kRunners[] = {
    {"chart_grid", RunGrid},
    {"chart_fields", RunFields},
};

} // namespace

std::span<const CaseRunner> ChartRunners()
{
    return kRunners;
}
