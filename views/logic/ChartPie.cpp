// The pies of a chart: which rows are a slice of their own, where each pie stands, and what is written beside it.

#include "lang/Text.h"
#include "views/logic/ChartMarks.h"
#include "views/logic/ChartWords.h"
#include <algorithm>
#include <cmath>

namespace {

constexpr double kLeastPie = 36;      // pixels across
constexpr double kLeastWithText = 90; // with labels beside it
constexpr double kPieGap = 6;
constexpr double kPi = 3.14159265358979323846;

double Sliceable(double value)
{
    return value > 0 && std::isfinite(value) ? value : 0;
}

// Sums of very large numbers stay numbers.
double Weight(const ChartData &data, const std::vector<int> &columns, qint64 row)
{
    double weight = 0;
    for (const int column : columns)
        weight += Sliceable(data.Values(column)[row]) / double(columns.size());
    return weight;
}

struct PieCell // one pie's part of the area
{
    QRectF Pie, Title, Whole;
    bool HasText = false;
};

PieCell CellIn(const QRectF &area, bool titled, double lineHeight)
{
    PieCell cell;
    cell.Whole = area.adjusted(2, 2, -2, -2);
    QRectF rest = cell.Whole;
    if (titled) {
        cell.Title = QRectF(rest.left(), rest.top(), rest.width(), lineHeight);
        rest.setTop(rest.top() + lineHeight + 2);
    }
    const double ring = std::min(rest.width() * 0.28, 110.0);
    double across = std::min(rest.width() - 2 * ring, rest.height() - 2 * (lineHeight + kPieGap));
    cell.HasText = across >= kLeastWithText;
    if (!cell.HasText)
        across = std::min(rest.width(), rest.height());
    cell.Pie = QRectF(0, 0, across, across);
    cell.Pie.moveCenter(rest.center());
    if (titled) // right above it, or above the labels there
        cell.Title.moveBottom(cell.Pie.top() - 2 - (cell.HasText ? lineHeight + kPieGap : 0));
    return cell;
}

// A label's rectangle outside of the pie at the middle of its slice.
QRectF Beside(const QRectF &pie, double degrees, const QSizeF &size)
{
    const double angle = degrees * kPi / 180, radius = pie.width() / 2 + kPieGap;
    const QPointF at = pie.center() + QPointF(std::sin(angle), -std::cos(angle)) * radius;
    const double left = std::sin(angle) >= 0 ? at.x() : at.x() - size.width();
    return {QPointF(left, at.y() - size.height() * (1 + std::cos(angle)) / 2), size};
}

class Pies
{
public:
    Pies(ChartPicture &picture, const ChartOptions &options, const ChartMeasure &measure)
        : m_picture(picture), m_options(options), m_measure(measure)
    {
    }
    void Add(const PieCell &cell, const QString &heading, const std::vector<double> &values, const QStringList &labels)
    {
        double largest = 0, sum = 0;
        for (const double value : values)
            largest = std::max(largest, value);
        for (const double value : values)
            sum += largest > 0 ? value / largest : 0;
        double start = 0;
        const size_t first = m_picture.Slices.size();
        for (size_t i = 0; i < values.size(); ++i) {
            if (!(values[i] > 0))
                continue;
            ChartMark mark;
            mark.What = ChartMark::Slice;
            mark.Colour = int(i);
            mark.Rects = {cell.Pie};
            mark.Start = start;
            mark.Span = 360 * (values[i] / largest / sum);
            m_picture.Slices.push_back(
                {cell.Pie, mark.Start, mark.Span, labels[qsizetype(i)], heading, values[i], mark.Span / 360});
            start += mark.Span;
            m_picture.Marks.push_back(std::move(mark));
        }
        if (!cell.Title.isEmpty())
            AddTitle(cell, heading);
        if (cell.HasText)
            AddLabels(cell, first);
    }

private:
    void AddTitle(const PieCell &cell, const QString &heading)
    {
        const QString text = CutToFit(FlatText(heading), cell.Title.width(), ChartFace::Label, m_measure);
        QRectF rect(QPointF(), m_measure(text, ChartFace::Label));
        rect.moveCenter(cell.Title.center());
        if (!text.isEmpty())
            m_picture.Texts.push_back({text, rect, ChartFace::Label, ChartRole::PieTitle});
    }
    // The largest slices first: what has no room beside them is left out.
    void AddLabels(const PieCell &cell, size_t first)
    {
        std::vector<size_t> order;
        for (size_t i = first; i < m_picture.Slices.size(); ++i)
            order.push_back(i);
        std::stable_sort(order.begin(), order.end(),
                         [this](size_t a, size_t b) { return m_picture.Slices[a].Share > m_picture.Slices[b].Share; });
        std::vector<QRectF> taken;
        if (!cell.Title.isEmpty())
            taken.push_back(cell.Title);
        const double room = (cell.Whole.width() - cell.Pie.width()) / 2 - kPieGap - 1;
        for (const size_t i : order) {
            const ChartSlice &slice = m_picture.Slices[i];
            const QString share = lang::CStr(lang::Round(slice.Share * 100, 1)) + u'%';
            QString text = share;
            if (!m_options.ShowLegend) {
                const double left = room - m_measure(u' ' + share, ChartFace::Label).width();
                const QString label = CutToFit(FlatText(slice.Label), left, ChartFace::Label, m_measure);
                text = label.isEmpty() ? share : label + u' ' + share;
            }
            const QRectF rect = Beside(cell.Pie, slice.Start + slice.Span / 2, m_measure(text, ChartFace::Label));
            const auto meets = [&](const QRectF &other) { return other.intersects(rect.adjusted(-2, 0, 2, 0)); };
            if (!cell.Whole.contains(rect) || std::any_of(taken.begin(), taken.end(), meets))
                continue;
            taken.push_back(rect);
            m_picture.Texts.push_back({text, rect, ChartFace::Label, ChartRole::SliceLabel});
        }
    }

