#pragma once
// What a chart shows: columns of numbers over labelled rows, filled from a grid's texts or from a recordset, and the
// list of a source's columns that can be charted, as the user moves them about.
//
// Columns and rows of the chart count from 1, as the control's own properties do. What is set out of range changes
// nothing; what is read there is "" or 0. Widget-free; belongs to the thread that fills it. Filling raises what the
// source raises, and keeps what was filled up to there.

#include "ado/Recordset.h"
#include "views/logic/ChartExtent.h"
#include <QStringList>
#include <functional>
#include <optional>
#include <vector>

enum ChartType
{
    chart3DBar = 0,
    chart2DBar = 1,
    chart3DLine = 2,
    chart2DLine = 3,
    chart3DArea = 4,
    chart2DArea = 5,
    chart3DStep = 6,
    chart2DStep = 7,
    chart3DCombination = 8,
    chart2DCombination = 9,
    chart2DPie = 14,
    chart2DXY = 16,
};
bool IsChartType(int type);

class ChartData
{
public:
    int ColumnCount() const { return int(m_columnLabels.size()); }
    qint64 RowCount() const { return qint64(m_rowLabels.size()); }
    void SetColumnCount(int columns); // takes the values away, and the rows
    void SetRowCount(qint64 rows);    // what is new is 0 and has no label
    QString ColumnLabel(int column) const;
    void SetColumnLabel(int column, const QString &label);
    QString RowLabel(qint64 row) const;
    void SetRowLabel(qint64 row, const QString &label);

    // A value is the number that leads the text, 0 where there is none. The texts of infinity, which some servers give,
    // are 0 as well; only the drawing knows them apart.
    void SetData(qint64 row, int column, const QString &text);
    QString Data(qint64 row, int column) const; // as text again

    // For the drawing, counted from 0, in range: NaN where the text held no number, and infinity. What a column holds
    // lies in one piece.
    const double *Values(int column) const { return m_values[size_t(column)].data(); }
    ChartExtent Extent(int column, qint64 first, qint64 last) const; // of those rows, without the last one
    const QString &Label(qint64 row) const { return m_rowLabels[size_t(row)]; }
    const QString &Heading(int column) const { return m_columnLabels[size_t(column)]; }

private:
    std::vector<QString> m_columnLabels, m_rowLabels;
    std::vector<std::vector<double>> m_values;                // one for each column
    mutable std::vector<std::optional<ChartBlocks>> m_blocks; // the same; made when they are asked for
};

// The value of a text as ChartData keeps it.
double ChartNumber(const QString &text);

// Where a chart's texts come from. Row 0 of a grid is its headings.
struct ChartGrid
{
    qint64 Rows = 0; // the headings' row included
    int Cols = 0;
    std::function<QString(qint64 row, int column)> Text;
};
using ChartKeepOn = std::function<bool()>; // asked now and then; false ends the filling

// Both lists hold column numbers of the source, joined by ",". An empty one ends the filling at once, and the chart
// stays as it is.
void FillChart(ChartData &chart, const ChartGrid &grid, const QString &labelFields, const QString &dataFields,
               const ChartKeepOn &keepOn = {});
// The visible rows in their order; the current row is not moved.
void FillChart(ChartData &chart, const ADODB::Recordset &rows, const QString &labelFields, const QString &dataFields,
               const ChartKeepOn &keepOn = {});

struct ChartField
{
    QString Text;
    int Tag = 0; // number of the column in its source
    bool operator==(const ChartField &) const = default;
};
// Every column of a grid but its last one, the empty fixed one too. That is meant: what the list offers is settled.
std::vector<ChartField> ChartFields(const ChartGrid &grid);
std::vector<ChartField> ChartFields(const ADODB::Recordset &rows);

// The three lists of the setup, and the rule for OK.
struct ChartChoice
{
    std::vector<ChartField> Fields, Labels, Data;

    using List = std::vector<ChartField> ChartChoice::*;
    // Moves the rows of those numbers (ascending) to the end of the other list, in their order.
    void Move(List from, List to, const std::vector<qint64> &rows);
    bool IsComplete() const { return !Labels.empty() && !Data.empty(); }
    static QString Tags(const std::vector<ChartField> &list); // "1,4"
};
