#pragma once
// What a stretch of rows of one column comes to: the least and the largest value with their rows, and counts. A column
// keeps it for blocks of rows, so that a chart of very many rows is laid out without a look at each of them.
// Pure values; any thread; nothing raises.

#include <QtGlobal>
#include <cmath>
#include <limits>
#include <vector>

struct ChartExtent
{
    // Of what can be drawn: what held no number counts as 0, infinity is passed over. The rows are -1 for none.
    double Least = std::numeric_limits<double>::infinity(), Most = -std::numeric_limits<double>::infinity();
    double LeastPositive = std::numeric_limits<double>::infinity();
    qint64 LeastRow = -1, MostRow = -1, LeastPositiveRow = -1;
    qint64 Numbers = 0, Infinite = 0;
    qint64 Unfit = 0, Negative = 0; // Unfit: not above zero

    void Take(qint64 row, double value);
    void Take(const ChartExtent &other); // of rows behind these
    // The lower end on an axis of that kind, and whether anything can stand on it.
    double Lower(bool logarithmic) const { return logarithmic ? LeastPositive : Least; }
    qint64 LowerRow(bool logarithmic) const { return logarithmic ? LeastPositiveRow : LeastRow; }
    bool IsEmpty(bool logarithmic) const { return LowerRow(logarithmic) < 0; }
};

class ChartBlocks
{
public:
    explicit ChartBlocks(const std::vector<double> &values);
    ChartExtent Of(const std::vector<double> &values, qint64 first, qint64 last) const; // the last one is not in it

private:
    std::vector<ChartExtent> m_blocks;
};
