#include "views/logic/ChartMarks.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace {

constexpr double kGroupShare = 0.75;  // of a slot that its bars fill
constexpr qint64 kRowsWithDots = 60;  // as many points of a line are marked one by one
constexpr double kLeastBodyWidth = 3; // a bar with a top and a side

class Marks
{
public:
    Marks(ChartPicture &picture, const ChartData &data, const ChartOptions &options)
        : m_picture(picture), m_data(data), m_is3D(Is3D(options.Type)), m_logarithmic(options.Logarithmic),
          m_base(picture.Up.At(picture.Up.Base()))
    {
    }
    void AddBars(const std::vector<int> &columns);
    void AddLines(const std::vector<int> &columns, bool stepped);
    void AddAreas(std::vector<int> columns);
    void AddPoints();

private:
    using Run = std::vector<QPointF>;
    // The rows whose middle lies in this of `count` equal parts of the width.
    std::pair<qint64, qint64> RowsOf(qint64 part, qint64 count) const
    {
        const qint64 rows = m_picture.RowCount;
        return {m_picture.FirstRow + part * rows / count, m_picture.FirstRow + (part + 1) * rows / count};
    }
    bool IsThinned() const { return double(m_picture.RowCount) > 2 * m_picture.Plot.width(); }
    void Bar(int column, double left, double right, double value);
    void ThinBars(const std::vector<int> &columns);
    std::vector<Run> Runs(int column, bool stepped) const;
    Run ThinRun(int column) const;
    void Put(ChartMark::Kind what, int colour, ChartShade shade, Run points, double size = 0)
    {
        ChartMark mark;
        mark.What = what;
        mark.Colour = colour;
        mark.Shade = shade;
        mark.Points = std::move(points);
        mark.Size = size;
        m_picture.Marks.push_back(std::move(mark));
    }

    ChartPicture &m_picture;
    const ChartData &m_data;
    bool m_is3D, m_logarithmic;
    double m_base; // pixel
};

void Marks::Bar(int column, double left, double right, double value)
{
    const double at = m_picture.Up.At(value);
    const double top = std::min(at, m_base), bottom = std::max(at, m_base);
    if (m_is3D && right - left >= kLeastBodyWidth) {
        Put(ChartMark::Polygon, column, ChartShade::Light,
            {{left, top}, QPointF(left, top) + kDepth, QPointF(right, top) + kDepth, {right, top}});
        Put(ChartMark::Polygon, column, ChartShade::Dark,
            {{right, top}, QPointF(right, top) + kDepth, QPointF(right, bottom) + kDepth, {right, bottom}});
    }
    ChartMark mark;
    mark.Colour = column;
    mark.Rects = {QRectF(QPointF(left, top), QPointF(right, bottom))};
    m_picture.Marks.push_back(std::move(mark));
}

void Marks::AddBars(const std::vector<int> &columns)
{
    const double slot = m_picture.SlotWidth(), group = slot * kGroupShare, width = group / double(columns.size());
    if (width < 1) {
        ThinBars(columns);
        return;
    }
    for (qint64 row = m_picture.FirstRow; row < m_picture.FirstRow + m_picture.RowCount; ++row) {
        double left = m_picture.RowX(row) - group / 2;
        for (const int column : columns) {
            const double value = m_data.Values(column)[row];
            if (IsDrawn(value, m_logarithmic))
                Bar(column, left, left + width, Drawn(value));
            left += width;
        }
    }
}

// Bars thinner than a pixel: of the rows that share one, the bar from the least to the largest of them. Each column of
// values has pixels of its own, as long as there are enough.
void Marks::ThinBars(const std::vector<int> &columns)
{
    const double width = m_picture.Plot.width();
    const qint64 parts = std::clamp(qint64(width / double(columns.size())), qint64(1), m_picture.RowCount);
    const double part = width / double(parts), own = std::max(part / double(columns.size()), 1.0);
    for (size_t i = 0; i < columns.size(); ++i) {
        ChartMark mark;
        mark.Colour = columns[i];
        for (qint64 at = 0; at < parts; ++at) {
            const auto [first, last] = RowsOf(at, parts);
            const ChartExtent extent = m_data.Extent(columns[i], first, last);
            const double least = std::min(m_picture.Up.Base(), extent.Lower(m_logarithmic));
            const double most = std::max(m_picture.Up.Base(), extent.Most);
            const double left =
                std::min(m_picture.Plot.left() + double(at) * part + double(i) * own, m_picture.Plot.right() - own);
            if (!extent.IsEmpty(m_logarithmic))
                mark.Rects.push_back(
                    QRectF(QPointF(left, m_picture.Up.At(most)), QPointF(left + own, m_picture.Up.At(least))));
        }
        m_picture.Marks.push_back(std::move(mark));
    }
}

// Of the rows that share a pixel the first, the least, the largest and the last, in the order in which they stand.
Marks::Run Marks::ThinRun(int column) const
{
    const double *const values = m_data.Values(column);
    const qint64 parts = std::max(qint64(m_picture.Plot.width()), qint64(1));
    Run run;
    run.reserve(size_t(parts) * 4);
    for (qint64 at = 0; at < parts; ++at) {
        const auto [first, last] = RowsOf(at, parts);
        const ChartExtent extent = m_data.Extent(column, first, last);
        if (extent.IsEmpty(m_logarithmic))
            continue;
        qint64 kept[] = {first, extent.LowerRow(m_logarithmic), extent.MostRow, last - 1};
        std::sort(std::begin(kept), std::end(kept));
        qint64 before = -1;
        for (const qint64 row : kept)
            if (row != std::exchange(before, row) && IsDrawn(values[row], m_logarithmic))
                run.push_back({m_picture.RowX(row), m_picture.Up.At(Drawn(values[row]))});
    }
    return run;
}

