#include "views/logic/ChartData.h"

#include "lang/Text.h"
#include <cmath>
#include <limits>
#include <new>

namespace {

constexpr qint64 kAskEvery = 256;               // rows
constexpr qint64 kMostValues = qint64(1) << 28; // of a chart: two gigabytes

double InfinityOf(const QString &text)
{
    const QString word = lang::Trim(text).toLower();
    const bool isNegative = word.startsWith(u'-');
    const QString bare = isNegative || word.startsWith(u'+') ? word.mid(1) : word;
    if (bare != QLatin1String("inf") && bare != QLatin1String("infinity"))
        return 0;
    return isNegative ? -std::numeric_limits<double>::infinity() : std::numeric_limits<double>::infinity();
}

// Is there a number at the head of the text? 0 is one, "abc" is none, and both read as 0.
bool HoldsNumber(const QString &text)
{
    qsizetype at = 0;
    const auto skip = [&] {
        while (at < text.size() && (text[at] == u' ' || text[at] == u'\t' || text[at] == u'\n'))
            ++at;
    };
    skip();
    if (at < text.size() && (text[at] == u'-' || text[at] == u'+')) {
        ++at;
        skip();
    }
    if (at < text.size() && text[at] == u'.')
        ++at;
    return at < text.size() && ((text[at] >= u'0' && text[at] <= u'9') || text[at] == u'&');
}

struct Picked
{
    std::vector<int> Labels, Data;
};

Picked ReadPicked(const QString &labelFields, const QString &dataFields)
{
    const auto numbers = [](const QString &list) {
        std::vector<int> columns;
        for (const QString &one : lang::Split(list, QStringLiteral(",")))
            columns.push_back(int(lang::Val(one)));
        return columns;
    };
    return {numbers(labelFields), numbers(dataFields)};
}

// One blank between texts, none before the first: an empty text in front leaves nothing, one behind leaves its blank.
template <typename Text> QString JoinedLabel(const std::vector<int> &columns, const Text &text)
{
    QString label;
    for (const int column : columns) {
        const QString part = lang::Trim(text(column));
        label = label.isEmpty() ? part : label + u' ' + part;
    }
    return label;
}

template <typename Text>
void FillRows(ChartData &chart, qint64 rows, const Picked &picked, const Text &text, const ChartKeepOn &keepOn)
{
    // So many values have no room; better none of them than a machine without memory.
    if (rows > kMostValues / std::max(chart.ColumnCount(), 1))
        throw std::bad_alloc();
    chart.SetRowCount(rows);
    for (qint64 row = 1; row <= rows; ++row) {
        if (row % kAskEvery == 0 && keepOn && !keepOn())
            return;
        chart.SetRowLabel(row, JoinedLabel(picked.Labels, [&](int column) { return text(row, column); }));
        int number = 0;
        for (const int column : picked.Data)
            chart.SetData(row, ++number, text(row, column));
    }
}

} // namespace

bool IsChartType(int type)
{
    return (type >= chart3DBar && type <= chart2DCombination) || type == chart2DPie || type == chart2DXY;
}

double ChartNumber(const QString &text)
{
    if (HoldsNumber(text))
        return lang::Val(text);
    const double infinite = InfinityOf(text);
    return infinite != 0 ? infinite : std::numeric_limits<double>::quiet_NaN();
}

void ChartData::SetColumnCount(int columns)
{
    m_rowLabels.clear();
    m_columnLabels.assign(size_t(std::max(columns, 0)), QString());
    m_values.assign(m_columnLabels.size(), {});
    m_blocks.assign(m_columnLabels.size(), std::nullopt);
}

void ChartData::SetRowCount(qint64 rows)
{
    const size_t count = size_t(std::max<qint64>(rows, 0));
    for (std::vector<double> &column : m_values)
        column.resize(count, 0);
    m_blocks.assign(m_columnLabels.size(), std::nullopt);
    m_rowLabels.resize(count);
}

QString ChartData::ColumnLabel(int column) const
{
    return column >= 1 && column <= ColumnCount() ? m_columnLabels[size_t(column - 1)] : QString();
}