    ChartPicture &m_picture;
    const ChartOptions &m_options;
    const ChartMeasure &m_measure;
};

} // namespace

PieSlices ChooseSlices(const ChartData &data, const std::vector<int> &columns)
{
    std::vector<std::pair<double, qint64>> weighed;
    for (qint64 row = 0; row < data.RowCount(); ++row)
        if (const double weight = Weight(data, columns, row); weight > 0)
            weighed.push_back({weight, row});
    PieSlices slices;
    if (weighed.size() > size_t(kMostSlices)) {
        const auto keep = weighed.begin() + kMostSlices - 1;
        std::nth_element(weighed.begin(), keep, weighed.end(), [](const auto &a, const auto &b) {
            return a.first != b.first ? a.first > b.first : a.second < b.second;
        });
        for (auto other = keep; other != weighed.end(); ++other)
            slices.Others.push_back(other->second);
        weighed.erase(keep, weighed.end());
    }
    for (const auto &[weight, row] : weighed)
        slices.Rows.push_back(row);
    std::sort(slices.Rows.begin(), slices.Rows.end());
    for (const qint64 row : slices.Rows)
        slices.Labels += data.Label(row).isEmpty() ? QStringLiteral("Row %1").arg(row + 1) : data.Label(row);
    if (!slices.Others.empty())
        slices.Labels += QStringLiteral("%1 others").arg(slices.Others.size());
    return slices;
}

int AddPies(ChartPicture &picture, const ChartData &data, const ChartOptions &options, const PieSlices &slices,
            const std::vector<int> &columns, const QRectF &area, const ChartMeasure &measure)
{
    const double line = measure(QStringLiteral("0"), ChartFace::Label).height();
    int count = int(columns.size());
    const auto across = [&](int pies) {
        return std::clamp(int(std::ceil(std::sqrt(pies * area.width() / std::max(area.height(), 1.0)))), 1, pies);
    };
    const auto cell = [&](int pie, int pies) {
        const int wide = across(pies), high = (pies + wide - 1) / wide;
        const QSizeF size(area.width() / wide, area.height() / high);
        const QPointF corner(area.left() + (pie % wide) * size.width(), area.top() + (pie / wide) * size.height());
        return CellIn(QRectF(corner, size), columns.size() > 1, line);
    };
    while (count > 0 && cell(0, count).Pie.width() < kLeastPie)
        --count;
    Pies pies(picture, options, measure);
    for (int pie = 0; pie < count; ++pie) {
        const double *const values = data.Values(columns[size_t(pie)]);
        std::vector<double> parts;
        for (const qint64 row : slices.Rows)
            parts.push_back(Sliceable(values[row]));
        if (!slices.Others.empty()) {
            double others = 0;
            for (const qint64 row : slices.Others)
                others = std::min(others + Sliceable(values[row]), 1e300);
            parts.push_back(others);
        }
        pies.Add(cell(pie, count), data.Heading(columns[size_t(pie)]), parts, slices.Labels);
    }
    return int(columns.size()) - count;
}