// Parted where a value cannot be drawn.
std::vector<Marks::Run> Marks::Runs(int column, bool stepped) const
{
    if (IsThinned())
        return {ThinRun(column)};
    const double *const values = m_data.Values(column);
    const double half = m_picture.SlotWidth() / 2 * (m_picture.RowCount == 1 ? 0.8 : 1);
    std::vector<Run> runs(1);
    for (qint64 row = m_picture.FirstRow; row < m_picture.FirstRow + m_picture.RowCount; ++row) {
        if (!IsDrawn(values[row], m_logarithmic)) {
            if (!runs.back().empty())
                runs.emplace_back();
            continue;
        }
        const QPointF point(m_picture.RowX(row), m_picture.Up.At(Drawn(values[row])));
        if (stepped || m_picture.RowCount == 1) { // one row alone would be a line without a length
            runs.back().push_back(point - QPointF(half, 0));
            runs.back().push_back(point + QPointF(half, 0));
        } else {
            runs.back().push_back(point);
        }
    }
    if (runs.back().empty())
        runs.pop_back();
    return runs;
}

void Marks::AddLines(const std::vector<int> &columns, bool stepped)
{
    for (const int column : columns) {
        const std::vector<Run> runs = Runs(column, stepped);
        for (const Run &run : runs) {
            if (m_is3D)
                Put(ChartMark::Band, column, ChartShade::Dark, run);
            Put(ChartMark::Polyline, column, ChartShade::Full, run);
        }
        if (stepped || m_picture.RowCount > kRowsWithDots)
            continue;
        Run dots;
        for (qint64 row = m_picture.FirstRow; row < m_picture.FirstRow + m_picture.RowCount; ++row)
            if (const double value = m_data.Values(column)[row]; IsDrawn(value, m_logarithmic))
                dots.push_back({m_picture.RowX(row), m_picture.Up.At(Drawn(value))});
        Put(ChartMark::Dots, column, ChartShade::Full, std::move(dots), 6);
    }
}

// The highest stands behind the others.
void Marks::AddAreas(std::vector<int> columns)
{
    const qint64 first = m_picture.FirstRow;
    std::vector<std::pair<double, int>> order;
    for (const int column : columns)
        order.push_back({-m_data.Extent(column, first, first + m_picture.RowCount).Most, column});
    std::stable_sort(order.begin(), order.end(), [](const auto &a, const auto &b) { return a.first < b.first; });
    for (const auto &[height, column] : order)
        for (const Run &run : Runs(column, false)) {
            if (m_is3D) {
                Put(ChartMark::Band, column, ChartShade::Light, run);
                const QPointF end = run.back(), foot(end.x(), m_base);
                Put(ChartMark::Polygon, column, ChartShade::Dark, {end, end + kDepth, foot + kDepth, foot});
            }
            Run area = run;
            area.push_back({run.back().x(), m_base});
            area.push_back({run.front().x(), m_base});
            Put(ChartMark::Polygon, column, m_is3D ? ChartShade::Full : ChartShade::Sheer, std::move(area));
            Put(ChartMark::Polyline, column, ChartShade::Outline, run);
        }
}

// Where there are many, one point a place is enough.
void Marks::AddPoints()
{
    const double *const across = m_data.Values(0);
    const QRectF &plot = m_picture.Plot;
    constexpr double large = 6, small = 2;
    constexpr qint64 manyPoints = 3000;
    const bool many = m_data.RowCount() * (m_data.ColumnCount() - 1) > manyPoints;
    const qint64 wide = qint64(plot.width() / small) + 1, high = qint64(plot.height() / small) + 1;
    for (int column = 1; column < m_data.ColumnCount(); ++column) {
        const double *const values = m_data.Values(column);
        std::vector<bool> taken(many ? size_t(wide * high) : 0);
        Run points;
        for (qint64 row = 0; row < m_data.RowCount(); ++row) {
            if (!IsDrawn(values[row], m_logarithmic) || !IsDrawn(across[row], false))
                continue;
            const QPointF point(m_picture.Across.At(Drawn(across[row])), m_picture.Up.At(Drawn(values[row])));
            if (many) {
                const qint64 x = qint64((point.x() - plot.left()) / small),
                             y = qint64((point.y() - plot.top()) / small);
                const size_t place =
                    size_t(std::clamp(y, qint64(0), high - 1) * wide + std::clamp(x, qint64(0), wide - 1));
                if (taken[place])
                    continue;
                taken[place] = true;
            }
            points.push_back(point);
        }
        Put(ChartMark::Dots, column - 1, ChartShade::Full, std::move(points), many ? small : large);
    }
}

} // namespace

bool IsDrawn(double value, bool logarithmic)
{
    return logarithmic ? value > 0 && !std::isinf(value) : !std::isinf(value);
}

double Drawn(double value)
{
    return std::isnan(value) ? 0 : value;
}

void AddAxisMarks(ChartPicture &picture, const ChartData &data, const ChartOptions &options)
{
    Marks marks(picture, data, options);
    std::vector<int> columns(size_t(data.ColumnCount()));
    std::iota(columns.begin(), columns.end(), 0);
    switch (options.Type) {
    case chart2DXY:
        marks.AddPoints();
        break;
    case chart2DLine:
    case chart3DLine:
        marks.AddLines(columns, false);
        break;
    case chart2DStep:
    case chart3DStep:
        marks.AddLines(columns, true);
        break;
    case chart2DArea:
    case chart3DArea:
        marks.AddAreas(columns);
        break;
    case chart2DCombination:
    case chart3DCombination: // the first column as bars, what follows as lines
        marks.AddBars({0});
        marks.AddLines({columns.begin() + 1, columns.end()}, false);
        break;
    default:
        marks.AddBars(columns);
    }
}