void ChartData::SetColumnLabel(int column, const QString &label)
{
    if (column >= 1 && column <= ColumnCount())
        m_columnLabels[size_t(column - 1)] = label;
}

QString ChartData::RowLabel(qint64 row) const
{
    return row >= 1 && row <= RowCount() ? m_rowLabels[size_t(row - 1)] : QString();
}

void ChartData::SetRowLabel(qint64 row, const QString &label)
{
    if (row >= 1 && row <= RowCount())
        m_rowLabels[size_t(row - 1)] = label;
}

void ChartData::SetData(qint64 row, int column, const QString &text)
{
    if (row < 1 || row > RowCount() || column < 1 || column > ColumnCount())
        return;
    m_values[size_t(column - 1)][size_t(row - 1)] = ChartNumber(text);
    m_blocks[size_t(column - 1)].reset();
}

QString ChartData::Data(qint64 row, int column) const
{
    if (row < 1 || row > RowCount() || column < 1 || column > ColumnCount())
        return {};
    const double value = m_values[size_t(column - 1)][size_t(row - 1)];
    return lang::CStr(std::isfinite(value) ? value : 0.0);
}

ChartExtent ChartData::Extent(int column, qint64 first, qint64 last) const
{
    const std::vector<double> &values = m_values[size_t(column)];
    std::optional<ChartBlocks> &blocks = m_blocks[size_t(column)];
    if (!blocks)
        blocks.emplace(values);
    return blocks->Of(values, first, last);
}

void FillChart(ChartData &chart, const ChartGrid &grid, const QString &labelFields, const QString &dataFields,
               const ChartKeepOn &keepOn)
{
    if (labelFields.isEmpty() || dataFields.isEmpty())
        return;
    const Picked picked = ReadPicked(labelFields, dataFields);
    chart.SetColumnCount(int(picked.Data.size()));
    int number = 0;
    for (const int column : picked.Data)
        chart.SetColumnLabel(++number, grid.Text(0, column));
    FillRows(chart, grid.Rows - 1, picked, grid.Text, keepOn);
}

void FillChart(ChartData &chart, const ADODB::Recordset &rows, const QString &labelFields, const QString &dataFields,
               const ChartKeepOn &keepOn)
{
    if (labelFields.isEmpty() || dataFields.isEmpty())
        return;
    const Picked picked = ReadPicked(labelFields, dataFields);
    for (const std::vector<int> &columns : {picked.Labels, picked.Data})
        for (const int column : columns)
            if (column < 0 || column >= rows.ColumnCount())
                throw ADODB::Error(ADODB::adErrItemNotFound, QString());
    chart.SetColumnCount(int(picked.Data.size()));
    int number = 0;
    for (const int column : picked.Data)
        chart.SetColumnLabel(++number, rows.Column(column).Name);
    const auto text = [&](qint64 row, int column) { return rows.CellText(row - 1, column); };
    FillRows(chart, rows.RecordCount(), picked, text, keepOn);
}

std::vector<ChartField> ChartFields(const ChartGrid &grid)
{
    std::vector<ChartField> fields;
    for (int column = 0; column <= grid.Cols - 2; ++column)
        fields.push_back({grid.Text(0, column), column});
    return fields;
}

std::vector<ChartField> ChartFields(const ADODB::Recordset &rows)
{
    std::vector<ChartField> fields;
    for (int column = 0; column < rows.ColumnCount(); ++column)
        if (!rows.Column(column).Name.isEmpty())
            fields.push_back({rows.Column(column).Name, column});
    return fields;
}

void ChartChoice::Move(List from, List to, const std::vector<qint64> &rows)
{
    std::vector<ChartField> &source = this->*from, &target = this->*to, left;
    size_t next = 0;
    for (size_t i = 0; i < source.size(); ++i) {
        const bool goes = next < rows.size() && rows[next] == qint64(i);
        (goes ? target : left).push_back(source[i]);
        next += goes ? 1 : 0;
    }
    source = std::move(left);
}

QString ChartChoice::Tags(const std::vector<ChartField> &list)
{
    QStringList tags;
    for (const ChartField &field : list)
        tags += QString::number(field.Tag);
    return tags.join(u',');
}
