#include "views/logic/ChartExtent.h"

#include <algorithm>

namespace {

constexpr qint64 kBlockRows = 256; // rows

}

void ChartExtent::Take(qint64 row, double value)
{
    if (std::isinf(value)) {
        ++Infinite;
        return;
    }
    if (std::isnan(value))
        value = 0;
    else
        ++Numbers;
    if (value < Least) {
        Least = value;
        LeastRow = row;
    }
    if (value > Most) {
        Most = value;
        MostRow = row;
    }
    if (value > 0) {
        if (value < LeastPositive) {
            LeastPositive = value;
            LeastPositiveRow = row;
        }
        return;
    }
    ++Unfit;
    Negative += value < 0 ? 1 : 0;
}

void ChartExtent::Take(const ChartExtent &other)
{
    if (other.Least < Least) {
        Least = other.Least;
        LeastRow = other.LeastRow;
    }
    if (other.Most > Most) {
        Most = other.Most;
        MostRow = other.MostRow;
    }
    if (other.LeastPositive < LeastPositive) {
        LeastPositive = other.LeastPositive;
        LeastPositiveRow = other.LeastPositiveRow;
    }
    Numbers += other.Numbers;
    Infinite += other.Infinite;
    Unfit += other.Unfit;
    Negative += other.Negative;
}

ChartBlocks::ChartBlocks(const std::vector<double> &values)
{
    const qint64 rows = qint64(values.size());
    for (qint64 first = 0; first < rows; first += kBlockRows) {
        ChartExtent &block = m_blocks.emplace_back();
        for (qint64 row = first; row < std::min(first + kBlockRows, rows); ++row)
            block.Take(row, values[size_t(row)]);
    }
}

ChartExtent ChartBlocks::Of(const std::vector<double> &values, qint64 first, qint64 last) const
{
    ChartExtent extent;
    for (qint64 row = first; row < last;) {
        if (row % kBlockRows == 0 && row + kBlockRows <= last) {
            extent.Take(m_blocks[size_t(row / kBlockRows)]);
            row += kBlockRows;
        } else {
            extent.Take(row, values[size_t(row)]);
            ++row;
        }
    }
    return extent;
}
